#include "QtSerialPort.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QStringList>

#include "EventLoop.h"
#include "ModemLines.h"
#include "PseudoTerminal.h"
#include "SimClock.h"
#include "SystemClock.h"

using namespace std::chrono_literals;

namespace {

QByteArray everyByte() {
    QByteArray all;
    for (int value = 0; value < 256; ++value)
        all += static_cast<char>(value);
    return all;
}

// The real port on the real clock, against a pseudo-terminal.
class QtSerialPortTest : public testing::Test {
protected:
    QtSerialPortTest() {
        port.setSerialPort({QStringLiteral("pty"), line.path()});
        port.DataAvailable = [this] { ++announced; };
        port.Lost = [this](const QString& reason) {
            EXPECT_FALSE(port.isOpen());
            lost += reason;
        };
        modemLines = {};
    }

    void finish(const Task<>& task) {
        EXPECT_TRUE(turnUntil([&task] { return task.isDone(); }));
    }

    PseudoTerminal line;
    SystemClock clock;
    QtSerialPort port{clock};
    int announced = 0;
    QStringList lost;
};

TEST_F(QtSerialPortTest, AllByteValuesPassBothWays) {
    ASSERT_TRUE(port.Open());
    port.Write(everyByte());
    finish(port.XmitWait());
    EXPECT_EQ(line.take(), everyByte());

    line.send(everyByte());
    EXPECT_TRUE(turnUntil([this] { return port.LookAhead().size() == 256 && announced > 0; }));
    EXPECT_EQ(port.Read(10), everyByte().left(10));
    EXPECT_EQ(port.ReadAll(), everyByte().mid(10));
    EXPECT_EQ(port.ReadAll(), QByteArray());
    EXPECT_EQ(clock.pendingWaits(), 0);
}

TEST_F(QtSerialPortTest, LinesGoDownAtTheOpenAndStayDown) {
    ASSERT_TRUE(port.Open());
    EXPECT_EQ(modemLines.state, 0);
    EXPECT_TRUE(modemLines.isLowLatency);

    for (const int code : {Baud::Code38400, Baud::Code19200, Baud::Code9600, Baud::Code4800}) {
        port.setBaud(code);
        port.Reset();
        port.Write(";;;;;");
        finish(port.XmitWait());
        port.Flush();
    }
    port.setRequestToSend(false);
    port.Close();
    EXPECT_EQ(modemLines.timesRaised, 0);

    modemLines = {};
    ASSERT_TRUE(port.Open());
    EXPECT_EQ(modemLines.state, 0);
    port.setRequestToSend(true);
    EXPECT_EQ(modemLines.state, TIOCM_RTS);
}

TEST_F(QtSerialPortTest, APortThatRefusesTheLinesWorksAllTheSame) {
    modemLines.refused = true;
    ASSERT_TRUE(port.Open());
    port.setRequestToSend(true);
    line.send("^BN05;");
    EXPECT_TRUE(turnUntil([this] { return port.LookAhead() == "^BN05;"; }));
    EXPECT_TRUE(port.isOpen());
    EXPECT_EQ(lost, QStringList());
}

TEST_F(QtSerialPortTest, ASpeedReachesTheOpenPortAtReset) {
    port.setBaud(Baud::Code9600);
    ASSERT_TRUE(port.Open());
    EXPECT_EQ(line.speed(), 9600);
    for (const int code : {Baud::Code38400, Baud::Code19200, Baud::Code9600, Baud::Code4800}) {
        const int before = line.speed();
        port.setBaud(code);
        EXPECT_EQ(line.speed(), before);
        port.Reset();
        EXPECT_EQ(line.speed(), Baud::bitsPerSecond(code));
        EXPECT_TRUE(port.isOpen());
    }
    port.Close();
    port.setBaud(Baud::Code19200);
    port.Reset();
    ASSERT_TRUE(port.Open());
    EXPECT_EQ(line.speed(), 19200);
}

TEST_F(QtSerialPortTest, FlushTakesWhatWasReceivedAndLeavesWhatIsToBeSent) {
    ASSERT_TRUE(port.Open());
    line.send("old");
    EXPECT_TRUE(turnUntil([this] { return port.LookAhead() == "old"; }));
    line.send("older, still in the system");
    port.Write("^RVM;");
    port.Flush();
    EXPECT_EQ(port.ReadAll(), QByteArray());
    finish(port.XmitWait());
    turnFor(20ms);
    EXPECT_EQ(line.take(), "^RVM;");
    EXPECT_EQ(port.ReadAll(), QByteArray());

    line.send("new");
    EXPECT_TRUE(turnUntil([this] { return port.LookAhead() == "new"; }));
}

TEST_F(QtSerialPortTest, OldBytesAreGoneAfterReopening) {
    ASSERT_TRUE(port.Open());
    line.send("old");
    EXPECT_TRUE(turnUntil([this] { return !port.LookAhead().isEmpty(); }));
    ASSERT_TRUE(port.Open());
    EXPECT_EQ(port.ReadAll(), QByteArray());
}

TEST_F(QtSerialPortTest, AVanishedAdapterIsToldOfOnce) {
    ASSERT_TRUE(port.Open());
    line.hangUp();
    port.Write(";");
    EXPECT_TRUE(turnUntil([this] { return !lost.isEmpty(); }));
    EXPECT_FALSE(port.isOpen());
    port.Write(";");
    turnFor(50ms);
    EXPECT_EQ(lost.size(), 1);
    EXPECT_NE(lost.value(0), QString());

    // Plugged in again, perhaps at another path; this one is closed before its loss is noticed.
    PseudoTerminal again;
    port.setSerialPort({QStringLiteral("pty"), again.path()});
    EXPECT_TRUE(port.Open());
    turnFor(50ms);
    again.hangUp();
    port.Write(";");
    port.Close();
    turnFor(50ms);
    EXPECT_EQ(lost.size(), 1);
    EXPECT_EQ(clock.pendingWaits(), 0);
}

TEST_F(QtSerialPortTest, XmitWaitEndsWhenTheLineHasCarriedTheBytes) {
    port.setBaud(Baud::Code4800);
    ASSERT_TRUE(port.Open());
    const Clock::Microseconds start = clock.now();
    port.Write(QByteArray(48, 'x'));  // 100 ms
    const Task<> sent = port.XmitWait();
    EXPECT_FALSE(sent.isDone());
    finish(sent);
    EXPECT_GE(clock.now() - start, 100ms);
    EXPECT_EQ(line.take().size(), 48);

    modemLines.knowsTransmitter = true;
    port.Write(QByteArray(480, 'x'));
    const Clock::Microseconds asked = clock.now();
    finish(port.XmitWait());
    EXPECT_LT(clock.now() - asked, 500ms);  // a driver that knows is believed
    EXPECT_EQ(line.take().size(), 480);
    EXPECT_EQ(clock.pendingWaits(), 0);
}

TEST_F(QtSerialPortTest, XmitWaitDoesNotWaitForNothing) {
    EXPECT_TRUE(port.XmitWait().isDone());  // closed
    port.Write("nowhere");
    ASSERT_TRUE(port.Open());
    modemLines.knowsTransmitter = true;
    EXPECT_TRUE(port.XmitWait().isDone());
    turnFor(20ms);
    EXPECT_EQ(line.take(), QByteArray());
}

TEST_F(QtSerialPortTest, XmitWaitEndsWithThePort) {
    ASSERT_TRUE(port.Open());
    modemLines.heldByDriver = 1;
    port.Write(";");
    const Task<> closed = port.XmitWait();
    turnFor(20ms);
    EXPECT_FALSE(closed.isDone());
    port.Close();
    EXPECT_TRUE(turnUntil([&closed] { return closed.isDone(); }, 500ms));

    ASSERT_TRUE(port.Open());
    port.Write(";");
    const Task<> vanished = port.XmitWait();
    line.hangUp();
    EXPECT_TRUE(turnUntil([&vanished] { return vanished.isDone(); }, 500ms));
    EXPECT_EQ(lost.size(), 1);

    const PseudoTerminal again;
    port.setSerialPort({QStringLiteral("pty"), again.path()});
    ASSERT_TRUE(port.Open());
    port.Write(";");
    {
        const Task<> cancelled = port.XmitWait();
        EXPECT_EQ(clock.pendingWaits(), 1);
    }
    EXPECT_EQ(clock.pendingWaits(), 0);
}

TEST(QtSerialPort, XmitWaitGivesUpASecondAfterTheLineWouldHaveSent) {
    const PseudoTerminal line;
    SimClock clock;
    QtSerialPort port(clock);
    port.setSerialPort({QStringLiteral("pty"), line.path()});
    port.setBaud(Baud::Code4800);
    ASSERT_TRUE(port.Open());
    modemLines = {};
    modemLines.heldByDriver = 4096;
    port.Write(QByteArray(48, 'x'));
    EXPECT_TRUE(clock.run(port.XmitWait()));
    EXPECT_GE(clock.now(), 1100ms);
    EXPECT_LE(clock.now(), 1102ms);
    EXPECT_EQ(clock.pendingWaits(), 0);
    modemLines = {};
}

TEST_F(QtSerialPortTest, ClosingAStuckPortDoesNotHoldTheProgram) {
    ASSERT_TRUE(port.Open());
    port.Write(QByteArray(1 << 20, 'x'));  // nobody reads it
    port.Write(QByteArray(1 << 20, 'x'));  // more than is kept
    turnFor(50ms);
    QElapsedTimer elapsed;
    elapsed.start();
    port.Close();
    EXPECT_LT(elapsed.elapsed(), 200);
}

TEST_F(QtSerialPortTest, AReaderThatDoesNotComeCostsBoundedMemory) {
    ASSERT_TRUE(port.Open());
    for (int sent = 0; sent < 600; ++sent) {
        const QByteArray block(2048, static_cast<char>('A' + sent % 26));
        line.send(block);
        ASSERT_TRUE(turnUntil([&] { return port.LookAhead().endsWith(block); }));
    }
    EXPECT_EQ(port.LookAhead().size(), SerialPort::ReceiveLimit);
    EXPECT_TRUE(port.LookAhead().endsWith('B'));
}

}  // namespace
