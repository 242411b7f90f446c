#include "SimClock.h"

#include <algorithm>

void SimClock::advance(Microseconds duration) {
    const Microseconds end = m_now + duration;
    while (m_wakeAt && *m_wakeAt <= end)
        step();
    m_now = std::max(m_now, end);
}

bool SimClock::step() {
    if (!m_wakeAt)
        return false;
    m_now = std::max(m_now, *m_wakeAt);
    runDue();
    return true;
}

bool SimClock::runUntil(const std::function<bool()>& condition, Microseconds limit) {
    const Microseconds end = m_now + limit;
    while (!condition()) {
        if (!m_wakeAt || *m_wakeAt > end)
            return false;
        step();
    }
    return true;
}
