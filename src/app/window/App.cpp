#include "App.h"

#include <QAction>
#include <QDir>
#include <QShortcut>

#include "ApplicationFolders.h"
#include "ConfigurationTab.h"
#include "FaultCodes.h"
#include "LogField.h"
#include "ReportSource.h"
#include "SaveAs.h"
#include "ShortVersion.h"
#include "SystemVersion.h"
#include "TrendsFeed.h"
#include "WindowGeometry.h"

namespace {

constexpr int InitWinOffset = 200;

}  // namespace

App::App(Platform& platform, Flows::ErrorHandler onError, std::function<void()> quit,
         const FirmwareServer& server)
    : m_lineRecord(platform.clock),
      m_recording(platform.Serial1, [this](const TranscriptEvent& event) { m_lineRecord.add(event); }),
      m_platform{platform.clock,   m_recording,      platform.ports,
                 platform.dialogs, platform.folders, platform.sleep},
      m_onError(onError),
      m_quit(std::move(quit)),
      m_globals(m_platform.clock),
      m_prefs(m_platform.folders.preferences),
      m_radioState(m_platform, m_globals, m_line),
      m_window1(m_platform, m_macros),
      m_ports(m_platform, m_globals, m_windowState, m_window1.portTab()),
      m_versions(m_platform, m_globals, m_radioState, m_windowState, m_window1.portTab(),
                 m_window1.firmwareTab()),
      m_monitor(m_platform, m_globals, m_line, m_windowState, m_window1.operateTab()),
      m_controls(m_platform, m_globals, m_line, m_windowState, m_window1.operateTab(), m_monitor),
      m_releaseNotes(m_platform, m_globals, onError),
      m_newFirmwareMessage(m_releaseNotes, m_window1),
      m_firmwareFolder(m_platform, m_globals, m_window1.firmwareTab(), m_windowState, m_newFirmwareMessage,
                       [this] { return m_versions.CheckVLXVersion(); }),
      m_loader(m_platform, m_globals, m_window1.firmwareTab(), m_radioState, m_line,
               m_firmwareFolder.versionedFilename),
      m_sendFirmware(m_platform, m_globals, m_window1.firmwareTab(), m_firmwareFolder,
                     [this] { return LoadMcu(); }),
      m_amplifierQuery(m_platform.clock, m_globals, m_line, m_radioState, m_window1.portTab()),
      m_retrieval(m_platform, m_globals, m_window1.firmwareTab(), m_firmwareFolder, m_amplifierQuery, server),
      m_progressWin(m_window1),
      m_memoryToolWindows(m_platform, onError, m_window1),
      m_memoryTools(m_platform, m_globals, m_line, m_progressWin, m_window1, m_memoryToolWindows),
      m_trends(m_platform.clock),
      m_closing(m_platform.clock, Clock::Microseconds{0}, [this] { closeAtEnd(); }),
      m_flows(m_platform.clock, std::move(onError)),
      m_services{m_platform,     m_globals,   m_windowState, m_line,     m_flows,
                 m_ports,        m_versions,  m_monitor,     m_controls, m_firmwareFolder,
                 m_sendFirmware, m_retrieval, m_memoryTools},
      m_portWatch(m_platform, m_line, m_windowState, m_flows, m_ports,
                  [this] { return senseReturnedPort(); }) {
    m_window1.attach(m_services);
    m_window1.mayClose = [this] { return mayClose(); };
    m_globals.mustEnd.Changed = [this](bool isRunning) { workChanged(isRunning); };
    QObject::connect(&m_window1, &Window1::Event_Close, &m_window1, [this] { Window1_Event_Close(); });
    QObject::connect(m_window1.menu().HelpReleaseNotes, &QAction::triggered, &m_window1,
                     [this] { m_flows.start(m_releaseNotes._HelpReleaseNotes_Action()); });
    connectExtras();
    QObject::connect(&m_initWin, &initWin::closedByUser, &m_initWin, [this] { m_quit(); });
}

// What the program has beside its tabs.
void App::connectExtras() {
    feedTrends(m_window1.operateTab(), m_trends);
    MainMenu& menu = m_window1.menu();
    QObject::connect(menu.ViewTrends, &QAction::triggered, &m_window1, [this] { showTrends(); });
    QObject::connect(menu.HelpSaveReport, &QAction::triggered, &m_window1,
                     [this] { m_flows.start(saveReport()); });
    LogField& log = m_window1.firmwareTab().statusField();
    log.offerSaving();
    QObject::connect(&log, &LogField::saveLogChosen, &m_window1, [this, &log] {
        m_flows.start(saveLog(m_platform.dialogs, m_platform.clock, log.toPlainText()));
    });
    LinkButton& link = m_window1.linkButton();
    link.watch(m_platform.clock,
               [this] { return linkState(m_recording, m_globals, m_line.isTaken(), m_monitor.silence()); });
    QObject::connect(&link, &LinkButton::clicked, &m_window1, [this] {
        if (!m_line.isTaken())
            m_window1.setTab(static_cast<int>(Tab::Port));
    });
}

App::~App() {
    m_flows.cancelAll();
    m_globals.mustEnd.Changed = {};
    m_window1.detach();
}

void App::Event_Open() {
    m_help = std::make_unique<Help>(m_platform, m_onError);
    connectHelp();
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
    FetchedFiles::sweep(m_globals.m_FolderPath);
    logVersions(m_globals);
    co_await openPortAndSense();
    m_window1.setTab(m_globals.m_TabPanel);
    co_await m_monitor.entered();
    --m_windowState.mStartup;
    m_window1.show();
    // Hidden, not closed: the program ends when its last window closes.
    m_initWin.hide();
}

// F1 asks about the tab in front.
void App::connectHelp() {
    QObject::connect(m_window1.menu().HelpVLXUtilHelp, &QAction::triggered, &m_window1,
                     [this] { m_help->_HelpVLXUtilHelp_Action(); });
    auto* key = new QShortcut(QKeySequence(Qt::Key_F1), &m_window1);
    QObject::connect(key, &QShortcut::activated, &m_window1,
                     [this] { m_help->showTab(m_globals.m_TabPanel); });
    m_memoryToolWindows.showFaultHelp = [this](std::optional<int> code) { m_help->showFault(code); };
}

void App::readPreferences() {
    m_prefs.InitPrefFile(QStringLiteral("VLXUtilPrefs"));
    m_windowState.m_Port = m_prefs.GetPrefNumber(QStringLiteral("Port"), 0);
    m_windowState.chosenPort.path = m_prefs.GetPrefString(QStringLiteral("PortPath"), QString());
    m_windowState.chosenPort.identity = m_prefs.GetPrefString(QStringLiteral("PortIdentity"), QString());
    const bool isPortByNameWanted = m_prefs.GetPrefBoolean(QStringLiteral("PortByName"), false);
    m_window1.menu().ViewPortByName->setChecked(isPortByNameWanted);
    m_ports.ViewPortByName_Action(isPortByNameWanted);
    m_globals.m_FolderPath = m_prefs.GetPrefString(QStringLiteral("FolderPath"), QString());
    m_globals.m_ConfigFolderPath = m_prefs.GetPrefString(QStringLiteral("ConfigFolderPath"), QString());
    m_globals.m_FaultFolderPath = m_prefs.GetPrefString(QStringLiteral("FaultFolderPath"), QString());
    m_globals.m_Verbose = m_prefs.GetPrefBoolean(QStringLiteral("Verbose"), false);
    m_globals.m_TabPanel = m_prefs.GetPrefNumber(QStringLiteral("Tab"), 0);
    if (m_globals.m_TabPanel < 0 || m_globals.m_TabPanel >= m_window1.tabCount())
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
    return ::LoadMcu(m_platform, m_globals, m_loader, m_firmwareFolder.versionedFilename, m_window1);
}

// The tab in front is not entered anew: what it shows may have changed all the same.
Task<> App::senseReturnedPort() {
    co_await m_versions.CheckVLXVersion();
    m_window1.configurationTab().enableTools(m_globals.isMain());
    if (Tab{m_globals.m_TabPanel} == Tab::Operate)
        m_monitor.enterOperateTab();
}

Task<> App::saveReport() {
    const QString log = m_window1.firmwareTab().statusField().toPlainText();
    return saveAs(m_platform.dialogs, reportRequest(m_platform.clock),
                  gatherReport(m_platform, m_globals, m_prefs, log, m_lineRecord));
}

void App::showTrends() {
    if (!m_trendsWindow)
        m_trendsWindow = std::make_unique<TrendsWindow>(m_platform, m_onError, m_trends);
    m_trendsWindow->show();
    m_trendsWindow->raise();
    m_trendsWindow->activateWindow();
}

bool App::mayClose() {
    m_closesAtEnd = m_globals.mustEnd.isTaken();
    return !m_closesAtEnd;
}

void App::closeAtEnd() {
    if (m_isQuitRequested)
        requestQuit();
    else
        m_window1.close();
}

bool App::requestQuit() {
    m_isQuitRequested = true;
    if (m_window1.isVisible() && !m_window1.close())
        return false;
    m_quit();
    return true;
}

void App::workChanged(bool isRunning) {
    if (m_platform.sleep)
        m_platform.sleep->inhibit(isRunning);
    if (!isRunning && m_closesAtEnd)
        m_closing.start(ClockTimer::Mode::Single);
}

void App::Window1_Event_Close() {
    if (m_help)
        m_help->close();
    m_trendsWindow.reset();
    saveGeometry(m_window1, m_prefs);
    m_prefs.SetPrefNumber(QStringLiteral("Tab"), m_globals.m_TabPanel);
    m_prefs.SetPrefString(QStringLiteral("FolderPath"), m_globals.m_FolderPath);
    m_prefs.SetPrefString(QStringLiteral("ConfigFolderPath"), m_globals.m_ConfigFolderPath);
    m_prefs.SetPrefString(QStringLiteral("FaultFolderPath"), m_globals.m_FaultFolderPath);
    m_prefs.SetPrefNumber(QStringLiteral("Port"), m_windowState.m_Port);
    m_prefs.SetPrefBoolean(QStringLiteral("Verbose"), m_globals.m_Verbose);
    m_macros.save(m_prefs);
    m_prefs.SetPrefString(QStringLiteral("PortPath"), m_windowState.chosenPort.path);
    m_prefs.SetPrefString(QStringLiteral("PortIdentity"), m_windowState.chosenPort.identity);
    m_prefs.SetPrefBoolean(QStringLiteral("PortByName"), m_windowState.isPortByNameWanted);
    m_prefs.WritePrefsFile();
    m_monitor.stopPoll();
    m_flows.cancelAll();
    m_ports.SerialPortMenu_Close(m_window1.portTab().serialPortMenuIndex());
}
