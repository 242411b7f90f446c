// The members of the main window that flows outside the window look at.
#pragma once

#include <cstdint>

#include "SerialPort.h"

struct WindowState {
    // Index of the chosen port in the system's list; may point past its end after a refresh.
    std::int32_t m_Port = 0;
    // The port chosen in the list, of this run or of the one before: an index may mean another one tomorrow.
    PortInfo chosenPort;
    // View > Port by Name.
    bool isPortByNameWanted = false;
    // Above 0 while the window is opening and while a handler rebuilds controls: port, trace and data
    // handlers do nothing then. Counts the spans, which may overlap; the opening itself is the first.
    std::int32_t mStartup = 1;
    // Checked by the data handler; nothing sets it: kept for its name.
    bool mEditingMacros = false;
    // The port name field was edited since it last lost focus.
    bool bPortFieldChange = false;
};

// Counts one more in mStartup until its end, also when the flow in it is cancelled.
class StartupSpan {
public:
    explicit StartupSpan(WindowState& window) : m_window(window) { ++m_window.mStartup; }
    StartupSpan(const StartupSpan&) = delete;
    StartupSpan& operator=(const StartupSpan&) = delete;
    ~StartupSpan() { --m_window.mStartup; }

private:
    WindowState& m_window;
};
