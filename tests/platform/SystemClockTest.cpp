#include "SystemClock.h"

#include <gtest/gtest.h>

#include <string>

#include "EventLoop.h"
#include "Task.h"

using namespace std::chrono_literals;

namespace {

Task<int> sleepAndCountEarly(Clock& clock, int times) {
    int early = 0;
    for (int i = 0; i < times; ++i) {
        const Clock::Microseconds due = clock.now() + 1500us;
        co_await clock.sleep(1500us);
        if (clock.now() < due)
            ++early;
    }
    co_return early;
}

TEST(SystemClock, NoSleepEndsEarly) {
    SystemClock clock;
    Task<int> task = sleepAndCountEarly(clock, 50);
    EXPECT_FALSE(task.isDone());
    ASSERT_TRUE(turnUntil([&task] { return task.isDone(); }));
    EXPECT_EQ(task.result(), 0);
    EXPECT_EQ(clock.pendingWaits(), 0);
}

TEST(SystemClock, ALaterWaitDoesNotDelayAnEarlierOne) {
    SystemClock clock;
    std::string order;
    const Clock::WaitKey tomorrow = clock.schedule(48h, [&order] { order += 'z'; });
    clock.schedule(20ms, [&order] { order += 'b'; });
    const Clock::WaitKey cancelled = clock.schedule(5ms, [&order] { order += 'x'; });
    clock.schedule(10ms, [&order] { order += 'a'; });
    clock.cancel(cancelled);
    EXPECT_TRUE(turnUntil([&order] { return order.size() == 2; }));
    EXPECT_EQ(order, "ab");
    clock.cancel(tomorrow);
    EXPECT_EQ(clock.pendingWaits(), 0);
}

TEST(SystemClock, ARepeatingTimerKeepsItsPeriod) {
    SystemClock clock;
    const Clock::Microseconds start = clock.now();
    int fired = 0;
    ClockTimer timer(clock, 7ms, [&fired] { ++fired; });
    timer.start(ClockTimer::Mode::Repeating);
    EXPECT_TRUE(turnUntil([&fired] { return fired >= 40; }));
    EXPECT_LE(fired, (clock.now() - start) / 7ms);
}

}  // namespace
