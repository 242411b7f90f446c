#include "FTPConnectionTimer.h"

FTPConnectionTimer::FTPConnectionTimer(Clock& clock, FTPTimerOwner& session)
    : Session(session), m_timer(clock, Clock::Microseconds{0}, [this] { Event_Action(); }) {}

void FTPConnectionTimer::Start(std::int32_t milliseconds) {
    m_timer.setPeriod(Clock::Milliseconds(milliseconds));
    m_timer.start(ClockTimer::Mode::Single);
}

void FTPConnectionTimer::Event_Action() {
    Off();
    Session.TimedOut();
}
