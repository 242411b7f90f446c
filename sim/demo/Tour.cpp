#include "Tour.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>

#include "Vlx720.h"

using namespace std::chrono_literals;

namespace {

// A window of the program beside the main window; null when it is not open.
QWidget* openWindow(const QString& name) {
    for (QWidget* window : QApplication::topLevelWidgets())
        if (window->objectName() == name && window->isVisible())
            return window;
    return nullptr;
}

}  // namespace

Task<bool> Tour::run() {
    QDir().mkpath(m_folder);
    while (!m_app.mainWindow().isVisible())
        co_await m_clock.sleep(50ms);
    co_await showTab(Tab::Port, QStringLiteral("port"));
    co_await showTab(Tab::Firmware, QStringLiteral("firmware"));
    co_await operate();
    co_await watchTrends();
    co_await showTab(Tab::Configuration, QStringLiteral("configuration"));
    co_await typeCommand();
    co_await copyFirmware();
    co_await readNotes();
    co_await loadFirmware();
    co_await readHelp();
    co_return m_isComplete;
}

Task<> Tour::showTab(Tab tab, QString pictureName) {
    m_app.mainWindow().setTab(static_cast<int>(tab));
    co_await m_clock.sleep(700ms);
    takePicture(&m_app.mainWindow(), pictureName);
}

Task<> Tour::operate() {
    m_app.mainWindow().setTab(static_cast<int>(Tab::Operate));
    co_await m_clock.sleep(500ms);
    press(QStringLiteral("BandSelected5"));
    press(QStringLiteral("OperStby"));
    // The simulated operator keys the amplifier for some seconds in every eight.
    while (m_amplifier.liveValues().read().watts == 0)
        co_await m_clock.sleep(100ms);
    co_await m_clock.sleep(1200ms);
    takePicture(&m_app.mainWindow(), QStringLiteral("operate"));
    m_amplifier.raiseFault(9);
    co_await m_clock.sleep(1500ms);
    takePicture(&m_app.mainWindow(), QStringLiteral("operate-fault"));
    press(QStringLiteral("ClearCurrentFault"));
    co_await m_clock.sleep(500ms);
}

Task<> Tour::watchTrends() {
    choose(QStringLiteral("ViewTrends"));
    co_await m_clock.sleep(25s);
    QWidget* const window = openWindow(QStringLiteral("TrendsWindow"));
    for (int step = 0; step < 6; ++step)
        window->findChild<QPushButton*>(QStringLiteral("ZoomInTrends"))->click();
    takePicture(window, QStringLiteral("trends"));
    window->close();
}

Task<> Tour::readNotes() {
    choose(QStringLiteral("HelpReleaseNotes"));
    co_await m_clock.sleep(1s);
    QWidget* const window = openWindow(QStringLiteral("ReleaseNotesView"));
    m_isComplete = m_isComplete && window;
    if (!window)
        co_return;
    takePicture(window, QStringLiteral("notes"));
    window->close();
}

// Where the page view is not installed a box says so.
Task<> Tour::readHelp() {
    choose(QStringLiteral("HelpVLXUtilHelp"));
    co_await m_clock.sleep(10s);
    QWidget* const box = QApplication::activeModalWidget();
    QWidget* const window = box ? box : openWindow(QStringLiteral("UniHelpViewer"));
    m_isComplete = m_isComplete && window;
    if (!window)
        co_return;
    // What the page view paints is on the screen alone.
    save(window->screen()->grabWindow(window->winId()), QStringLiteral("help"));
    window->close();
}

Task<> Tour::typeCommand() {
    m_app.mainWindow().setTab(static_cast<int>(Tab::CommandTester));
    auto* field = m_app.mainWindow().findChild<QLineEdit*>(QStringLiteral("TesterField"));
    for (const QChar key : QStringLiteral("^RVM;^TM;^VI;")) {
        QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, QString(key));
        QApplication::sendEvent(field, &press);
        co_await m_clock.sleep(60ms);
    }
    co_await m_clock.sleep(300ms);
    takePicture(&m_app.mainWindow(), QStringLiteral("tester"));
}

Task<> Tour::copyFirmware() {
    m_app.mainWindow().setTab(static_cast<int>(Tab::Firmware));
    co_await m_clock.sleep(200ms);
    press(QStringLiteral("GetRevButton1"));
    // The news of the newer image ends the run.
    for (int look = 0; look < 200 && !QApplication::activeModalWidget(); ++look)
        co_await m_clock.sleep(100ms);
    co_await m_clock.sleep(300ms);
    takePicture(&m_app.mainWindow(), QStringLiteral("copied"));
    if (QWidget* notice = QApplication::activeModalWidget()) {
        takePicture(notice, QStringLiteral("new-firmware"));
        notice->close();
    } else {
        m_isComplete = false;
    }
    co_await m_clock.sleep(500ms);
}

Task<> Tour::loadFirmware() {
    m_app.mainWindow().setTab(static_cast<int>(Tab::Firmware));
    co_await m_clock.sleep(200ms);
    press(QStringLiteral("SendVLXButton"));
    co_await m_clock.sleep(8s);
    if (QWidget* loadWindow = QApplication::activeModalWidget())
        takePicture(loadWindow, QStringLiteral("load"));
    while (m_app.globals().m_loadingfirmware)
        co_await m_clock.sleep(200ms);
    co_await m_clock.sleep(300ms);
    takePicture(&m_app.mainWindow(), QStringLiteral("loaded"));
}

void Tour::choose(const QString& menuItem) {
    m_app.mainWindow().findChild<QAction*>(menuItem)->trigger();
}

void Tour::press(const QString& buttonName) {
    m_app.mainWindow().findChild<QPushButton*>(buttonName)->click();
}

void Tour::takePicture(QWidget* window, const QString& name) {
    save(window->grab(), name);
}

void Tour::save(const QPixmap& picture, const QString& name) {
    m_isComplete = picture.save(m_folder + u'/' + name + QStringLiteral(".png")) && m_isComplete;
}
