#include "SystemClock.h"

#include <algorithm>

SystemClock::SystemClock() {
    m_elapsed.start();
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::PreciseTimer);
    QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { runDue(); });
}

void SystemClock::wakeAt(std::optional<Microseconds> due) {
    if (!due) {
        m_timer.stop();
        return;
    }
    // The timer counts whole milliseconds and may be a little early: runDue then asks again.
    const auto delay = std::chrono::ceil<Milliseconds>(std::max(*due - now(), Microseconds{0}));
    m_timer.start(std::min(delay, Milliseconds(std::chrono::hours(24))));
}
