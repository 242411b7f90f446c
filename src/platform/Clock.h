// Time: the only source of it for every flow, timer and time-out of the program.
#pragma once

#include <chrono>
#include <coroutine>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <utility>

#include <QDateTime>

// The time base of all waits on the serial line: 1/60 second.
using Ticks = std::chrono::duration<std::int64_t, std::ratio<1, 60>>;

class Clock {
public:
    using Microseconds = std::chrono::microseconds;
    using Milliseconds = std::chrono::milliseconds;
    using Callback = std::function<void()>;
    // When a wait is due, and its turn among those due at the same moment.
    using WaitKey = std::pair<Microseconds, std::uint64_t>;

    // How long a flow may compute before breathe() lets the event loop turn.
    static constexpr Microseconds BreathLength{4000};

    Clock() = default;
    Clock(const Clock&) = delete;
    Clock& operator=(const Clock&) = delete;
    virtual ~Clock() = default;

    // Time since some fixed moment in the past; never goes back.
    virtual Microseconds now() const = 0;
    // The date and time of day that the user's clock shows.
    virtual QDateTime wallClock() const = 0;
    // The same in seconds since 1970: costs next to nothing, where a date looks up the time zone each time.
    virtual qint64 wallSeconds() const { return wallClock().toSecsSinceEpoch(); }

    Ticks ticks() const { return std::chrono::duration_cast<Ticks>(now()); }

    // Calls `callback` once from the event loop, `delay` from now, never before that and never from
    // inside this call. The key cancels it; cancelling a key that has run or was cancelled does nothing.
    WaitKey schedule(Microseconds delay, Callback callback) {
        return scheduleAt(now() + delay, std::move(callback));
    }
    WaitKey scheduleAt(Microseconds due, Callback callback);
    void cancel(const WaitKey& key);

    // Waits scheduled and not yet run or cancelled: 0 when no flow was left behind.
    int pendingWaits() const { return static_cast<int>(m_waits.size()); }

    class Sleep;
    // co_await clock.sleep(5ms): goes on from the event loop when the time is over.
    Sleep sleep(Microseconds duration);
    // co_await clock.yield(): lets waiting events run.
    Sleep yield();

    class Breath;
    // co_await clock.breathe(): like yield, but free unless BreathLength has passed since the event loop
    // last turned. For loops that compute much and wait for nothing.
    Breath breathe();

protected:
    // Runs what is due now. Implementations call it from the event loop when the time asked for by
    // wakeAt has come.
    void runDue();
    std::optional<Microseconds> nextDue() const;
    // Asks for runDue at `due`, or for none. Called whenever the earliest due time has changed.
    virtual void wakeAt(std::optional<Microseconds> due) = 0;

private:
    std::map<WaitKey, Callback> m_waits;
    std::uint64_t m_lastTurn = 0;
    Microseconds m_loopTurned{0};
};

class [[nodiscard]] Clock::Sleep {
public:
    Sleep(Clock& clock, Microseconds duration) : m_clock(clock), m_duration(duration) {}
    Sleep(const Sleep&) = delete;
    Sleep& operator=(const Sleep&) = delete;
    ~Sleep() {
        if (m_key)
            m_clock.cancel(*m_key);
    }

    bool await_ready() const noexcept { return false; }
    void await_suspend(std::coroutine_handle<> waiting) {
        m_key = m_clock.schedule(m_duration, [this, waiting] {
            m_key.reset();
            waiting.resume();
        });
    }
    void await_resume() const noexcept {}

private:
    Clock& m_clock;
    Microseconds m_duration;
    std::optional<WaitKey> m_key;
};

class [[nodiscard]] Clock::Breath : public Clock::Sleep {
public:
    Breath(Clock& clock, bool isDue) : Sleep(clock, Microseconds{0}), m_isDue(isDue) {}
    bool await_ready() const noexcept { return !m_isDue; }

private:
    bool m_isDue;
};

// A timer on the clock, as the toolkit of the windows would have it: off at first, single or repeating.
// A repeating timer does not drift: each period starts where the last one was due. Periods that the
// program slept through are left out, not made up for.
class ClockTimer {
public:
    enum class Mode { Single, Repeating };

    ClockTimer(Clock& clock, Clock::Microseconds period, Clock::Callback action)
        : m_clock(clock), m_period(period), m_action(std::move(action)) {}
    ClockTimer(const ClockTimer&) = delete;
    ClockTimer& operator=(const ClockTimer&) = delete;
    ~ClockTimer() { stop(); }

    // Starts, or starts anew, one period from now.
    void start(Mode mode);
    void stop();
    bool isOn() const { return m_key.has_value(); }
    void setPeriod(Clock::Microseconds period) { m_period = period; }

private:
    void arm(Clock::Microseconds due);
    void fire();

    Clock& m_clock;
    Clock::Microseconds m_period;
    Clock::Callback m_action;
    Mode m_mode = Mode::Single;
    Clock::Microseconds m_due{0};
    std::optional<Clock::WaitKey> m_key;
};
