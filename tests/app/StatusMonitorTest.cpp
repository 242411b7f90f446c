
#include "MonitorBench.h"

using namespace std::chrono_literals;
using ReadOut = OperatePanel::ReadOut;

namespace {

const QByteArray Burst = "^BN;^FL;^OS;^WS;^TM;^VI;";

struct AnswerCase {
    const char* name;
    QByteArray bytes;
    ReadOut readOut;
    const char* shown;
};

class AnswerTest : public testing::TestWithParam<AnswerCase> {};

TEST_P(AnswerTest, IsShown) {
    Monitored bench;
    bench.take(GetParam().bytes);
    EXPECT_EQ(bench.panel.at(GetParam().readOut), QString::fromLatin1(GetParam().shown));
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Answers, AnswerTest, testing::Values(
    AnswerCase{"voltage",           "^VI532 128;",      ReadOut::PAVoltage,   "53.2 V"},
    AnswerCase{"lowVoltage",        "^VI050 005;",      ReadOut::PAVoltage,   "05.0 V"},
    AnswerCase{"current",           "^VI532 128;",      ReadOut::PACurrent,   "12.8 A"},
    AnswerCase{"lowCurrent",        "^VI532 005;",      ReadOut::PACurrent,   "0.5 A"},
    AnswerCase{"anySeparator",      "^VI532;^VI600x007;", ReadOut::PACurrent, "0.7 A"},
    AnswerCase{"temperature",       "^TM025;",          ReadOut::Temperature, "25 C"},
    AnswerCase{"coldest",           "^TM000;",          ReadOut::Temperature, "0 C"},
    AnswerCase{"power",             "^WS1500 012;",     ReadOut::Power,       "150 W"},
    AnswerCase{"swr",               "^WS150 012;",      ReadOut::SWR,         "1.2"},
    AnswerCase{"band",              "^BN05;",           ReadOut::Band,        "14 MHz"},
    AnswerCase{"highestBand",       "^BN10;",           ReadOut::Band,        "50 MHz"},
    AnswerCase{"lettersForDigits",  "^TMabc;",          ReadOut::Temperature, "0 C"},
    AnswerCase{"highBytes",         "^TM\x80\xff\xa7;", ReadOut::Temperature, "0 C"},
    AnswerCase{"cutShort",          "^TM;",             ReadOut::Temperature, "0 C"},
    AnswerCase{"lastOneCounts",     "^TM025;^TM031;",   ReadOut::Temperature, "31 C"},
    AnswerCase{"strangerBefore",    "VLX720;;x;^TM031;", ReadOut::Temperature, "31 C"},
    AnswerCase{"bandPastTheTable",  "^BN03;^BN99;",     ReadOut::Band,        "7 MHz"},
    AnswerCase{"bandBelowTheTable", "^BN03;^BN-1;",     ReadOut::Band,        "7 MHz"},
    AnswerCase{"faultPastTheTable", "^FL99;^TM031;",    ReadOut::Temperature, "31 C"}),
    [](const auto& row) { return row.param.name; });
// clang-format on

struct FaultCase {
    const char* bytes;
    const char* shown;
};

TEST(StatusMonitorTest, FaultsAreShownByTheirShortNames) {
    const std::vector<FaultCase> cases{
        {"^FL09;", "REFL HI"}, {"^FL00;", ""},         {"^FL03;", ""},       {"^FL15;", "GAIN ERR"},
        {"^FL0;", "PWR ON"},   {"^FLx;", "PWR ON"},    {"^FL16;", "before"}, {"^FL99;", "before"},
        {"^FL-4;", "before"},  {"^FL02x;", "HI CURR"},
    };
    for (const FaultCase& one : cases) {
        Monitored bench;
        bench.panel.fault = QStringLiteral("before");
        bench.take(one.bytes);
        EXPECT_EQ(bench.panel.fault, QString::fromLatin1(one.shown)) << one.bytes;
    }
}

TEST(StatusMonitorTest, ModeIsShownAndOthersTurnBothLampsOff) {
    Monitored bench;
    bench.take("^OS0;");
    EXPECT_EQ(bench.panel.mode, OperatePanel::Mode::Standby);
    EXPECT_EQ(bench.panel.operStby, QStringLiteral("Operate"));
    bench.take("^OS1;");
    EXPECT_EQ(bench.panel.mode, OperatePanel::Mode::Operate);
    EXPECT_EQ(bench.panel.operStby, QStringLiteral("Standby"));
    bench.take("^OS7;");
    EXPECT_EQ(bench.panel.mode, OperatePanel::Mode::Other);
    EXPECT_EQ(bench.panel.operStby, QStringLiteral("Standby"));
}

TEST(StatusMonitorTest, AnswersMayBeCutAtEveryByte) {
    const QByteArray all = "^BN05;^FL09;^OS1;^WS150 012;^TM025;^VI532 128;";
    for (qsizetype cut = 0; cut <= all.size(); ++cut) {
        Monitored bench;
        bench.take(all.left(cut));
        EXPECT_FALSE(bench.globals.m_VLXdata.contains(u';'));
        bench.take(all.mid(cut));
        EXPECT_EQ(bench.globals.m_VLXdata, QString());
        EXPECT_EQ(bench.panel.at(ReadOut::Band), QStringLiteral("14 MHz")) << cut;
        EXPECT_EQ(bench.panel.at(ReadOut::PACurrent), QStringLiteral("12.8 A")) << cut;
        EXPECT_EQ(bench.panel.at(ReadOut::SWR), QStringLiteral("1.2")) << cut;
        EXPECT_EQ(bench.panel.fault, QStringLiteral("REFL HI")) << cut;
    }
}

TEST(StatusMonitorTest, AnswerWithoutEndIsBounded) {
    Monitored bench;
    for (int chunk = 0; chunk < 40; ++chunk)
        bench.take(QByteArray(65536, 'x'));
    EXPECT_EQ(bench.globals.m_VLXdata.size(), StatusMonitor::UnfinishedLimit);
    bench.take("^;^TM025;");
    EXPECT_EQ(bench.globals.m_VLXdata, QString());
    EXPECT_EQ(bench.panel.at(ReadOut::Temperature), QStringLiteral("25 C"));
}

TEST(StatusMonitorTest, PollsOnceASecondWithoutDriftForADay) {
    Monitored bench;
    bench.monitor.enterOperateTab();
    bench.clock.advance(500ms);
    EXPECT_EQ(bench.port.written(), Burst);
    EXPECT_EQ(bench.panel.onOff, QStringLiteral("OFF"));
    EXPECT_TRUE(bench.panel.areReadOutsEnabled);
    EXPECT_TRUE(bench.panel.isOnOffEnabled);
    EXPECT_FALSE(bench.panel.at(ReadOut::Temperature).isEmpty());

    bench.port.clearWritten();
    bench.clock.advance(24h);
    EXPECT_EQ(bench.port.written().size(), 24 * 3600 * Burst.size());
    EXPECT_EQ(bench.globals.m_VLXdata, QString());
    bench.monitor.stopPoll();
    bench.port.clearWritten();
    bench.clock.advance(1min);
    EXPECT_EQ(bench.port.written(), QByteArray());
    EXPECT_EQ(bench.clock.pendingWaits(), 0);
}

TEST(StatusMonitorTest, WaitingAmplifierIsAskedForItsName) {
    Monitored bench({.state = Vlx720::State::Waiting});
    bench.globals.m_FirmwareStatus = FirmwareStatus::SensedBootLoader;
    bench.monitor.enterOperateTab();
    bench.clock.advance(2500ms);
    EXPECT_EQ(bench.port.written(), "I;I;I;");
    EXPECT_EQ(bench.panel.onOff, QStringLiteral("ON"));
    EXPECT_FALSE(bench.panel.areReadOutsEnabled);
    EXPECT_TRUE(bench.panel.isOnOffEnabled);
}

TEST(StatusMonitorTest, ShortBandAnswerMeansThatTheAmplifierWaits) {
    Monitored bench({.speed = 9600});
    bench.monitor.enterOperateTab();
    bench.clock.advance(500ms);
    bench.take("^BN;^TM025;^TM0");
    EXPECT_EQ(bench.globals.m_FirmwareStatus, QStringLiteral("Bootloader"));
    EXPECT_EQ(bench.port.bitsPerSecond(), 38400);
    EXPECT_EQ(bench.panel.onOff, QStringLiteral("ON"));
    EXPECT_FALSE(bench.panel.areReadOutsEnabled);
    // Band 0 is marked, though none was told; the fields behind still count, the unfinished one does not.
    EXPECT_EQ(bench.panel.at(ReadOut::Band), QStringLiteral("1.8 MHz"));
    EXPECT_EQ(bench.panel.at(ReadOut::Temperature), QStringLiteral("25 C"));
    EXPECT_EQ(bench.globals.m_VLXdata, QString());
    bench.port.clearWritten();
    bench.clock.advance(1500ms);
    EXPECT_EQ(bench.port.written(), "I;");
    EXPECT_FALSE(bench.window.mStartup);
}

TEST(StatusMonitorTest, FullBandAnswerBringsTheMainFirmwareBack) {
    Monitored bench;
    bench.globals.m_FirmwareStatus = FirmwareStatus::Bootloader;
    bench.take("^BN05;");
    EXPECT_EQ(bench.globals.m_FirmwareStatus, QStringLiteral("Main"));
    // Neither the panel nor the caption follows.
    EXPECT_FALSE(bench.panel.areReadOutsEnabled);
    EXPECT_EQ(bench.panel.onOff, QStringLiteral("ON"));
}

TEST(StatusMonitorTest, PollKeepsOutWhileAFlowOwnsTheLine) {
    Monitored bench;
    bench.monitor.enterOperateTab();
    bench.clock.advance(500ms);
    bench.port.clearWritten();
    {
        const auto guard = bench.line.take();
        bench.clock.advance(5s);
        EXPECT_EQ(bench.port.written(), QByteArray());
    }
    bench.clock.advance(1s);
    EXPECT_EQ(bench.port.written(), Burst);
}

// Its usual runs are golden ones.
TEST(StatusMonitorTest, SynchronousExchangeDoesNotDivideTheSwr) {
    Monitored bench;
    bench.amplifier.liveValues().hold({.watts = 150, .deciSwr = 12});
    const Task<> task = bench.monitor.SendCommandParseResponse(QStringLiteral("^WS;"), 11);
    EXPECT_TRUE(bench.clock.run(task));
    EXPECT_EQ(bench.panel.at(ReadOut::SWR), QStringLiteral("12.0"));
    EXPECT_EQ(bench.clock.pendingWaits(), 0);
}

TEST(StatusMonitorTest, AnswersThatComeBeforeTheBurstIsSentAreNotKeptBack) {
    Monitored bench;
    bench.amplifier.setInstantLine(true);
    bench.port.setInstantLine(true);
    bench.monitor.enterOperateTab();
    bench.clock.advance(50ms);
    EXPECT_FALSE(bench.panel.at(ReadOut::PAVoltage).isEmpty());
    EXPECT_TRUE(bench.port.LookAhead().isEmpty());
}

TEST(StatusMonitorTest, BacklogOfAFloodIsTakenInTurns) {
    Monitored bench;
    bench.window.mStartup = true;  // as on another tab: nobody reads
    bench.amplifier.setInstantLine(true);
    bench.amplifier.emitNoise(QByteArray("^BN00;^OS1;^BN10;^OS0;").repeated(10000));
    bench.clock.advance(1s);
    ASSERT_EQ(bench.port.LookAhead().size(), 220000);
    bench.window.mStartup = false;
    bench.monitor.takeReceived();
    EXPECT_EQ(bench.port.LookAhead().size(), 220000 - StatusMonitor::TurnLimit);
    bench.clock.advance(1s);
    EXPECT_TRUE(bench.port.LookAhead().isEmpty());
    EXPECT_EQ(bench.panel.band, 10);
    EXPECT_EQ(bench.clock.pendingWaits(), 0);
}

}  // namespace
