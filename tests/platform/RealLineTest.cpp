// The real port and the simulated amplifier as two programs, in real time, with a terminal between them.

#include <gtest/gtest.h>

#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>

#include "EventLoop.h"
#include "Globals.h"
#include "LineOwner.h"
#include "QtSerialPort.h"
#include "RadioState.h"
#include "ScriptedDialogs.h"
#include "SimulatedPort.h"
#include "SystemClock.h"

namespace {

class RealLineTest : public testing::Test {
protected:
    ~RealLineTest() override { stopAmplifier(); }

    void stopAmplifier() {
        port.Close();
        amplifier.kill();
        amplifier.waitForFinished();
    }
    void startAmplifier(const QStringList& arguments) {
        stopAmplifier();
        amplifier.start(QStringLiteral(VLX720_SIMULATOR), arguments);
        ASSERT_TRUE(turnUntil([this] { return amplifier.canReadLine(); }));
        const QString path = QString::fromLocal8Bit(amplifier.readLine()).trimmed();
        port.setSerialPort({path, path});
        ASSERT_TRUE(port.Open()) << port.openFailure().toStdString();
    }

    QByteArray ask(const QByteArray& question, qsizetype size) {
        port.Write(question);
        turnUntil([this, size] { return port.LookAhead().size() >= size; }, std::chrono::seconds(5));
        return port.ReadAll();
    }
    bool senses() {
        Task<bool> task = radio.Refresh(0);
        EXPECT_TRUE(turnUntil([&task] { return task.isDone(); }));
        return task.isDone() && task.result();
    }

    SystemClock clock;
    QtSerialPort port{clock};
    SimulatedPortList ports;
    ScriptedDialogs dialogs{clock};
    Platform platform{clock, port, ports, dialogs, {}};
    Globals globals{clock};
    LineOwner line;
    RadioState radio{platform, globals, line};
    QProcess amplifier;
};

TEST_F(RealLineTest, TheAmplifierIsFoundAtEverySpeedAndWaiting) {
    for (const int speed : {38400, 19200, 9600, 4800}) {
        startAmplifier({QStringLiteral("--speed"), QString::number(speed),
                        QStringLiteral("--firmware-version"), QStringLiteral("07.42")});
        EXPECT_TRUE(senses());
        EXPECT_EQ(globals.m_dwBaudRate, speed);
        EXPECT_EQ(globals.m_FirmwareStatus, FirmwareStatus::Main);
        EXPECT_EQ(globals.m_strMcuVersion, QStringLiteral("07.42"));
    }
    startAmplifier({QStringLiteral("--state"), QStringLiteral("waiting")});
    EXPECT_FALSE(senses());
    EXPECT_TRUE(globals.isBootloader());
    EXPECT_EQ(globals.m_dwBaudRate, 38400);
    EXPECT_EQ(clock.pendingWaits(), 0);
}

TEST_F(RealLineTest, SensingEndsWhenTheAdapterIsPulledOut) {
    int lost = 0;
    port.Lost = [&lost](const QString&) { ++lost; };
    startAmplifier({});
    const Task<bool> task = radio.Refresh(0);
    amplifier.kill();
    // Either may come first.
    EXPECT_TRUE(turnUntil([&] { return task.isDone() && lost > 0; }));
    EXPECT_EQ(lost, 1);
    EXPECT_TRUE(globals.isUnknown());
    EXPECT_EQ(clock.pendingWaits(), 0);
}

TEST_F(RealLineTest, TheSimulatorIsControlledLinkedAndRecorded) {
    const QTemporaryDir folder;
    const QString link = folder.filePath(QStringLiteral("the amplifier"));
    const QString record = folder.filePath(QStringLiteral("record.txt"));
    startAmplifier({QStringLiteral("--state"), QStringLiteral("waiting"), QStringLiteral("--link"), link,
                    QStringLiteral("--record"), record});
    const QByteArray path = port.serialPort().path.toLocal8Bit();
    port.setSerialPort({link, link});
    ASSERT_TRUE(port.Open());
    EXPECT_EQ(ask("^BN;", 4), "^BN;");
    amplifier.write("power off\n");
    EXPECT_TRUE(turnUntil([this] { return amplifier.canReadLine(); }));
    EXPECT_EQ(amplifier.readLine(), "off, 38400 bit/s, version 01.23, band 0, standby, fault 0\n");
    port.Close();
    amplifier.terminate();
    EXPECT_TRUE(amplifier.waitForFinished());
    EXPECT_FALSE(QFileInfo(link).isSymLink());
    QFile file(record);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray text = file.readAll();
    EXPECT_TRUE(text.contains(" open 38400 " + path)) << text.constData();
    EXPECT_TRUE(text.contains(" in 5E424E3B  # ^BN;")) << text.constData();
}

}  // namespace
