// Where the program's small windows stand.
#pragma once

#include <QWidget>

// Centred on the main window from left to right, its top edge 40 pixels below that of the main window.
inline void placeBelowTop(QWidget& window, const QWidget& mainWindow) {
    constexpr int Below = 40;
    const QRect main = mainWindow.frameGeometry();
    window.move(main.left() + main.width() / 2 - window.width() / 2, main.top() + Below);
}
