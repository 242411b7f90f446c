#include <QAction>

#include "AppBench.h"

using namespace std::chrono_literals;

namespace {

TEST(TrendsFeedTest, WhatTheOperateTabShowsIsRecorded) {
    AppBench bench(Tab::Operate);
    bench.clock().advance(5s);
    bench.amplifier().raiseFault(9);
    bench.press(QStringLiteral("BandSelected6"));
    bench.clock().advance(950ms);
    bench.control<QAction>(QStringLiteral("ViewTrends"))->trigger();
    QWidget* trends = nullptr;
    for (QWidget* window : QApplication::topLevelWidgets())
        if (window->objectName() == u"TrendsWindow")
            trends = window;
    ASSERT_TRUE(trends && trends->isVisible());
    const QString readOut = child<QLabel>(*trends, QStringLiteral("TrendsReadOut"))->text();
    for (const char* name : {"PAVoltage", "PACurrent", "Temperature", "Power", "SWR"})
        EXPECT_TRUE(readOut.contains(u' ' + bench.label(QLatin1StringView(name))))
            << name << " is not in " << qPrintable(readOut);
    EXPECT_TRUE(readOut.endsWith(QStringLiteral("REFL HI"))) << qPrintable(readOut);

    bench.window().close();
    for (const QWidget* window : QApplication::topLevelWidgets())
        EXPECT_FALSE(window->isVisible()) << qPrintable(window->objectName());
}

}  // namespace
