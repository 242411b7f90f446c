#include "QtPortList.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "EventLoop.h"

namespace {

TEST(PortList, OnlyPortsWithHardwareAreListedInNaturalOrder) {
    const QTemporaryDir folder;
    const auto addTerminal = [&folder](const QString& name, bool hasDevice, const char* kind) {
        const QDir terminal(folder.filePath(name));
        terminal.mkpath(hasDevice ? QStringLiteral("device") : QStringLiteral("."));
        if (kind == nullptr)
            return;
        QFile type(terminal.filePath(QStringLiteral("type")));
        EXPECT_TRUE(type.open(QIODevice::WriteOnly));
        type.write(kind);
    };
    addTerminal(QStringLiteral("tty0"), false, nullptr);
    addTerminal(QStringLiteral("console"), false, nullptr);
    addTerminal(QStringLiteral("ttyS0"), true, "4\n");
    addTerminal(QStringLiteral("ttyS1"), true, "0\n");
    addTerminal(QStringLiteral("ttyS10"), true, "0\n");
    addTerminal(QStringLiteral("ttyUSB10"), true, nullptr);
    addTerminal(QStringLiteral("ttyUSB2"), true, nullptr);
    addTerminal(QStringLiteral("ttyACM0"), true, nullptr);
    EXPECT_EQ(portNamesIn(folder.path()).join(u' '), QStringLiteral("ttyACM0 ttyS0 ttyUSB2 ttyUSB10"));
    EXPECT_TRUE(portNamesIn(folder.filePath(QStringLiteral("absent"))).isEmpty());
}

TEST(PortList, APortByNameNeedNotExist) {
    QtPortList ports;
    EXPECT_EQ(ports.SerialPort(QStringLiteral("/dev/pts/7")).path, QStringLiteral("/dev/pts/7"));
    const PortInfo byName = ports.SerialPort(QStringLiteral("ttyUSB0"));
    EXPECT_EQ(byName.Name, QStringLiteral("ttyUSB0"));
    EXPECT_EQ(byName.path, QStringLiteral("/dev/ttyUSB0"));
}

TEST(PortList, TellsOfDevicesThatComeAndGo) {
    const QTemporaryDir devices;
    QtPortList ports(devices.path());
    bool isTold = false;
    ports.Changed = [&isTold] { isTold = true; };
    QFile device(devices.filePath(QStringLiteral("ttyUSB0")));
    EXPECT_TRUE(device.open(QIODevice::WriteOnly));
    EXPECT_TRUE(turnUntil([&isTold] { return std::exchange(isTold, false); }));
    turnFor(std::chrono::milliseconds(50));
    isTold = false;
    EXPECT_TRUE(device.setPermissions(QFile::ReadOwner));
    EXPECT_TRUE(turnUntil([&isTold] { return std::exchange(isTold, false); })) << "the group comes late";
    EXPECT_TRUE(device.remove());
    EXPECT_TRUE(turnUntil([&isTold] { return isTold; }));
}

}  // namespace
