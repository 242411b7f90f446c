// A clock that moves only when told, for tests and for simulated days.
#pragma once

#include "Clock.h"
#include "Task.h"

class SimClock final : public Clock {
public:
    Microseconds now() const override { return m_now; }
    QDateTime wallClock() const override { return m_start.addMSecs(m_now.count() / 1000); }
    void setWallClock(const QDateTime& nowShown) { m_start = nowShown.addMSecs(-(m_now.count() / 1000)); }

    // Jumps from due moment to due moment up to `duration` from now, and ends there.
    void advance(Microseconds duration);
    // Jumps to the next due moment and runs what is due. False when nothing waits.
    bool step();

    // Turns until the task has ended or `limit` of simulated time is over; true when it has ended.
    template <typename T>
    bool run(const Task<T>& task, Microseconds limit = std::chrono::hours(1)) {
        return runUntil([&task] { return task.isDone(); }, limit);
    }
    bool runUntil(const std::function<bool()>& condition, Microseconds limit = std::chrono::hours(1));

protected:
    void wakeAt(std::optional<Microseconds> due) override { m_wakeAt = due; }

private:
    Microseconds m_now{0};
    std::optional<Microseconds> m_wakeAt;
    QDateTime m_start{QDate(2024, 3, 9), QTime(14, 5, 7)};
};
