#include <gtest/gtest.h>

#include "AppBench.h"

using namespace std::chrono_literals;

namespace {

TEST(ClosingTest, WindowClosesInTheMiddleOfSensing) {
    AppBench bench;
    bench.start();
    bench.amplifier().powerOff();
    bench.press(QStringLiteral("TestCommButtton"));
    bench.clock().advance(700ms);
    EXPECT_FALSE(bench.app().flows().isIdle());
    bench.window().close();
    EXPECT_FALSE(bench.window().isVisible());
    bench.port().clearWritten();
    bench.clock().advance(10s);
    EXPECT_EQ(bench.port().written(), QByteArray());
    EXPECT_EQ(bench.dialogs().shown, QStringList());
    bench.quit();
    EXPECT_EQ(bench.clock().pendingWaits(), 0);
}

TEST(ClosingTest, ProgramGoesAtAnyMomentOfItsStart) {
    for (int steps = 0; steps < 40; ++steps) {
        AppBench bench;
        bench.launch();
        for (int step = 0; step < steps; ++step)
            bench.clock().step();
        bench.quit();
        bench.clock().advance(1s);
        EXPECT_EQ(bench.clock().pendingWaits(), 0) << steps;
    }
}

TEST(ClosingTest, NothingIsSentAtQuit) {
    AppBench bench;
    bench.start();
    bench.chooseTab(Tab::Operate);
    bench.clock().advance(100ms);
    bench.port().clearWritten();
    bench.quit();
    bench.clock().advance(5s);
    EXPECT_EQ(bench.port().written(), QByteArray());
}

}  // namespace
