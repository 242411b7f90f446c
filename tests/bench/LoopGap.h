// How long a flow on the system clock keeps the event loop, and with it the window, from turning.
#pragma once

#include <time.h>

#include <algorithm>

#include <QEventLoop>
#include <QTimer>

#include "Clock.h"

// Processor time of this thread: the test machine may be busy with other things.
inline Clock::Microseconds computingTime() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return std::chrono::seconds(time.tv_sec) + std::chrono::microseconds(time.tv_nsec / 1000);
}

// Runs the flow to its end; the longest computing time between two turns of the loop.
template <typename Start>
Clock::Microseconds longestGap(Start start) {
    Clock::Microseconds longest{0};
    Clock::Microseconds lastTurn = computingTime();
    QTimer turn;
    QObject::connect(&turn, &QTimer::timeout, &turn, [&] {
        longest = std::max(longest, computingTime() - lastTurn);
        lastTurn = computingTime();
    });
    turn.start(0);
    QEventLoop loop;
    auto flow = start();
    while (!flow.isDone() || longest.count() == 0)
        loop.processEvents(QEventLoop::WaitForMoreEvents);
    return longest;
}
