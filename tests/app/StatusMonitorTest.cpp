
#include "MonitorBench.h"

using namespace std::chrono_literals;
using ReadOut = OperatePanel::ReadOut;

namespace {

const QByteArray Burst = "^BN;^FL;^OS;^WS;^TM;^VI;";

TEST(StatusMonitorTest, AnswersAreShown) {
    const struct {
        QByteArray bytes;
        ReadOut readOut;
        const char* shown;
    } rows[] = {
        // clang-format off
        {"^VI532 128;", ReadOut::PAVoltage, "53.2 V"}, {"^VI050 005;", ReadOut::PAVoltage, "05.0 V"},
        {"^VI532 128;", ReadOut::PACurrent, "12.8 A"}, {"^VI532 005;", ReadOut::PACurrent, "0.5 A"},
        {"^VI532;^VI600x007;", ReadOut::PACurrent, "0.7 A"}, {"^TM025;", ReadOut::Temperature, "25 C"},
        {"^TM000;", ReadOut::Temperature, "0 C"}, {"^WS1500 012;", ReadOut::Power, "150 W"},
        {"^WS150 012;", ReadOut::SWR, "1.2"}, {"^BN05;", ReadOut::Band, "14 MHz"},
        {"^BN10;", ReadOut::Band, "50 MHz"}, {"^TMabc;", ReadOut::Temperature, "0 C"},
        {"^TM\x80\xff\xa7;", ReadOut::Temperature, "0 C"}, {"^TM;", ReadOut::Temperature, "0 C"},
        {"^TM025;^TM031;", ReadOut::Temperature, "31 C"}, {"VLX720;;x;^TM031;", ReadOut::Temperature, "31 C"},
        {"^BN03;^BN11;", ReadOut::Band, "7 MHz"}, {"^BN03;^BN99;", ReadOut::Band, "7 MHz"},
        {"^BN03;^BN-1;", ReadOut::Band, "7 MHz"}, {"^FL99;^TM031;", ReadOut::Temperature, "31 C"},
        // clang-format on
    };
    for (const auto& [bytes, readOut, shown] : rows) {
        Monitored bench;
        bench.take(bytes);
        EXPECT_EQ(bench.panel.at(readOut), QString::fromLatin1(shown)) << bytes.toStdString();
    }
}

TEST(StatusMonitorTest, FaultsAreShownByTheirShortNames) {
    const std::pair<const char*, const char*> cases[] = {
        {"^FL09;", "REFL HI"}, {"^FL00;", ""},         {"^FL03;", ""},       {"^FL15;", "GAIN ERR"},
        {"^FL0;", "PWR ON"},   {"^FLx;", "PWR ON"},    {"^FL16;", "before"}, {"^FL99;", "before"},
        {"^FL-4;", "before"},  {"^FL02x;", "HI CURR"},
    };
    for (const auto& [bytes, shown] : cases) {
        Monitored bench;
        bench.panel.fault = QStringLiteral("before");
        bench.take(bytes);
        EXPECT_EQ(bench.panel.fault, QString::fromLatin1(shown)) << bytes;
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
    bench.port.clearWritten();
    bench.clock.advance(24h);
    EXPECT_EQ(bench.port.written().size(), 24 * 3600 * Burst.size());
    bench.monitor.stopPoll();
    bench.port.clearWritten();
    bench.clock.advance(1min);
    EXPECT_EQ(bench.port.written(), QByteArray());
    EXPECT_EQ(bench.clock.pendingWaits(), 0);
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
