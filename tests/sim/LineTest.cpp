#include "SimBench.h"

namespace {

class LineTest : public SimBench {
protected:
    std::int64_t microseconds() const { return clock.now().count(); }

    // When, since the question, each piece of the answer had come.
    std::vector<std::int64_t> arrivals(const QByteArray& question) {
        std::vector<std::int64_t> times;
        const auto start = microseconds();
        port.DataAvailable = [&] { times.push_back(microseconds() - start); };
        ask(question, 1s);
        port.DataAvailable = nullptr;
        return times;
    }
};

TEST_F(LineTest, BytesTakeTenBitsEachInBothDirections) {
    // 4 bytes there and 7 back; at 38400 bit/s a byte takes 260.41 microseconds.
    EXPECT_EQ(arrivals("^TM;"), std::vector<std::int64_t>{1042 + 1823});
    // Each answer starts when its question has come, and ends behind the one before it.
    EXPECT_EQ(arrivals("^TM;^TM;"), (std::vector<std::int64_t>{1042 + 1823, 1042 + 3646}));
    amplifier.setSpeed(4800);
    setPortSpeed(4800);
    EXPECT_EQ(arrivals("^TM;"), std::vector<std::int64_t>{8334 + 14584});
}

TEST_F(LineTest, ManySmallWritesTakeAsLongAsOneLargeOne) {
    for (int i = 0; i < 1000; ++i)
        port.Write("x");
    const Task<> sent = port.XmitWait();
    EXPECT_TRUE(clock.run(sent));
    EXPECT_EQ(microseconds(), 260417);
}

TEST_F(LineTest, InstantLineTakesNoTime) {
    port.setInstantLine(true);
    EXPECT_EQ(arrivals("^TM;"), std::vector<std::int64_t>{0});
}

TEST_F(LineTest, FlushDropsWhatHasPassedAndLeavesWhatHasNot) {
    port.Write("^TM;");
    // The question, and three bytes and a half of the answer.
    clock.advance(1042us + 912us);
    port.Flush();
    clock.advance(1s);
    EXPECT_EQ(port.ReadAll(), "025;");
}

TEST_F(LineTest, SpeedChangeSpoilsOnlyWhatWasNotSentYet) {
    port.Write("^TM;^TM;");
    clock.advance(1500us);
    setPortSpeed(9600);
    clock.advance(1s);
    setPortSpeed(38400);
    port.Flush();
    EXPECT_EQ(ask(";^BN;"), "^BN00;");
}

TEST_F(LineTest, WrongSpeedIsHeardAsGarbageWithoutASemicolon) {
    port.Write("^TM;");
    clock.advance(1100us);
    setPortSpeed(9600);
    clock.advance(1s);
    const QByteArray heard = port.ReadAll();
    EXPECT_EQ(heard.size(), 7);
    EXPECT_FALSE(heard.contains(';'));
}

TEST_F(LineTest, EveryByteValuePasses) {
    QByteArray all;
    for (int value = 0; value < 256; ++value)
        all += static_cast<char>(value);
    amplifier.emitNoise(all);
    clock.advance(1s);
    EXPECT_EQ(port.ReadAll(), all);
}

TEST_F(LineTest, UnpluggedPortIsClosedAndSaysSoOnce) {
    QStringList reasons;
    port.Lost = [&](const QString& reason) {
        EXPECT_FALSE(port.isOpen());
        reasons += reason;
    };
    port.Write("^TM;");
    const Task<> sent = port.XmitWait();
    port.unplug(QStringLiteral("gone"));
    EXPECT_TRUE(reasons.isEmpty());
    EXPECT_TRUE(clock.run(sent));
    clock.advance(1s);
    EXPECT_EQ(reasons, QStringList{QStringLiteral("gone")});
    EXPECT_EQ(ask("^TM;"), "");
    EXPECT_FALSE(port.Open());
    EXPECT_FALSE(port.openFailure().isEmpty());

    port.replug();
    EXPECT_TRUE(port.Open());
    EXPECT_EQ(ask(";^TM;"), ";^TM025;");
    EXPECT_EQ(clock.pendingWaits(), 0);
}

TEST_F(LineTest, RefusedOpenTellsItsReason) {
    port.Close();
    port.refuseToOpen(QStringLiteral("Permission denied"));
    EXPECT_FALSE(port.Open());
    EXPECT_EQ(port.openFailure(), QStringLiteral("Permission denied"));
    EXPECT_EQ(ask("^TM;"), "");
    EXPECT_EQ(port.written(), "");
    port.refuseToOpen({});
    EXPECT_TRUE(port.Open());
}

TEST_F(LineTest, ModemLinesAreOnRecord) {
    port.setRequestToSend(true);
    const std::vector<SimulatedPort::LineStates> expected{{false, false}, {false, true}};
    EXPECT_EQ(port.lineStates(), expected);
}

}  // namespace
