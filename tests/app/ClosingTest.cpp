
#include "AppBench.h"

using namespace std::chrono_literals;

namespace {

TEST(ClosingTest, WindowClosesInTheMiddleOfSensing) {
    AppBench bench(Tab::Port);
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
}

TEST(ClosingTest, ProgramGoesAtAnyMomentOfItsStart) {
    bool isOpen = false;
    for (int steps = 0; !isOpen; ++steps) {
        AppBench bench;
        bench.launch();
        for (int step = 0; step < steps; ++step)
            bench.clock().step();
        isOpen = bench.window().isVisible();
        bench.quit();
    }
}

struct SleepRecord final : SleepInhibitor {
    void inhibit(bool isInhibited) override { told.push_back(isInhibited); }
    std::vector<bool> told;
};

TEST(ClosingTest, SystemStaysAwakeForAMemoryWriteAndTheSignalWaitsForIt) {
    SleepRecord sleep;
    AppBench bench;
    bench.platform().sleep = &sleep;
    bench.start();
    const QByteArray before = bench.amplifier().eeprom().read(0, 0, 0xA0);
    bench.chooseTab(Tab::Configuration);
    const QString path = bench.dataFolder() + QStringLiteral("/saved.VLXConfig");
    bench.dialogs().files = {path, path};
    bench.press(QStringLiteral("SaveConfig"));
    bench.clock().advance(5s);
    EXPECT_TRUE(sleep.told.empty()) << "reading may be broken off";
    bench.press(QStringLiteral("RestoreConfig"));
    ASSERT_TRUE(bench.clock().runUntil([&sleep] { return !sleep.told.empty(); }));
    EXPECT_FALSE(bench.app().requestQuit());
    EXPECT_EQ(bench.quits, 0);
    const int waits = bench.clock().pendingWaits();
    for (int ask = 0; ask < 5; ++ask)
        bench.window().close();
    EXPECT_TRUE(bench.window().isVisible());
    EXPECT_EQ(bench.clock().pendingWaits(), waits) << "asking again starts nothing";
    EXPECT_TRUE(bench.clock().runUntil([&bench] { return bench.quits == 1; }));
    EXPECT_FALSE(bench.window().isVisible());
    EXPECT_EQ(bench.port().written().count("^EW"), 7);
    EXPECT_TRUE(bench.port().written().endsWith("^rpm;"));
    EXPECT_EQ(bench.amplifier().eeprom().read(0, 0, 0xA0), before);
    EXPECT_EQ(sleep.told, (std::vector<bool>{true, false}));
}

TEST(ClosingTest, SignalEndsTheProgramAtOnceWhenNothingIsWritten) {
    AppBench bench;
    bench.launch();
    bench.clock().advance(10ms);
    EXPECT_TRUE(bench.app().requestQuit());
    EXPECT_EQ(bench.quits, 1) << "while it still starts";
}

}  // namespace
