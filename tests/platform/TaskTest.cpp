#include "Task.h"

#include <gtest/gtest.h>

#include <QString>

#include "Errors.h"
#include "SimClock.h"

using namespace std::chrono_literals;

namespace {

// Counts the objects of it that are alive: a cancelled frame must leave none.
struct Guard {
    explicit Guard(int& alive) : m_alive(alive) { ++m_alive; }
    Guard(const Guard&) = delete;
    Guard& operator=(const Guard&) = delete;
    ~Guard() { --m_alive; }

private:
    int& m_alive;
};

Task<> waitGuarded(Clock& clock, int& alive) {
    const Guard guard(alive);
    co_await clock.sleep(10s);
}

Task<> waitInside(Clock& clock, int& alive) {
    const Guard guard(alive);
    co_await waitGuarded(clock, alive);
}

Task<int> answer(Clock& clock, int value, Clock::Microseconds delay) {
    if (delay > 0us)
        co_await clock.sleep(delay);
    co_return value;
}

Task<QString> sum(Clock& clock, Clock::Microseconds delay) {
    const int first = co_await answer(clock, 1, delay);
    const int second = co_await answer(clock, 2, delay);
    co_return QString::number(first + second);
}

Task<> readMissingWindow(Clock& clock) {
    co_await clock.sleep(1ms);
    throw NilObjectError(QStringLiteral("no window"));
}

Task<QString> rethrown(Clock& clock) {
    QString caught;
    try {
        co_await readMissingWindow(clock);
    } catch (const NilObjectError& error) {
        caught = QString::fromUtf8(error.what());
    }
    co_return caught;
}

TEST(Task, CancellingDestroysEveryFrameAndItsWaits) {
    SimClock clock;
    int alive = 0;
    {
        const Task<> task = waitInside(clock, alive);
        EXPECT_EQ(alive, 2);
        EXPECT_EQ(clock.pendingWaits(), 1);
    }
    EXPECT_EQ(alive, 0);
    EXPECT_EQ(clock.pendingWaits(), 0);
}

TEST(Task, AssigningCancelsTheOldFlow) {
    SimClock clock;
    int old = 0;
    int young = 0;
    Task<> task = waitGuarded(clock, old);
    task = waitGuarded(clock, young);
    EXPECT_EQ(old, 0);
    EXPECT_EQ(young, 1);
    EXPECT_TRUE(clock.run(task));
    EXPECT_EQ(young, 0);
    EXPECT_EQ(clock.pendingWaits(), 0);
}

TEST(Task, NestedResultsComeThrough) {
    SimClock clock;
    Task<QString> ready = sum(clock, 0us);
    EXPECT_TRUE(ready.isDone());
    EXPECT_EQ(ready.result(), QStringLiteral("3"));
    Task<QString> task = sum(clock, 5ms);
    EXPECT_FALSE(task.isDone());
    EXPECT_TRUE(clock.run(task));
    EXPECT_EQ(clock.now(), 10ms);
    EXPECT_EQ(task.result(), QStringLiteral("3"));
    EXPECT_EQ(clock.pendingWaits(), 0);
}

TEST(Task, AnErrorKeepsItsTypeThroughTheWait) {
    SimClock clock;
    Task<QString> caught = rethrown(clock);
    EXPECT_TRUE(clock.run(caught));
    EXPECT_EQ(caught.result(), QStringLiteral("no window"));

    Task<> escaped = readMissingWindow(clock);
    EXPECT_TRUE(clock.run(escaped));
    EXPECT_THROW(escaped.result(), NilObjectError);
    EXPECT_EQ(clock.pendingWaits(), 0);
}

}  // namespace
