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

// No screen reaches farther; what a damaged file says beyond overflows the toolkit's arithmetic.
constexpr int FarthestCorner = 1 << 20;

// The screen on which the window stands, or the primary one.
const QScreen& screenAt(const QPoint& place) {
    const QScreen* found = QGuiApplication::screenAt(place);
    return found ? *found : *QGuiApplication::primaryScreen();
}

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
    QPoint corner(std::clamp(left, -FarthestCorner, FarthestCorner),
                  std::clamp(top, -FarthestCorner, FarthestCorner));
    const QRect screen = screenAt(corner + QPoint(GripWidth, GripHeight)).availableGeometry();
    // The smallest window is one of the standard font; no screen is asked for more than it has.
    const QSize room = screen.size() - QSize(0, GripHeight);
    window.setMinimumSize(window.minimumSize().boundedTo(room));
    const QSize size = QSize(width, height).boundedTo(room).expandedTo(window.minimumSize());
    if (size.width() == room.width())
        corner.setX(screen.left());
    if (size.height() == room.height())
        corner.setY(screen.top());
    window.resize(size);
    window.move(isInReach(QRect(corner, size))
                    ? corner
                    : QGuiApplication::primaryScreen()->availableGeometry().topLeft());
}

void saveGeometry(const QWidget& window, REALEasyPrefs& prefs) {
    // A maximised window comes back in the size that it would have otherwise.
    const bool isNormal = !window.isMaximized() && !window.isFullScreen() && !window.isMinimized();
    const QPoint frame = window.geometry().topLeft() - window.pos();
    const QRect place =
        isNormal ? QRect(window.pos(), window.size()) : window.normalGeometry().translated(-frame);
    prefs.SetPrefNumber(QStringLiteral("winLEFT"), place.x());
    prefs.SetPrefNumber(QStringLiteral("winWIDTH"), place.width());
    prefs.SetPrefNumber(QStringLiteral("winTOP"), place.y());
    prefs.SetPrefNumber(QStringLiteral("winHEIGHT"), place.height());
}
