#include "OpenFailure.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

#include <sys/stat.h>
#include <unistd.h>

#include "PseudoTerminal.h"
#include "QtSerialPort.h"
#include "SystemClock.h"

namespace {

// An ordinary user for a while, if the test runs as root.
class OrdinaryUser {
public:
    OrdinaryUser() {
        if (::geteuid() == 0) {
            EXPECT_EQ(::seteuid(Nobody), 0);
        }
    }
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;
    ~OrdinaryUser() {
        if (::getuid() == 0) {
            EXPECT_EQ(::seteuid(0), 0);
        }
    }

private:
    static constexpr uid_t Nobody = 65534;
};

QString failureOf(const QString& path) {
    SystemClock clock;
    QtSerialPort port(clock);
    port.setSerialPort({QStringLiteral("ttyUSB0"), path});
    EXPECT_FALSE(port.Open());
    EXPECT_FALSE(port.isOpen());
    return port.openFailure();
}

TEST(OpenFailure, AMissingPortIsMissing) {
    const QString why = failureOf(QStringLiteral("/dev/no such port"));
    EXPECT_TRUE(why.startsWith(QStringLiteral("Port ttyUSB0 did not open: missing."))) << why.toStdString();
    EXPECT_TRUE(failureOf(QString()).contains(QStringLiteral("did not open: "))) << "nothing to open";
}

TEST(OpenFailure, APortThatIsOpenElsewhereIsBusy) {
    const PseudoTerminal line;
    SystemClock clock;
    QtSerialPort other(clock);
    other.setSerialPort({QStringLiteral("pty"), line.path()});
    ASSERT_TRUE(other.Open());
    const QString why = failureOf(line.path());
    EXPECT_TRUE(why.contains(QStringLiteral("busy"))) << why.toStdString();
    other.Close();
    SystemClock secondClock;
    QtSerialPort second(secondClock);
    second.setSerialPort({QStringLiteral("pty"), line.path()});
    EXPECT_TRUE(second.Open());
    EXPECT_EQ(second.openFailure(), QString());
}

TEST(OpenFailure, APortThatThePermissionsForbidIsDenied) {
    if (::getuid() != 0)
        GTEST_SKIP() << "only root can give a port to another group";
    constexpr gid_t Dialout = 20;
    for (const auto& [mode, says] :
         {std::pair{0, "denied, and the group is not the cause"}, {0660, "is not in the group dialout"}}) {
        const PseudoTerminal line;
        const QByteArray path = QFile::encodeName(line.path());
        ASSERT_EQ(::chown(path.constData(), 0, Dialout), 0);
        ASSERT_EQ(::chmod(path.constData(), static_cast<mode_t>(mode)), 0);
        const OrdinaryUser user;
        const QString why = failureOf(line.path());
        EXPECT_TRUE(why.contains(QLatin1String(says))) << why.toStdString();
        EXPECT_EQ(why.contains(QStringLiteral("mode 0000.")), mode == 0) << why.toStdString();
    }
}

TEST(OpenFailure, WhatIsNoSerialPortSaysSo) {
    const QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("notes.txt")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    const QString why = failureOf(file.fileName());
    EXPECT_FALSE(why.contains(QStringLiteral("busy")) || why.contains(QStringLiteral("denied")))
        << why.toStdString();
}

TEST(OpenFailure, ADenialSaysWhatToDo) {
    const QString advice = QStringLiteral("sudo usermod -aG dialout anna");
    struct {
        bool groupMayUse, isMember, loginKnows;
        QString says;
    } const rows[] = {
        // clang-format off
        {true,  false, false, advice},
        {true,  true,  false, QStringLiteral("this login is older")},
        {true,  true,  true,  QStringLiteral("the group is not the cause")},
        {false, false, false, QStringLiteral("the group is not the cause")},
        {false, true,  false, QStringLiteral("the group is not the cause")},
        // clang-format on
    };
    for (const auto& row : rows) {
        const PortAccess access{.trouble = {},
                                .isAllowed = false,
                                .groupMayUse = row.groupMayUse,
                                .isMember = row.isMember,
                                .loginKnows = row.loginKnows,
                                .user = QStringLiteral("anna"),
                                .owner = QStringLiteral("root"),
                                .group = QStringLiteral("dialout")};
        const QString why =
            openFailureLine({QStringLiteral("ttyUSB0"), QStringLiteral("/dev/ttyUSB0")}, access,
                            QSerialPort::PermissionError, QStringLiteral("Permission denied"));
        EXPECT_TRUE(why.contains(row.says)) << why.toStdString();
        EXPECT_EQ(why.contains(advice), row.says == advice);
    }
}

}  // namespace
