// A button of the command tester that sends a macro.
#pragma once

#include "SendButton.h"

// A long caption is elided at its end and does not push its neighbours away; the tool tip tells all of it.
class MacroButton final : public SendButton {
    Q_OBJECT

public:
    MacroButton() { setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed); }

    void setMacro(const QString& caption, const QString& command);

protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void elide();

    QString m_caption;
};
