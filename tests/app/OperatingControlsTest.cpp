#include "OperatingControls.h"

#include "MonitorBench.h"

using namespace std::chrono_literals;

namespace {

struct Operated : Monitored {
    explicit Operated(const Vlx720::Settings& settings = {}) : Monitored(settings) {
        monitor.enterOperateTab();
        clock.advance(500ms);
        port.clearWritten();
    }

    void pressOnOff() {
        const Task<> task = controls.OnOff_Action();
        EXPECT_TRUE(clock.run(task));
        EXPECT_FALSE(line.isTaken());
        EXPECT_FALSE(window.mStartup);
    }

    OperatingControls controls{platform, globals, line, window, panel, monitor};
};

TEST(OperatingControlsTest, OperStbySendsByItsCaptionAndLeavesItToTheAnswer) {
    Operated bench;
    ASSERT_EQ(bench.panel.operStby, QStringLiteral("Operate"));
    bench.controls.OperStby_Action();
    EXPECT_EQ(bench.port.written(), "^OS1;^OS;");
    EXPECT_EQ(bench.panel.operStby, QStringLiteral("Operate"));
    bench.clock.advance(100ms);
    EXPECT_TRUE(bench.amplifier.isOperating());
    EXPECT_EQ(bench.panel.operStby, QStringLiteral("Standby"));

    bench.port.clearWritten();
    bench.controls.OperStby_Action();
    EXPECT_EQ(bench.port.written(), "^OS0;^OS;");
    bench.port.clearWritten();
    bench.panel.operStby = QStringLiteral("???");
    bench.controls.OperStby_Action();
    EXPECT_EQ(bench.port.written(), QByteArray());
}

TEST(OperatingControlsTest, FaultIsClearedByTheAnswer) {
    Operated bench;
    bench.amplifier.raiseFault(9);
    bench.clock.advance(1s);
    ASSERT_EQ(bench.panel.fault, QStringLiteral("REFL HI"));
    bench.port.clearWritten();
    bench.controls.ClearCurrentFault_Action();
    EXPECT_EQ(bench.port.written(), "^FLC;^FL;");
    bench.clock.advance(100ms);
    EXPECT_EQ(bench.panel.fault, QString());
}

TEST(OperatingControlsTest, SwitchingOffGoesToTheBootloaderAtItsSpeed) {
    Operated bench({.speed = 19200});
    bench.pressOnOff();
    EXPECT_EQ(bench.port.written(), "^on0;");
    EXPECT_EQ(bench.panel.onOff, QStringLiteral("ON"));
    EXPECT_EQ(bench.globals.m_FirmwareStatus, QStringLiteral("Bootloader"));
    EXPECT_EQ(bench.port.bitsPerSecond(), 38400);
    EXPECT_FALSE(bench.panel.areReadOutsEnabled);
    EXPECT_TRUE(bench.panel.isOnOffEnabled);
    bench.clock.advance(1500ms);
    EXPECT_EQ(bench.amplifier.state(), Vlx720::State::Waiting);
    EXPECT_EQ(bench.port.written(), "^on0;I;");
}

TEST(OperatingControlsTest, SwitchingOnStaysAtThePresentSpeed) {
    Operated bench({.state = Vlx720::State::Waiting});
    bench.pressOnOff();
    EXPECT_EQ(bench.port.written(), "P;");
    EXPECT_EQ(bench.panel.onOff, QStringLiteral("OFF"));
    EXPECT_EQ(bench.globals.m_FirmwareStatus, QStringLiteral("Main"));
    EXPECT_TRUE(bench.panel.areReadOutsEnabled);
    EXPECT_EQ(bench.port.bitsPerSecond(), 38400);
    bench.clock.advance(5s);
    EXPECT_EQ(bench.amplifier.state(), Vlx720::State::Main);
    EXPECT_FALSE(bench.panel.at(OperatePanel::ReadOut::Temperature).isEmpty());
}

TEST(OperatingControlsTest, NoPollCommandFollowsTheSwitch) {
    Operated bench;
    // In the middle of a burst: the rest of it stays unsent.
    while (bench.port.written().isEmpty())
        bench.clock.step();
    bench.port.clearWritten();
    bench.pressOnOff();
    EXPECT_EQ(bench.port.written(), "^on0;");
}

TEST(OperatingControlsTest, SwitchInTheMiddleOfEnteringTheTabHoldsTheDataHandlerOut) {
    Operated bench;
    bench.monitor.enterOperateTab();
    const Task<> task = bench.controls.OnOff_Action();
    EXPECT_TRUE(bench.window.mStartup);
    EXPECT_TRUE(bench.clock.run(task));
    EXPECT_FALSE(bench.window.mStartup);
}

}  // namespace
