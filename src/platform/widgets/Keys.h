// What a pressed key means, whatever the keyboard.
#pragma once

#include <QKeyEvent>

// With the shortcut key, and Shift or not. Control and Alt together are AltGr on some systems: that types.
inline bool isShortcut(const QKeyEvent& event) {
    return (event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) ==
           Qt::ControlModifier;
}
