// What sensing makes of odd amplifiers and ports. Its usual runs are the golden ones.
#include "RadioState.h"

#include "AmplifierBench.h"

using namespace std::chrono_literals;
using Kind = Misbehaviour::Kind;

namespace {

struct SensedAmplifier : AmplifierBench {
    explicit SensedAmplifier(int speed = Vlx720::LoaderSpeed) {
        amplifier.setSpeed(speed);
        port.Open();
    }

    bool refresh(std::int32_t retries = 1) {
        Task<bool> task = radioState.Refresh(retries);
        EXPECT_TRUE(clock.run(task));
        EXPECT_FALSE(line.isTaken());
        duration = clock.now();
        clock.advance(2s);  // answers that are still on their way
        EXPECT_EQ(clock.pendingWaits(), 0);
        return task.result();
    }

    RadioState radioState{platform, globals, line};
    Clock::Microseconds duration{0};
};

TEST(RadioStateTest, ClosedPortEndsAtOnce) {
    SensedAmplifier bench;
    bench.port.Close();
    EXPECT_FALSE(bench.refresh(10));
    EXPECT_TRUE(bench.globals.isUnknown());
    EXPECT_EQ(bench.duration, 0ms);
}

TEST(RadioStateTest, PortThatIsLostAtAnyMomentLeavesNothingKnown) {
    for (const int speed : {38400, 9600})
        for (auto moment = 0ms; moment < 1100ms; moment += 3ms) {
            SensedAmplifier bench(speed);
            Task<bool> sensing = bench.radioState.Refresh(1);
            bench.clock.advance(moment);
            if (sensing.isDone())
                break;
            bench.port.unplug();
            EXPECT_TRUE(bench.clock.run(sensing, 200ms)) << moment.count();
            EXPECT_FALSE(sensing.result());
            EXPECT_TRUE(bench.globals.isUnknown()) << moment.count();
            EXPECT_EQ(bench.globals.m_strMcuVersion, QStringLiteral("---"));
            bench.clock.advance(1s);
            EXPECT_EQ(bench.clock.pendingWaits(), 0);
        }
}

TEST(RadioStateTest, LateAnswersToThePollAreNoEcho) {
    SensedAmplifier bench(4800);
    bench.port.setBaud(Baud::Code4800);
    bench.port.Reset();
    bench.port.Write("^BN;^FL;");
    bench.clock.advance(100ms);
    ASSERT_TRUE(bench.port.LookAhead().contains(';'));
    EXPECT_TRUE(bench.refresh());
    EXPECT_EQ(bench.globals.m_dwBaudRate, 4800);
    EXPECT_EQ(bench.globals.m_strMcuVersion, QStringLiteral("01.23"));
}

TEST(RadioStateTest, RefreshTriesAgainAsOftenAsItIsTold) {
    for (const int retries : {0, 1, 10}) {
        SensedAmplifier bench;
        bench.amplifier.powerOff();
        EXPECT_FALSE(bench.refresh(retries));
        EXPECT_EQ(bench.port.written().size(), (retries + 1) * 24);
    }
}

TEST(RadioStateTest, OnlyFiveCharactersAreAVersion) {
    struct Row {
        const char* version;
        const char* shown;
        double number;
    };
    for (const auto& [version, shown, number] :
         {Row{"1.23", "N/A", 9999}, Row{"01.234", "N/A", 9999}, Row{"", "N/A", 9999},
          Row{"ab.cd", "00.00", 0}, Row{"12:34", "12.34", 1234}, Row{"99.99", "N/A", 9999}}) {
        SensedAmplifier bench;
        bench.amplifier.setFirmwareVersion(version);
        EXPECT_TRUE(bench.refresh());
        EXPECT_EQ(bench.globals.m_strMcuVersion, QString::fromLatin1(shown)) << version;
        EXPECT_EQ(bench.globals.m_dwMcuVersion, number) << version;
    }
}

// The last moment at which an answer counts, and the first at which it does not.
TEST(RadioStateTest, WaitsAsLongAsItIsTold) {
    struct Row {
        const char* name;
        int answer;  // counted from 1: six empty commands, "I;", "^RVM;"
        Clock::Microseconds delay;
        const char* version;
    };
    for (const auto& [name, answer, delay, version] :
         {Row{"identity, 61 ticks", 7, 1005ms, "01.23"}, Row{"version, 60 ticks", 8, 1000ms, "01.23"},
          Row{"version, later", 8, 1030ms, "N/A"}}) {
        SensedAmplifier bench;
        bench.amplifier.misbehave({Kind::Late, answer, delay});
        EXPECT_TRUE(bench.refresh(0)) << name;
        EXPECT_EQ(bench.globals.m_strMcuVersion, QString::fromLatin1(version)) << name;
    }
}

TEST(RadioStateTest, AmplifierThatFallsSilentAfterItsSpeedCountsAsMain) {
    SensedAmplifier bench(9600);
    // The first empty commands are answered, then nothing more.
    for (int nth = 3; nth < 12; ++nth)
        bench.amplifier.misbehave({Kind::Lost, nth});
    EXPECT_TRUE(bench.refresh());
    EXPECT_EQ(bench.globals.m_FirmwareStatus, QStringLiteral("Main"));
    EXPECT_EQ(bench.globals.m_strMcuVersion, QStringLiteral("N/A"));
}

TEST(RadioStateTest, CancelledAtAnyMomentLeavesNothingBehind) {
    for (int steps = 0; steps < 60; ++steps) {
        SensedAmplifier bench(19200);
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
