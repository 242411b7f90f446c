#include <QLineEdit>

#include <gtest/gtest.h>

#include "AppBench.h"

using namespace std::chrono_literals;

namespace {

TEST(PortLossTest, UnpluggedWhilePollingGivesOneMessageAndComesBackByRefreshAndTest) {
    AppBench bench;
    bench.start();
    bench.chooseTab(Tab::Operate);
    bench.clock().advance(2500ms);
    bench.port().unplug();
    bench.clock().advance(30s);
    EXPECT_EQ(bench.dialogs().shown.size(), 1);
    EXPECT_EQ(bench.errors, 0);

    bench.port().replug();
    bench.chooseTab(Tab::Port);
    bench.press(QStringLiteral("RefreshPortsButton"));
    bench.press(QStringLiteral("TestCommButtton"));
    bench.clock().advance(5s);
    ASSERT_EQ(bench.dialogs().shown.size(), 2);
    EXPECT_TRUE(bench.dialogs().shown.back().startsWith(QStringLiteral("VLX version 01.23. ")));
    bench.port().clearWritten();
    bench.chooseTab(Tab::Operate);
    bench.clock().advance(1500ms);
    EXPECT_TRUE(bench.port().written().startsWith("^BN;^FL;^OS;^WS;^TM;^VI;"));
}

TEST(PortLossTest, UnpluggedAtAnyMomentOfSensingEndsInNotResponding) {
    Vlx720::Settings settings;
    settings.speed = 4800;
    for (const auto moment : {1ms, 60ms, 105ms, 120ms, 140ms, 900ms, 1400ms}) {
        AppBench bench(settings);
        bench.start();
        bench.press(QStringLiteral("TestCommButtton"));
        bench.clock().advance(moment);
        bench.port().unplug();
        bench.clock().advance(10s);
        ASSERT_EQ(bench.dialogs().shown.size(), 2) << moment.count();
        EXPECT_EQ(bench.dialogs().shown.back(), QStringLiteral("VLX is not responding."));
        EXPECT_TRUE(bench.control<QPushButton>(QStringLiteral("TestCommButtton"))->isEnabled());
        EXPECT_TRUE(bench.control<QTabWidget>(QStringLiteral("TabPanel1"))->isTabEnabled(2));
    }
}

TEST(PortLossTest, OpeningLeavesDtrAndRtsDown) {
    AppBench bench;
    bench.start();
    ASSERT_FALSE(bench.port().lineStates().empty());
    for (const SimulatedPort::LineStates& state : bench.port().lineStates()) {
        EXPECT_FALSE(state.dataTerminalReady);
        EXPECT_FALSE(state.requestToSend);
    }
}

TEST(PortLossTest, PortThatAppearsAfterTheStartCanBeChosen) {
    AppBench bench;
    const std::vector<PortInfo> list = bench.ports().ports;
    bench.ports().ports.clear();
    bench.start();
    EXPECT_TRUE(bench.control<QLineEdit>(QStringLiteral("PortField"))->isVisible());
    bench.ports().ports = list;
    bench.press(QStringLiteral("RefreshPortsButton"));
    auto* menu = bench.control<QComboBox>(QStringLiteral("SerialPortMenu"));
    EXPECT_EQ(menu->currentIndex(), 0);
    // The only row is the present one already: choosing it is a choice all the same.
    Q_EMIT menu->activated(0);
    EXPECT_TRUE(bench.port().isOpen());
    const int opened = bench.port().openCount();
    Q_EMIT menu->activated(0);
    EXPECT_EQ(bench.port().openCount(), opened) << "an open port is left alone";
}

}  // namespace
