// The program: builds the object graph, starts up and shuts down.
#pragma once

#include <functional>

#include "FirmwareFolder.h"
#include "Flows.h"
#include "initWin.h"
#include "LoadWindow.h"
#include "Macros.h"
#include "MCULoader.h"
#include "MemoryTools.h"
#include "MemoryToolWindows.h"
#include "NewFirmwareBox.h"
#include "OperatingControls.h"
#include "PortSelection.h"
#include "ProgressWin.h"
#include "REALEasyPrefs.h"
#include "SendFirmware.h"
#include "Services.h"
#include "VersionCheck.h"
#include "Window1.h"

class App {
public:
    // `onError` gets what no flow caught; `quit` ends the event loop.
    App(Platform& platform, Flows::ErrorHandler onError, std::function<void()> quit);
    App(const App&) = delete;
    App& operator=(const App&) = delete;
    ~App();

    // Opens the main window: reads the preferences, opens the port, senses the amplifier. From a running
    // or soon running event loop.
    void Event_Open();

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
    void Window1_Event_Close();
    bool mustEndFirst() const;
    bool mayClose();
    Task<> closeWhenEnded();

    Platform& m_platform;
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
    NewFirmwareBox m_newFirmwareBox;
    VersionedFilename m_versionedFilename;
    FirmwareFolder m_firmwareFolder;
    MCULoader m_loader;
    SendFirmware m_sendFirmware;
    ProgressWin m_progressWin;
    MemoryToolWindows m_memoryToolWindows;
    MemoryTools m_memoryTools;
    // Closes the main window from the event loop, outside of the flow that asks for it.
    ClockTimer m_closing;
    // Last: cancelled first, while all that the flows use is still there.
    Flows m_flows;
    Services m_services;
};
