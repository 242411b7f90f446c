// What the banner field takes from the keyboard.
#pragma once

#include <QValidator>

// Printable ASCII, folded to upper case. The text that was read from the amplifier is shown as it is, and
// characters of it that could not be typed may stay.
class BannerValidator : public QValidator {
    Q_OBJECT

public:
    using QValidator::QValidator;

    void setOriginalText(const QString& text) { m_originalText = text; }

    State validate(QString& input, int& position) const override;

private:
    QString m_originalText;
};
