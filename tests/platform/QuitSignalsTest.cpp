#include "QuitSignals.h"

#include <csignal>

#include <gtest/gtest.h>

#include "EventLoop.h"

namespace {

TEST(QuitSignalsTest, EachIsToldFromTheEventLoopAndTheOldHandlersComeBack) {
    static int old = 0;
    const auto before = std::signal(SIGHUP, [](int) { ++old; });
    {
        int told = 0;
        const QuitSignals signals([&told] { ++told; });
        for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
            const int earlier = told;
            std::raise(signal);
            EXPECT_EQ(told, earlier) << "never from inside the signal";
            EXPECT_TRUE(turnUntil([&told, earlier] { return told > earlier; }, std::chrono::seconds(5)));
        }
    }
    std::raise(SIGHUP);
    EXPECT_EQ(old, 1);
    std::signal(SIGHUP, before);
}

}  // namespace
