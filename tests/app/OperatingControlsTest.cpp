#include "OperatingControls.h"

#include <gtest/gtest.h>

#include "AmplifierBench.h"
#include "FakePanels.h"

using namespace std::chrono_literals;

namespace {

struct Operated : AmplifierBench {
    explicit Operated(const Vlx720::Settings& settings = {}) : AmplifierBench(settings) {
        port.setBaud(Baud::codeOf(settings.speed));
        port.Open();
        port.DataAvailable = [this] {
            if (!window.mStartup && !line.isTaken())
                monitor.takeReceived();
        };
        globals.m_FirmwareStatus =
            settings.state == Vlx720::State::Waiting ? FirmwareStatus::Bootloader : FirmwareStatus::Main;
        window.mStartup = false;
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

    FakeOperatePanel panel;
    StatusMonitor monitor{platform, globals, line, window, panel};
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

TEST(OperatingControlsTest, BandButtonsSendTwoDigitsAndPaintAtOnce) {
    Operated bench;
    bench.controls.BandSelected_Action(10);
    EXPECT_EQ(bench.panel.band, 10);
    EXPECT_EQ(bench.panel.at(OperatePanel::ReadOut::Band), QStringLiteral("50 MHz"));
    bench.controls.BandSelected_Action(0);
    EXPECT_EQ(bench.port.written(), "^BN10;^BN00;");
    bench.clock.advance(1s);
    EXPECT_EQ(bench.amplifier.band(), 0);
    EXPECT_EQ(bench.panel.band, 0);
}

TEST(OperatingControlsTest, FaultIsClearedByTheAnswer) {
    Operated bench;
    bench.globals.FaultCodes = QStringList(32, QStringLiteral("FAULT"));
    bench.amplifier.raiseFault(9);
    bench.clock.advance(1s);
    ASSERT_EQ(bench.panel.fault, QStringLiteral("FAULT"));
    bench.port.clearWritten();
    bench.controls.ClearCurrentFault_Action();
    EXPECT_EQ(bench.port.written(), "^FLC;^FL;");
    bench.clock.advance(100ms);
    EXPECT_EQ(bench.panel.fault, QString());
}

TEST(OperatingControlsTest, SwitchingOffGoesToTheBootloaderAtItsSpeed) {
    Vlx720::Settings settings;
    settings.speed = 19200;
    Operated bench(settings);
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
    Vlx720::Settings settings;
    settings.state = Vlx720::State::Waiting;
    Operated bench(settings);
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
