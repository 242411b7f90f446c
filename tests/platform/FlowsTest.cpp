#include "Flows.h"

#include <gtest/gtest.h>

#include <memory>

#include <QStringList>

#include "DefaultErrorHandler.h"
#include "Errors.h"
#include "ScriptedDialogs.h"
#include "SimClock.h"

using namespace std::chrono_literals;

namespace {

Task<> count(Clock& clock, int& steps) {
    for (;;) {
        co_await clock.sleep(10ms);
        ++steps;
    }
}

Task<> failAfter(Clock& clock, Clock::Microseconds delay) {
    if (delay > 0us)
        co_await clock.sleep(delay);
    throw OutOfBoundsError(QStringLiteral("row 7 of 3"));
}

// Its parameter lives as long as the flow's frame.
Task<> hold(Clock& clock, std::shared_ptr<int>) {
    co_await clock.sleep(1ms);
}

class FlowsTest : public testing::Test {
protected:
    SimClock clock;
    ScriptedDialogs dialogs{clock};
    QStringList log;
    DefaultErrorHandler errors{dialogs, [this](const QString& line) { log += line; }};
    Flows flows{clock, [this](const std::exception_ptr& error) { errors.handle(error); }};
};

TEST_F(FlowsTest, AnEscapedErrorIsShownAndLoggedAndTheOtherFlowsGoOn) {
    int steps = 0;
    flows.start(count(clock, steps));
    flows.start(failAfter(clock, 15ms));
    clock.advance(100ms);
    EXPECT_EQ(log, QStringList{QStringLiteral("Error: row 7 of 3")});
    EXPECT_EQ(dialogs.shown, log);
    EXPECT_EQ(steps, 10);
    flows.cancelAll();
    EXPECT_TRUE(flows.isIdle());
    EXPECT_EQ(clock.pendingWaits(), 0);
}

TEST_F(FlowsTest, ErrorsBehindAnOpenBoxAreOnlyLogged) {
    for (int i = 0; i < 5; ++i)
        flows.start(failAfter(clock, 10ms));
    clock.advance(1s);
    EXPECT_EQ(log.size(), 5);
    EXPECT_EQ(dialogs.shown.size(), 1);
    flows.start(failAfter(clock, 0us));
    EXPECT_EQ(dialogs.shown.size(), 2);
    EXPECT_TRUE(flows.isIdle()) << "failed at once";
    clock.advance(1s);
    EXPECT_EQ(clock.pendingWaits(), 0);
}

TEST_F(FlowsTest, FlowsThatEndedAreLetGo) {
    const auto held = std::make_shared<int>();
    for (int i = 0; i < 1000; ++i) {
        flows.start(hold(clock, held));
        clock.advance(2ms);
    }
    EXPECT_EQ(held.use_count(), 1);
    EXPECT_TRUE(flows.isIdle());
    EXPECT_EQ(clock.pendingWaits(), 0);
}

TEST_F(FlowsTest, AnErrorOfNoKnownKindIsReported) {
    errors.handle(std::make_exception_ptr(42));
    EXPECT_EQ(log, QStringList{QStringLiteral("Error: unknown error")});
    clock.advance(1s);
    EXPECT_EQ(clock.pendingWaits(), 0);
}

}  // namespace
