#include "Clock.h"

#include <gtest/gtest.h>

#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "SimClock.h"
#include "Task.h"

using namespace std::chrono_literals;

namespace {

TEST(Clock, CallbacksRunInOrderOfTheirTime) {
    SimClock clock;
    std::string order;
    clock.schedule(20ms, [&] { order += 'c'; });
    clock.schedule(10ms, [&] { order += 'a'; });
    clock.schedule(10ms, [&] { order += 'b'; });
    clock.advance(10ms);
    EXPECT_EQ(order, "ab");
    clock.advance(10ms);
    EXPECT_EQ(order, "abc");
    EXPECT_EQ(clock.now(), 20ms);
    EXPECT_EQ(clock.pendingWaits(), 0);
}

TEST(Clock, AWaitCanBeCancelledFromACallbackDueWithIt) {
    SimClock clock;
    bool ran = false;
    Clock::WaitKey second;
    clock.schedule(1ms, [&] { clock.cancel(second); });
    second = clock.schedule(1ms, [&] { ran = true; });
    clock.advance(1s);
    EXPECT_FALSE(ran);
    EXPECT_EQ(clock.pendingWaits(), 0);
}

TEST(Clock, AnErrorInACallbackLeavesTheOtherWaitsAlive) {
    SimClock clock;
    bool ran = false;
    clock.schedule(1ms, [] { throw std::runtime_error("handler"); });
    clock.schedule(2ms, [&] { ran = true; });
    EXPECT_THROW(clock.advance(5ms), std::runtime_error);
    clock.advance(5ms);
    EXPECT_TRUE(ran);
    EXPECT_EQ(clock.pendingWaits(), 0);
}

// Computes `length` at a time without a wait and breathes in between.
Task<int> compute(SimClock& clock, Clock::Microseconds length, int times) {
    int waits = 0;
    for (int i = 0; i < times; ++i) {
        clock.advance(length);
        auto breath = clock.breathe();
        if (!breath.await_ready())
            ++waits;
        co_await breath;
    }
    co_return waits;
}

TEST(Clock, BreathingIsFreeUntilAFlowHasComputedForLong) {
    SimClock quick;
    Task<int> short_ = compute(quick, 1us, 1000);
    EXPECT_TRUE(short_.isDone());
    EXPECT_EQ(short_.result(), 0);

    SimClock slow;
    Task<int> long_ = compute(slow, Clock::BreathLength, 3);
    EXPECT_FALSE(long_.isDone());
    EXPECT_TRUE(slow.run(long_));
    EXPECT_EQ(long_.result(), 3);
    EXPECT_EQ(slow.pendingWaits(), 0);
}

// A machine that was asleep: its time has jumped when the event loop turns again.
class JumpingClock final : public Clock {
public:
    Microseconds now() const override { return m_now; }
    QDateTime wallClock() const override { return {}; }
    void jumpTo(Microseconds time) {
        m_now = time;
        runDue();
    }

protected:
    void wakeAt(std::optional<Microseconds>) override {}

private:
    Microseconds m_now{0};
};

TEST(ClockTimer, PeriodsThatTheMachineSleptThroughAreLeftOut) {
    JumpingClock clock;
    int fired = 0;
    ClockTimer timer(clock, 1s, [&] { ++fired; });
    timer.start(ClockTimer::Mode::Repeating);
    clock.jumpTo(1s);
    EXPECT_EQ(fired, 1);
    clock.jumpTo(3600s + 300ms);
    EXPECT_EQ(fired, 2);
    clock.jumpTo(3600s + 999ms);
    EXPECT_EQ(fired, 2);
    clock.jumpTo(3601s);
    EXPECT_EQ(fired, 3);
}

TEST(ClockTimer, ASingleTimerFiresOnceAndMayDestroyItself) {
    SimClock clock;
    int fired = 0;
    std::optional<ClockTimer> timer;
    timer.emplace(clock, 10ms, [&] {
        ++fired;
        timer.reset();
    });
    timer->start(ClockTimer::Mode::Single);
    timer->start(ClockTimer::Mode::Single);
    clock.advance(1s);
    EXPECT_EQ(fired, 1);
    EXPECT_EQ(clock.pendingWaits(), 0);
}

}  // namespace
