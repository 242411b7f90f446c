#include "Gate.h"

#include <gtest/gtest.h>

#include <optional>
#include <utility>

#include "SimClock.h"
#include "Task.h"

namespace {

Task<> pass(Gate& gate) {
    co_await gate.wait();
}

class GateTest : public testing::Test {
protected:
    SimClock clock;
    std::optional<Gate> gate{std::in_place, clock};
};

TEST_F(GateTest, AFlowGoesOnFromTheLoopAndMayDestroyWhoOpenedTheGate) {
    const Task<> task = pass(*gate);
    gate->open();
    gate->open();
    EXPECT_FALSE(task.isDone());
    EXPECT_TRUE(clock.run(task));
    EXPECT_TRUE(pass(*gate).isDone()) << "an open gate is no wait";
    gate.reset();
    EXPECT_EQ(clock.pendingWaits(), 0);
}

TEST_F(GateTest, AWaitCanBeCancelledBeforeAndAfterTheOpening) {
    {
        const Task<> task = pass(*gate);
    }
    gate->open();
    EXPECT_EQ(clock.pendingWaits(), 0);

    gate.emplace(clock);
    {
        const Task<> task = pass(*gate);
        gate->open();
    }
    EXPECT_EQ(clock.pendingWaits(), 0);
}

TEST_F(GateTest, AGateMayGoBeforeTheFlowThatWaitsAtIt) {
    {
        const Task<> task = pass(*gate);
        gate->open();
        gate.reset();
        EXPECT_EQ(clock.pendingWaits(), 0);
        EXPECT_FALSE(clock.step());
        EXPECT_FALSE(task.isDone());
    }
    EXPECT_EQ(clock.pendingWaits(), 0);
}

}  // namespace
