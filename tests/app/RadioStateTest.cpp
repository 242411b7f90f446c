#include "RadioState.h"

#include <gtest/gtest.h>

#include "AmplifierBench.h"

using namespace std::chrono_literals;

namespace {

struct SensedAmplifier : AmplifierBench {
    explicit SensedAmplifier(const Vlx720::Settings& settings = {}) : AmplifierBench(settings) {
        port.Open();
    }

    bool refresh(std::int32_t retries = 1) {
        Task<bool> task = radioState.Refresh(retries);
        EXPECT_TRUE(clock.run(task));
        duration = clock.now();
        EXPECT_FALSE(line.isTaken());
        return task.result();
    }

    RadioState radioState{platform, globals, line};
    Clock::Microseconds duration{0};
};

Vlx720::Settings amplifierAt(int speed) {
    Vlx720::Settings settings;
    settings.speed = speed;
    return settings;
}

struct SpeedCase {
    int speed;
    int code;
    const char* written;
    // The waits on the way: per speed that does not answer 100 ms and 20 ticks, then 100 ms and the answer.
    Clock::Microseconds waits;
};

class SpeedTest : public testing::TestWithParam<SpeedCase> {};

TEST_P(SpeedTest, FindsTheMainFirmwareAndReadsItsVersion) {
    SensedAmplifier bench(amplifierAt(GetParam().speed));
    EXPECT_TRUE(bench.refresh());
    EXPECT_EQ(bench.globals.m_FirmwareStatus, QStringLiteral("Main"));
    EXPECT_EQ(bench.globals.m_dwBaudRate, GetParam().speed);
    EXPECT_EQ(bench.globals.m_strMcuVersion, QStringLiteral("01.23"));
    EXPECT_EQ(bench.globals.m_dwMcuVersion, 123);
    EXPECT_EQ(bench.port.Baud(), GetParam().code);
    EXPECT_EQ(bench.port.written(), GetParam().written);
    EXPECT_LE(bench.duration, GetParam().waits + GetParam().waits / 20);
    EXPECT_EQ(bench.clock.pendingWaits(), 0);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Speeds, SpeedTest, testing::Values(
    SpeedCase{38400, 12, ";;;;;;I;^RVM;",                   100ms + 30ms},
    SpeedCase{19200, 10, ";;;;;;;;;;;;^RVM;",               100ms + 345ms + 130ms},
    SpeedCase{9600,   8, ";;;;;;;;;;;;;;;;;;^RVM;",         2 * (100ms + 345ms) + 145ms},
    SpeedCase{4800,   6, ";;;;;;;;;;;;;;;;;;;;;;;;^RVM;",   3 * (100ms + 345ms) + 175ms}),
    [](const auto& row) { return std::to_string(row.param.speed); });
// clang-format on

TEST(RadioStateTest, WaitingAmplifierIsInItsBootloader) {
    Vlx720::Settings settings;
    settings.state = Vlx720::State::Waiting;
    SensedAmplifier bench(settings);
    EXPECT_FALSE(bench.refresh(0));
    EXPECT_TRUE(bench.globals.isBootloader());
    EXPECT_EQ(bench.globals.m_dwBaudRate, 38400);
    EXPECT_EQ(bench.port.written(), ";;;;;;I;");
}

TEST(RadioStateTest, SilentAmplifierIsTriedTwiceAtEachSpeed) {
    SensedAmplifier bench;
    bench.amplifier.powerOff();
    EXPECT_FALSE(bench.refresh(1));
    EXPECT_EQ(bench.globals.m_FirmwareStatus, QStringLiteral("Unknown"));
    EXPECT_EQ(bench.globals.m_dwBaudRate, 0);
    EXPECT_EQ(bench.globals.m_strMcuVersion, QStringLiteral("---"));
    EXPECT_EQ(bench.port.written(), QByteArray(";").repeated(48));
    EXPECT_EQ(bench.port.Baud(), Baud::Code4800);
    EXPECT_GE(bench.duration, 3600ms);
    EXPECT_LE(bench.duration, 3850ms);
    EXPECT_EQ(bench.clock.pendingWaits(), 0);
}

TEST(RadioStateTest, ClosedPortEndsByTime) {
    SensedAmplifier bench;
    bench.port.Close();
    EXPECT_FALSE(bench.refresh(0));
    EXPECT_TRUE(bench.globals.isUnknown());
}

TEST(RadioStateTest, RefreshTriesAgainAsOftenAsItIsTold) {
    SensedAmplifier bench;
    bench.amplifier.powerOff();
    EXPECT_FALSE(bench.refresh(10));
    EXPECT_EQ(bench.port.written().size(), 11 * 24);
}

struct AnswerCase {
    const char* name;
    const char* version;
    const char* shown;
    double number;
};

class VersionAnswerTest : public testing::TestWithParam<AnswerCase> {};

TEST_P(VersionAnswerTest, OnlyFiveCharactersAreAVersion) {
    SensedAmplifier bench;
    bench.amplifier.setFirmwareVersion(GetParam().version);
    EXPECT_TRUE(bench.refresh());
    EXPECT_EQ(bench.globals.m_strMcuVersion, QString::fromLatin1(GetParam().shown));
    EXPECT_EQ(bench.globals.m_dwMcuVersion, GetParam().number);
}

INSTANTIATE_TEST_SUITE_P(Answers, VersionAnswerTest,
                         testing::Values(AnswerCase{"usual", "01.23", "01.23", 123},
                                         AnswerCase{"short", "1.23", "N/A", 9999},
                                         AnswerCase{"long", "01.234", "N/A", 9999},
                                         AnswerCase{"empty", "", "N/A", 9999},
                                         AnswerCase{"letters", "ab.cd", "00.00", 0},
                                         AnswerCase{"otherSeparator", "12:34", "12.34", 1234}),
                         [](const auto& row) { return row.param.name; });

TEST(RadioStateTest, AmplifierThatFallsSilentAfterItsSpeedCountsAsMain) {
    SensedAmplifier bench(amplifierAt(9600));
    // The first empty commands are answered, then nothing more.
    for (int nth = 3; nth < 12; ++nth)
        bench.amplifier.misbehave({Misbehaviour::Kind::Lost, nth});
    EXPECT_TRUE(bench.refresh());
    EXPECT_EQ(bench.globals.m_FirmwareStatus, QStringLiteral("Main"));
    EXPECT_EQ(bench.globals.m_strMcuVersion, QStringLiteral("N/A"));
}

TEST(RadioStateTest, TraceTellsTheExchange) {
    SensedAmplifier bench;
    bench.globals.m_Verbose = true;
    bench.refresh();
    ASSERT_EQ(bench.log.size(), 2);
    EXPECT_EQ(bench.log[0], QStringLiteral("Send \"^RVM;\""));
    EXPECT_TRUE(bench.log[1].startsWith(QStringLiteral("Response \"^RVM01.23;\"   ")))
        << bench.log[1].toStdString();
    EXPECT_TRUE(bench.log[1].endsWith(QStringLiteral(" msec")));
}

TEST(RadioStateTest, CancelledAtAnyMomentLeavesNothingBehind) {
    for (int steps = 0; steps < 60; ++steps) {
        SensedAmplifier bench(amplifierAt(19200));
        {
            const Task<bool> task = bench.radioState.Refresh(1);
            for (int step = 0; step < steps && !task.isDone(); ++step)
                bench.clock.step();
        }
        EXPECT_FALSE(bench.line.isTaken());
        bench.clock.advance(1s);
        EXPECT_EQ(bench.clock.pendingWaits(), 0) << "after " << steps;
    }
}

}  // namespace
