#include <QLineEdit>

#include <gtest/gtest.h>

#include "AppBench.h"

using namespace std::chrono_literals;

namespace {

TEST(PortLossTest, AdapterThatComesBackIsOpenedAndSensedWhenNoFlowHasTheLine) {
    const PortInfo adapter{"ttyUSB0", "/dev/ttyUSB0", "0403:6001:A"};
    AppBench bench;
    bench.ports().ports = {adapter};
    bench.start();
    bench.chooseTab(Tab::Operate);
    auto* const menu = bench.control<QComboBox>(QStringLiteral("SerialPortMenu"));
    const auto pullAndPlugIn = [&](const PortInfo& comingBack) {
        bench.port().unplug();
        bench.ports().change({});
        bench.clock().advance(2s);
        EXPECT_EQ(menu->count(), 0);
        bench.port().replug();
        bench.ports().change({comingBack});
        bench.clock().advance(300ms);
        bench.ports().change({comingBack});  // the system still works on it
        bench.clock().advance(2s);
    };
    pullAndPlugIn({"ttyUSB1", "/dev/ttyUSB1", "0403:6001:A"});
    EXPECT_EQ(menu->currentText(), QStringLiteral("ttyUSB1"));
    EXPECT_TRUE(bench.logText().contains(QStringLiteral("Serial port ttyUSB1 is back")));
    EXPECT_TRUE(bench.logText().contains(QStringLiteral("VLX Version 01.23. ttyUSB1")));
    EXPECT_EQ(bench.dialogs().shown.size(), 1) << "the loss is told, its end is not";
    bench.port().clearWritten();
    bench.clock().advance(1500ms);
    EXPECT_TRUE(bench.port().written().contains("^BN;^FL;^OS;^WS;^TM;^VI;")) << "the values move again";

    const int opened = bench.port().openCount();
    bench.chooseTab(Tab::Configuration);
    bench.press(QStringLiteral("DisplayFaultTable"));
    pullAndPlugIn(adapter);
    EXPECT_EQ(bench.port().openCount(), opened) << "not while a flow has the line";
    // Its group comes late: the first try fails without a box.
    bench.port().refuseToOpen(QStringLiteral("denied"));
    bench.press(QStringLiteral("CloseButton"));
    bench.clock().advance(1s);
    EXPECT_FALSE(bench.port().isOpen());
    bench.port().refuseToOpen(QString());
    bench.ports().change({adapter});
    bench.clock().advance(3s);
    EXPECT_TRUE(bench.port().isOpen());
    EXPECT_EQ(bench.dialogs().shown.size(), 2);
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
