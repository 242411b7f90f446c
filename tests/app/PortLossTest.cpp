#include <QLineEdit>

#include <gtest/gtest.h>

#include "AppBench.h"

using namespace std::chrono_literals;

namespace {

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
