#include "AppBench.h"

using namespace std::chrono_literals;

namespace {

TEST(LinkStateTest, IsSeenAtAGlance) {
    AppBench bench(Tab::Port);
    auto* state = bench.control<QPushButton>(QStringLiteral("LinkState"));
    const auto shown = [&bench, state](std::chrono::milliseconds later) {
        bench.clock().advance(later);
        EXPECT_EQ(state->accessibleName(), QStringLiteral("Link: ") + state->text());
        return state->text().toStdString();
    };
    bench.chooseTab(Tab::Operate);
    state->click();
    EXPECT_EQ(bench.app().globals().m_TabPanel, static_cast<int>(Tab::Port));

    bench.chooseTab(Tab::Operate);
    bench.clock().advance(2s);
    bench.amplifier().powerOff();
    EXPECT_EQ(shown(6s).substr(0, 37), "ttyUSB0, 38400 bit/s, no answer for 5");
    bench.amplifier().powerOn();
    EXPECT_EQ(shown(3s), "ttyUSB0, 38400 bit/s, Loader");
    bench.chooseTab(Tab::Port);
    bench.amplifier().powerOff();
    bench.control<QPushButton>(QStringLiteral("TestCommButtton"))->click();
    EXPECT_EQ(shown(1s), "ttyUSB0, asking...");
    EXPECT_EQ(shown(5s), "ttyUSB0, no answer");
}

}  // namespace
