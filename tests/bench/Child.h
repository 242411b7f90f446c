// Controls by their system names.
#pragma once

#include <QApplication>
#include <QKeyEvent>
#include <QWidget>

#include <gtest/gtest.h>

// The control of that name in a window; a miss lists the names that are there.
template <typename Control>
Control* child(const QWidget& window, const QString& name) {
    auto* found = window.findChild<Control*>(name);
    if (!found) {
        QStringList names;
        for (const auto* control : window.findChildren<QWidget*>())
            if (!control->objectName().isEmpty() && !control->objectName().startsWith(u"qt_"))
                names += control->objectName();
        ADD_FAILURE() << "no " << name.toStdString() << " among " << names.join(u' ').toStdString();
    }
    return found;
}

inline void typeKey(QWidget& control, const QString& text, int key = 0,
                    Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QKeyEvent press(QEvent::KeyPress, key, modifiers, text);
    QApplication::sendEvent(&control, &press);
    QKeyEvent release(QEvent::KeyRelease, key, modifiers, text);
    QApplication::sendEvent(&control, &release);
}

inline void typeText(QWidget& control, const QString& text) {
    for (const QChar c : text)
        typeKey(control, QString(c));
}
