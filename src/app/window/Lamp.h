// A label that can be lit, to be read from across the room.
#pragma once

#include <QLabel>

class Lamp final : public QLabel {
    Q_OBJECT

public:
    // `colour` fills the lamp while it is lit.
    Lamp(const QString& text, const QColor& colour);

    // Lit is enabled and bold; dark is disabled and plain.
    void setLit(bool lit);

protected:
    void changeEvent(QEvent* event) override;

private:
    void paintState();

    QColor m_colour;
};
