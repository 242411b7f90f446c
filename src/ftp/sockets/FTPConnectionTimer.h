// The inactivity timer of a session.
#pragma once

#include <cstdint>

#include "Clock.h"
#include "FTPSocketOwners.h"

class FTPConnectionTimer {
public:
    FTPConnectionTimer(Clock& clock, FTPTimerOwner& session);

    // Starts anew, to run out once.
    void Start(std::int32_t milliseconds);
    void Off() { m_timer.stop(); }
    bool IsOn() const { return m_timer.isOn(); }

private:
    void Event_Action();

    FTPTimerOwner& Session;
    ClockTimer m_timer;
};
