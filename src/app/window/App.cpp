#include "App.h"

#include <QAction>
#include <QDir>

#include "ApplicationFolders.h"
#include "FaultCodes.h"
#include "LogField.h"
#include "ShortVersion.h"
#include "SystemVersion.h"
#include "WindowGeometry.h"

namespace {

constexpr int InitWinOffset = 200;
constexpr int TabCount = 5;
constexpr std::chrono::milliseconds EndLookStep{50};

}  // namespace

App::App(Platform& platform, Flows::ErrorHandler onError, std::function<void()> quit)
    : m_platform(platform),
      m_quit(std::move(quit)),
      m_globals(platform.clock),
      m_prefs(platform.folders.preferences),
      m_radioState(platform, m_globals, m_line),
      m_window1(platform, m_macros),
      m_ports(platform, m_globals, m_windowState, m_window1.portTab()),
      m_versions(platform, m_globals, m_radioState, m_windowState, m_window1.portTab(),
                 m_window1.firmwareTab()),
      m_monitor(platform, m_globals, m_line, m_windowState, m_window1.operateTab()),
      m_controls(platform, m_globals, m_line, m_windowState, m_window1.operateTab(), m_monitor),
      m_newFirmwareBox(platform.dialogs),
      m_firmwareFolder({platform, m_globals, m_window1.firmwareTab(), m_window1.firmwareTab(), m_windowState,
                        m_newFirmwareBox, m_versionedFilename,
                        [this] { return m_versions.CheckVLXVersion(); }}),
      m_loader(platform, m_globals, m_window1.firmwareTab(), m_radioState, m_line, m_versionedFilename),
      m_sendFirmware(platform, m_globals, m_window1.firmwareTab(), m_window1.firmwareTab(), m_firmwareFolder,
                     [this] { return LoadMcu(); }),
      m_progressWin(m_window1),
      m_memoryToolWindows(platform, onError, m_window1),
      m_memoryTools(platform, m_globals, m_line, m_progressWin, m_window1, m_memoryToolWindows),
      m_closing(platform.clock, Clock::Microseconds{0}, [this] { m_window1.close(); }),
      m_flows(platform.clock, std::move(onError)),
      m_services{platform,   m_globals, m_windowState, m_line,           m_flows,        m_ports,
                 m_versions, m_monitor, m_controls,    m_firmwareFolder, m_sendFirmware, m_memoryTools} {
    m_window1.attach(m_services);
    m_window1.mayClose = [this] { return mayClose(); };
    QObject::connect(&m_window1, &Window1::Event_Close, &m_window1, [this] { Window1_Event_Close(); });
    QObject::connect(&m_initWin, &initWin::closedByUser, &m_initWin, [this] { m_quit(); });
}

App::~App() {
    m_flows.cancelAll();
    m_window1.detach();
}

void App::Event_Open() {
    m_flows.start(Window1_Event_Open());
}

// The order of these steps is fixed: each leaves what a later one finds.
Task<> App::Window1_Event_Open() {
    m_ports.SerialPortMenu_Open();
    m_window1.setWindowTitle(QStringLiteral("Tessarin VLX Utility Version ") + ShortVersion());
    readPreferences();
    if (!hasHelpFolder()) {
        co_await m_platform.dialogs.MsgBox(
            QStringLiteral("ERROR: 'Help' folder not found!\n"
                           "The 'Help' folder must be in the same location as the executable!"));
        m_quit();
        co_return;
    }
    showInitWin();
    co_await m_platform.clock.yield();
    ApplicationFolders::makeAll(m_platform.folders, m_globals);
    m_window1.firmwareTab().setFolderPath(m_globals.m_FolderPath);
    logVersions(m_globals);
    co_await openPortAndSense();
    m_window1.setTab(m_globals.m_TabPanel);
    m_windowState.mStartup = false;
    m_window1.show();
    // Hidden, not closed: the program ends when its last window closes.
    m_initWin.hide();
}

void App::readPreferences() {
    m_prefs.InitPrefFile(QStringLiteral("VLXUtilPrefs"));
    m_windowState.m_Port = m_prefs.GetPrefNumber(QStringLiteral("Port"), 0);
    m_globals.m_FolderPath = m_prefs.GetPrefString(QStringLiteral("FolderPath"), QString());
    m_globals.m_ConfigFolderPath = m_prefs.GetPrefString(QStringLiteral("ConfigFolderPath"), QString());
    m_globals.m_FaultFolderPath = m_prefs.GetPrefString(QStringLiteral("FaultFolderPath"), QString());
    m_globals.m_Verbose = m_prefs.GetPrefBoolean(QStringLiteral("Verbose"), false);
    m_globals.m_TabPanel = m_prefs.GetPrefNumber(QStringLiteral("Tab"), 0);
    if (m_globals.m_TabPanel < 0 || m_globals.m_TabPanel >= TabCount)
        m_globals.m_TabPanel = 0;
    m_window1.menu().ViewTraceMenu->setChecked(m_globals.m_Verbose);
    m_globals.m_FirmwareStatus = FirmwareStatus::Unknown;
    m_macros.load(m_prefs);
    m_window1.commandTesterTab().showMacroCaptions();
    restoreGeometry(m_window1, m_prefs);
}

bool App::hasHelpFolder() const {
    return QDir(m_platform.folders.executable + QStringLiteral("/Help")).exists();
}

void App::showInitWin() {
    m_initWin.move(m_window1.x() + InitWinOffset, m_window1.y() + InitWinOffset);
    m_initWin.setText(QStringLiteral("Initializing..."));
    m_initWin.show();
}

Task<> App::openPortAndSense() {
    co_await m_ports.openAtStart();
    m_window1.portTab().setSerialPortMenuIndex(m_windowState.m_Port);
    m_globals.FaultCodes = CreateFaultCodesArray();
    co_await m_firmwareFolder.CheckSequence();
}

Task<bool> App::LoadMcu() {
    return ::LoadMcu(m_platform.clock, m_globals, m_loader, m_versionedFilename, m_window1);
}

// Given up half way, a load or a memory write would leave the amplifier half written.
bool App::mustEndFirst() const {
    return m_globals.m_loadingfirmware || m_memoryTools.isWriting();
}

bool App::mayClose() {
    if (!mustEndFirst())
        return true;
    m_flows.start(closeWhenEnded());
    return false;
}

Task<> App::closeWhenEnded() {
    while (mustEndFirst())
        co_await m_platform.clock.sleep(EndLookStep);
    m_closing.start(ClockTimer::Mode::Single);
}

void App::Window1_Event_Close() {
    saveGeometry(m_window1, m_prefs);
    m_prefs.SetPrefNumber(QStringLiteral("Tab"), m_globals.m_TabPanel);
    m_prefs.SetPrefString(QStringLiteral("FolderPath"), m_globals.m_FolderPath);
    m_prefs.SetPrefString(QStringLiteral("ConfigFolderPath"), m_globals.m_ConfigFolderPath);
    m_prefs.SetPrefString(QStringLiteral("FaultFolderPath"), m_globals.m_FaultFolderPath);
    m_prefs.SetPrefNumber(QStringLiteral("Port"), m_windowState.m_Port);
    m_prefs.SetPrefBoolean(QStringLiteral("Verbose"), m_globals.m_Verbose);
    m_macros.save(m_prefs);
    m_prefs.WritePrefsFile();
    m_monitor.stopPoll();
    m_flows.cancelAll();
    m_ports.SerialPortMenu_Close(m_window1.portTab().serialPortMenuIndex());
}
