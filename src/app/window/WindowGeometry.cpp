#include "WindowGeometry.h"

#include <algorithm>

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

#include "REALEasyPrefs.h"

namespace {

const QRect DesignGeometry(100, 60, 615, 540);
// What must be seen of a title bar to take hold of it.
constexpr int GripWidth = 60;
constexpr int GripHeight = 30;

bool isInReach(const QRect& window) {
    const QRect grip(window.left(), window.top(), window.width(), GripHeight);
    const QList<QScreen*> screens = QGuiApplication::screens();
    return std::any_of(screens.begin(), screens.end(), [&grip](const QScreen* screen) {
        const QRect seen = grip.intersected(screen->availableGeometry());
        return seen.width() >= GripWidth && seen.height() >= GripHeight / 2;
    });
}

}  // namespace

void restoreGeometry(QWidget& window, const REALEasyPrefs& prefs) {
    const int left = prefs.GetPrefNumber(QStringLiteral("winLEFT"), DesignGeometry.left());
    const int width = prefs.GetPrefNumber(QStringLiteral("winWIDTH"), DesignGeometry.width());
    const int top = prefs.GetPrefNumber(QStringLiteral("winTOP"), DesignGeometry.top());
    const int height = prefs.GetPrefNumber(QStringLiteral("winHEIGHT"), DesignGeometry.height());
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    const QSize size = QSize(width, height).boundedTo(screen.size()).expandedTo(window.minimumSize());
    window.resize(size);
    const QRect wanted(QPoint(left, top), size);
    window.move(isInReach(wanted) ? wanted.topLeft() : screen.topLeft());
}

void saveGeometry(const QWidget& window, REALEasyPrefs& prefs) {
    prefs.SetPrefNumber(QStringLiteral("winLEFT"), window.x());
    prefs.SetPrefNumber(QStringLiteral("winWIDTH"), window.width());
    prefs.SetPrefNumber(QStringLiteral("winTOP"), window.y());
    prefs.SetPrefNumber(QStringLiteral("winHEIGHT"), window.height());
}
