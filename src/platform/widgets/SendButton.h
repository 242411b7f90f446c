// A button that sends something to the amplifier: one press is one command.
#pragma once

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPushButton>

// A key that is held down presses once, and a double click counts as one.
class SendButton : public QPushButton {
    Q_OBJECT

public:
    using QPushButton::QPushButton;

protected:
    void keyPressEvent(QKeyEvent* event) override {
        if (!event->isAutoRepeat())
            QPushButton::keyPressEvent(event);
    }
    void mouseDoubleClickEvent(QMouseEvent* event) override { event->accept(); }
};
