// The real port and the simulated amplifier as two programs, in real time, with a terminal between them.

#include <gtest/gtest.h>

#include <QProcess>

#include "EventLoop.h"
#include "Globals.h"
#include "LineOwner.h"
#include "QtSerialPort.h"
#include "RadioState.h"
#include "ScriptedDialogs.h"
#include "SystemClock.h"

namespace {

class NoPorts final : public PortList {
public:
    int SerialPortCount() override { return 0; }
    PortInfo SerialPort(int /*index*/) override { return {}; }
    PortInfo SerialPort(const QString& name) override { return {name, name}; }
};

class RealLineTest : public testing::Test {
protected:
    ~RealLineTest() override {
        amplifier.kill();
        amplifier.waitForFinished();
    }

    void startAmplifier(const QStringList& arguments) {
        amplifier.start(QStringLiteral(VLX720_SIMULATOR), arguments);
        ASSERT_TRUE(turnUntil([this] { return amplifier.canReadLine(); }));
        const QString path = QString::fromLocal8Bit(amplifier.readLine()).trimmed();
        port.setSerialPort({path, path});
        ASSERT_TRUE(port.Open()) << port.openFailure().toStdString();
    }

    bool senses() {
        Task<bool> task = radio.Refresh(0);
        EXPECT_TRUE(turnUntil([&task] { return task.isDone(); }));
        return task.isDone() && task.result();
    }

    SystemClock clock;
    QtSerialPort port{clock};
    NoPorts ports;
    ScriptedDialogs dialogs{clock};
    Platform platform{clock, port, ports, dialogs, {}};
    Globals globals{clock};
    LineOwner line;
    RadioState radio{platform, globals, line};
    QProcess amplifier;
};

class RealLineSpeedTest : public RealLineTest, public testing::WithParamInterface<int> {};

TEST_P(RealLineSpeedTest, TheAmplifierIsFound) {
    startAmplifier({QStringLiteral("--speed"), QString::number(GetParam())});
    EXPECT_TRUE(senses());
    EXPECT_EQ(globals.m_dwBaudRate, GetParam());
    EXPECT_EQ(globals.m_FirmwareStatus, FirmwareStatus::Main);
    EXPECT_EQ(globals.m_strMcuVersion, QStringLiteral("01.23"));
    EXPECT_EQ(clock.pendingWaits(), 0);
}

INSTANTIATE_TEST_SUITE_P(EverySpeed, RealLineSpeedTest, testing::Values(38400, 19200, 9600, 4800));

TEST_F(RealLineTest, AWaitingAmplifierIsFound) {
    startAmplifier({QStringLiteral("--state"), QStringLiteral("waiting")});
    EXPECT_FALSE(senses());
    EXPECT_TRUE(globals.isBootloader());
    EXPECT_EQ(globals.m_dwBaudRate, 38400);
}

TEST_F(RealLineTest, SensingEndsWhenTheAdapterIsPulledOut) {
    int lost = 0;
    port.Lost = [&lost](const QString&) { ++lost; };
    startAmplifier({});
    const Task<bool> task = radio.Refresh(0);
    amplifier.kill();
    EXPECT_TRUE(turnUntil([&task] { return task.isDone(); }));
    EXPECT_EQ(lost, 1);
    EXPECT_TRUE(globals.isUnknown());
    EXPECT_EQ(clock.pendingWaits(), 0);
}

}  // namespace
