// The inactivity timer of a session.
#pragma once

#include <cstdint>

#include "Clock.h"

class FTPSessionClass;

class FTPConnectionTimer {
public:
    FTPConnectionTimer(Clock& clock, FTPSessionClass& session);

    // Starts anew, to run out once.
    void Start(std::int32_t milliseconds);
    void Off() { m_timer.stop(); }
    bool IsOn() const { return m_timer.isOn(); }

private:
    void Event_Action();

    FTPSessionClass& Session;
    ClockTimer m_timer;
};
