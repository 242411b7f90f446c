#include "OpenFailure.h"

#include <QFile>
#include <QtGlobal>

#ifdef Q_OS_UNIX

#include <fcntl.h>
#include <grp.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>
#include <algorithm>
#include <cerrno>
#include <cstring>
#include <vector>

namespace {

QString userName(uid_t user) {
    const passwd* entry = ::getpwuid(user);
    return entry != nullptr ? QString::fromLocal8Bit(entry->pw_name) : QString::number(user);
}

QString groupName(gid_t group) {
    const ::group* entry = ::getgrgid(group);
    return entry != nullptr ? QString::fromLocal8Bit(entry->gr_name) : QString::number(group);
}

bool recordsHaveMember(uid_t user, gid_t group) {
    const passwd* account = ::getpwuid(user);
    if (account == nullptr)
        return false;
    if (account->pw_gid == group)
        return true;
    const ::group* entry = ::getgrgid(group);
    if (entry == nullptr)
        return false;
    for (char** member = entry->gr_mem; *member != nullptr; ++member) {
        if (qstrcmp(*member, account->pw_name) == 0)
            return true;
    }
    return false;
}

// What stands at the path when it is no device; empty for one, and where nothing stands.
QString troubleOf(const char* path) {
    struct stat status{};
    if (::stat(path, &status) != 0)
        return errno == ENOENT || errno == ENOTDIR || errno == EACCES
                   ? QString()
                   : QString::fromLocal8Bit(std::strerror(errno));
    if (S_ISDIR(status.st_mode))
        return QStringLiteral("it is a folder");
    return S_ISCHR(status.st_mode) ? QString() : QStringLiteral("it is no device");
}

bool loginHasGroup(gid_t group) {
    std::vector<gid_t> groups(static_cast<std::size_t>(std::max(::getgroups(0, nullptr), 0)));
    const int count = ::getgroups(static_cast<int>(groups.size()), groups.data());
    const auto end = groups.begin() + std::max(count, 0);
    return ::getegid() == group || std::find(groups.begin(), end, group) != end;
}

}  // namespace

PortAccess examinePortAccess(const QString& path) {
    const QByteArray name = QFile::encodeName(path);
    PortAccess access;
    struct stat status{};
    access.exists = ::stat(name.constData(), &status) == 0 || (errno != ENOENT && errno != ENOTDIR);
    access.trouble = troubleOf(name.constData());
    access.isAllowed = ::faccessat(AT_FDCWD, name.constData(), R_OK | W_OK, AT_EACCESS) == 0;
    // Nobody should be advised to join the administrator's own group.
    access.groupMayUse = (status.st_mode & 0060) == 0060 && status.st_gid != 0;
    access.isMember = recordsHaveMember(::geteuid(), status.st_gid);
    access.loginKnows = loginHasGroup(status.st_gid);
    access.user = userName(::geteuid());
    access.owner = userName(status.st_uid);
    access.group = groupName(status.st_gid);
    access.mode = static_cast<int>(status.st_mode & 07777);
    return access;
}

#else

PortAccess examinePortAccess(const QString&) {
    return {};
}

#endif

namespace {

QString denial(const QString& path, const PortAccess& access) {
    if (!access.groupMayUse || (access.isMember && access.loginKnows))
        return QStringLiteral("denied, and the group is not the cause: %1 belongs to %2:%3 with mode %4.")
            .arg(path, access.owner, access.group)
            .arg(access.mode, 4, 8, QLatin1Char('0'));
    if (access.isMember)
        return QStringLiteral(
                   "denied. User %1 is in the group %2, but this login is older: log out and in again.")
            .arg(access.user, access.group);
    return QStringLiteral(
               "denied. User %1 is not in the group %2, which may use it. To be added: "
               "sudo usermod -aG %2 %1, then log out and in again.")
        .arg(access.user, access.group);
}

QString reason(const PortInfo& port, const PortAccess& access, QSerialPort::SerialPortError error,
               const QString& systemReason) {
    if (!access.trouble.isEmpty())
        return QStringLiteral("%1 is no serial port: %2.").arg(port.path, access.trouble);
    if (!access.exists || error == QSerialPort::DeviceNotFoundError)
        return QStringLiteral("missing. There is no %1; is the adapter plugged in?").arg(port.path);
    if (!access.isAllowed)
        return denial(port.path, access);
    if (error == QSerialPort::PermissionError)
        return QStringLiteral("busy. Another program holds it (%1).").arg(systemReason);
    return systemReason + u'.';
}

}  // namespace

QString openFailureLine(const PortInfo& port, const PortAccess& access, QSerialPort::SerialPortError error,
                        const QString& systemReason) {
    return QStringLiteral("Port %1 did not open: %2")
        .arg(port.Name, reason(port, access, error, systemReason));
}

QString openFailureLine(const PortInfo& port, QSerialPort::SerialPortError error,
                        const QString& systemReason) {
    return openFailureLine(port, examinePortAccess(port.path), error, systemReason);
}
