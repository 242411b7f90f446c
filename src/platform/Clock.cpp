#include "Clock.h"

Clock::WaitKey Clock::scheduleAt(Microseconds due, Callback callback) {
    const WaitKey key{due, ++m_lastTurn};
    const auto place = m_waits.emplace(key, std::move(callback)).first;
    if (place == m_waits.begin())
        wakeAt(due);
    return key;
}

void Clock::cancel(const WaitKey& key) {
    const auto place = m_waits.find(key);
    if (place == m_waits.end())
        return;
    const bool wasFirst = place == m_waits.begin();
    m_waits.erase(place);
    if (wasFirst)
        wakeAt(nextDue());
}

void Clock::runDue() {
    // Only what was waiting when the loop turned: a wait of no time that is asked for meanwhile has its
    // turn after the other events.
    const std::uint64_t lastTurn = m_lastTurn;
    m_loopTurned = now();
    // Also when an error escapes from a callback: the other waits must not stand still for it.
    struct Rearm {
        Clock& clock;
        ~Rearm() { clock.wakeAt(clock.nextDue()); }
    } const rearm{*this};
    auto place = m_waits.begin();
    while (place != m_waits.end() && place->first.first <= m_loopTurned) {
        if (place->first.second > lastTurn) {
            ++place;
            continue;
        }
        const Callback callback = std::move(place->second);
        m_waits.erase(place);
        callback();
        // The callback may have cancelled any other wait.
        place = m_waits.begin();
    }
}

std::optional<Clock::Microseconds> Clock::nextDue() const {
    if (m_waits.empty())
        return std::nullopt;
    return m_waits.begin()->first.first;
}

Clock::Sleep Clock::sleep(Microseconds duration) {
    return {*this, duration};
}

Clock::Sleep Clock::yield() {
    return {*this, Microseconds{0}};
}

Clock::Breath Clock::breathe() {
    return {*this, now() - m_loopTurned >= BreathLength};
}

void ClockTimer::start(Mode mode) {
    stop();
    m_mode = mode;
    arm(m_clock.now() + m_period);
}

void ClockTimer::stop() {
    if (m_key)
        m_clock.cancel(*std::exchange(m_key, std::nullopt));
}

void ClockTimer::arm(Clock::Microseconds due) {
    m_due = due;
    m_key = m_clock.scheduleAt(due, [this] { fire(); });
}

void ClockTimer::fire() {
    m_key.reset();
    if (m_mode == Mode::Repeating) {
        Clock::Microseconds next = m_due + m_period;
        if (next <= m_clock.now())
            next += (m_clock.now() - next) / m_period * m_period + m_period;
        arm(next);
    }
    // A copy: the action may destroy this timer.
    const Clock::Callback action = m_action;
    action();
}
