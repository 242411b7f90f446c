// The members of the main window that flows outside the window look at.
#pragma once

#include <cstdint>

struct WindowState {
    // Index of the chosen port in the system's list; may point past its end after a refresh.
    std::int32_t m_Port = 0;
    // True while the window is opening and while a handler rebuilds controls: port, trace and data
    // handlers do nothing then.
    bool mStartup = true;
    // Checked by the data handler; nothing sets it.
    bool mEditingMacros = false;
    // The port name field was edited since it last lost focus.
    bool bPortFieldChange = false;
};

// Sets mStartup for a span, and clears it at the end, also when the flow in it is cancelled.
class StartupSpan {
public:
    explicit StartupSpan(WindowState& window) : m_window(window) { m_window.mStartup = true; }
    StartupSpan(const StartupSpan&) = delete;
    StartupSpan& operator=(const StartupSpan&) = delete;
    ~StartupSpan() { m_window.mStartup = false; }

private:
    WindowState& m_window;
};
