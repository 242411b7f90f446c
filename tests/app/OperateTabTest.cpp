#include <gtest/gtest.h>

#include "AppBench.h"

using namespace std::chrono_literals;

namespace {

TEST(OperateTabTest, BurstGoesOutAtOnceAndTheAnswersAreShown) {
    AppBench bench;
    bench.start();
    bench.port().clearWritten();
    bench.chooseTab(Tab::Operate);
    bench.clock().advance(300ms);
    EXPECT_EQ(bench.port().written(), "^BN;^FL;^OS;^WS;^TM;^VI;");
    EXPECT_TRUE(bench.label(QStringLiteral("PAVoltage")).endsWith(QStringLiteral(" V")));
    EXPECT_TRUE(bench.label(QStringLiteral("Temperature")).endsWith(QStringLiteral(" C")));
    EXPECT_EQ(bench.control<QPushButton>(QStringLiteral("OnOff"))->text(), QStringLiteral("OFF"));
    EXPECT_TRUE(bench.control<QLabel>(QStringLiteral("Stby"))->isEnabled());
    EXPECT_TRUE(bench.control<QLabel>(QStringLiteral("Stby"))->font().bold());
    EXPECT_FALSE(bench.control<QLabel>(QStringLiteral("Oper"))->isEnabled());
}

TEST(OperateTabTest, ChosenBandIsLargeAndAloneSo) {
    AppBench bench;
    bench.start();
    bench.chooseTab(Tab::Operate);
    bench.clock().advance(300ms);
    bench.press(QStringLiteral("BandSelected5"));
    EXPECT_EQ(bench.label(QStringLiteral("Band")), QStringLiteral("14 MHz"));
    bench.clock().advance(2s);
    EXPECT_EQ(bench.amplifier().band(), 5);
    for (int band = 0; band < 11; ++band) {
        const auto* button = bench.control<QPushButton>(QStringLiteral("BandSelected%1").arg(band));
        EXPECT_EQ(button->font().bold(), band == 5) << band;
        EXPECT_EQ(button->font().pointSize() == 18, band == 5) << band;
    }
}

TEST(OperateTabTest, LeavingTheTabStopsThePollForGood) {
    AppBench bench;
    bench.start();
    for (const Tab other : {Tab::Port, Tab::Firmware, Tab::Configuration, Tab::CommandTester}) {
        bench.chooseTab(Tab::Operate);
        bench.clock().advance(1500ms);
        bench.chooseTab(other);
        bench.port().clearWritten();
        bench.clock().advance(5s);
        EXPECT_EQ(bench.port().written(), QByteArray());
    }
}

TEST(OperateTabTest, OffAndOnAgain) {
    AppBench bench;
    bench.start();
    bench.chooseTab(Tab::Operate);
    bench.clock().advance(300ms);
    bench.press(QStringLiteral("OnOff"));
    bench.clock().advance(2s);
    EXPECT_EQ(bench.amplifier().state(), Vlx720::State::Waiting);
    EXPECT_EQ(bench.control<QPushButton>(QStringLiteral("OnOff"))->text(), QStringLiteral("ON"));
    EXPECT_TRUE(bench.control<QPushButton>(QStringLiteral("OnOff"))->isEnabled());
    EXPECT_FALSE(bench.control<QPushButton>(QStringLiteral("BandSelected3"))->isEnabled());
    bench.press(QStringLiteral("OnOff"));
    bench.clock().advance(5s);
    EXPECT_EQ(bench.amplifier().state(), Vlx720::State::Main);
    EXPECT_EQ(bench.control<QPushButton>(QStringLiteral("OnOff"))->text(), QStringLiteral("OFF"));
    EXPECT_TRUE(bench.control<QPushButton>(QStringLiteral("BandSelected3"))->isEnabled());
}

TEST(OperateTabTest, PowerButtonAtTheAmplifierIsNoticed) {
    AppBench bench;
    bench.start();
    bench.chooseTab(Tab::Operate);
    bench.clock().advance(1500ms);
    bench.amplifier().pressPowerButton();
    bench.clock().advance(3s);
    EXPECT_EQ(bench.app().globals().m_FirmwareStatus, QStringLiteral("Bootloader"));
    EXPECT_FALSE(bench.control<QLabel>(QStringLiteral("PAVoltage"))->isEnabled());
}

}  // namespace
