// The program: builds the object graph, starts up and shuts down.
#pragma once

#include <functional>
#include <memory>

#include "FirmwareFolder.h"
#include "Flows.h"
#include "Help.h"
#include "initWin.h"
#include "LineRecord.h"
#include "LoadWindow.h"
#include "Macros.h"
#include "MCULoader.h"
#include "MemoryTools.h"
#include "MemoryToolWindows.h"
#include "NewFirmwareMessage.h"
#include "OperatingControls.h"
#include "PortSelection.h"
#include "PortWatch.h"
#include "ProgressWin.h"
#include "REALEasyPrefs.h"
#include "RecordingPort.h"
#include "ReleaseNotes.h"
#include "Retrieval.h"
#include "SendFirmware.h"
#include "Services.h"
#include "TrendsWindow.h"
#include "VersionCheck.h"
#include "Window1.h"

class App {
public:
    // `onError` gets what no flow caught; `quit` ends the event loop. New firmware comes from `server`.
    App(Platform& platform, Flows::ErrorHandler onError, std::function<void()> quit,
        const FirmwareServer& server = FirmwareServer::makers());
    App(const App&) = delete;
    App& operator=(const App&) = delete;
    ~App();

    // Opens the main window: reads the preferences, opens the port, senses the amplifier. From a running
    // or soon running event loop.
    void Event_Open();

    // An orderly end: the main window closes, after work that must end first, and the program with it. True
    // when it closes now.
    bool requestQuit();

    Window1& mainWindow() { return m_window1; }
    Globals& globals() { return m_globals; }
    Flows& flows() { return m_flows; }
    StatusMonitor& monitor() { return m_monitor; }

private:
    Task<> Window1_Event_Open();
    void readPreferences();
    bool hasHelpFolder() const;
    void showInitWin();
    Task<> openPortAndSense();
    Task<bool> LoadMcu();
    void connectExtras();
    void showTrends();
    void connectHelp();
    Task<> saveReport();
    Task<> senseReturnedPort();
    void Window1_Event_Close();
    bool mayClose();
    void workChanged(bool isRunning);
    void closeAtEnd();

    LineRecord m_lineRecord;
    RecordingPort m_recording;
    Platform m_platform;
    Flows::ErrorHandler m_onError;
    std::function<void()> m_quit;
    Globals m_globals;
    WindowState m_windowState;
    LineOwner m_line;
    REALEasyPrefs m_prefs;
    Macros m_macros;
    RadioState m_radioState;
    Window1 m_window1;
    initWin m_initWin;
    PortSelection m_ports;
    VersionCheck m_versions;
    StatusMonitor m_monitor;
    OperatingControls m_controls;
    ReleaseNotes m_releaseNotes;
    NewFirmwareMessage m_newFirmwareMessage;
    FirmwareFolder m_firmwareFolder;
    MCULoader m_loader;
    SendFirmware m_sendFirmware;
    AmplifierQuery m_amplifierQuery;
    Retrieval m_retrieval;
    ProgressWin m_progressWin;
    MemoryToolWindows m_memoryToolWindows;
    MemoryTools m_memoryTools;
    Trends m_trends;
    std::unique_ptr<TrendsWindow> m_trendsWindow;
    std::unique_ptr<Help> m_help;
    // The user wants to quit, and work that must end first is running.
    bool m_closesAtEnd = false;
    // ... and the whole program, whatever other windows are open.
    bool m_isQuitRequested = false;
    // Closes the main window from the event loop, outside of the flow whose end it waits for.
    ClockTimer m_closing;
    // ~App cancels them first, while all that they use is still there.
    Flows m_flows;
    Services m_services;
    PortWatch m_portWatch;
};
