#include "QtPortList.h"

#include <algorithm>
#include <tuple>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSerialPortInfo>

namespace {

// A serial port of the board without hardware: the kernel lists dozens of them, and says 0 for the kind
// of their chip.
bool isPhantom(const QString& portFolder) {
    QFile kind(portFolder + QStringLiteral("/type"));
    return kind.open(QIODevice::ReadOnly) && kind.readAll().trimmed() == "0";
}

QString firstLine(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readLine()).trimmed() : QString();
}

bool naturallyBefore(const QString& a, const QString& b) {
    const auto parts = [](const QString& name) {
        qsizetype digits = name.size();
        while (digits > 0 && name[digits - 1].isDigit())
            --digits;
        return std::tuple(name.left(digits), name.mid(digits).toULongLong(), name);
    };
    return parts(a) < parts(b);
}

#ifndef Q_OS_LINUX
QString identityOf(const QSerialPortInfo& port) {
    if (!port.hasVendorIdentifier())
        return {};
    return QStringLiteral("%1:%2:%3")
        .arg(port.vendorIdentifier(), 4, 16, QLatin1Char('0'))
        .arg(port.productIdentifier(), 4, 16, QLatin1Char('0'))
        .arg(port.serialNumber());
}
#endif

}  // namespace

QStringList portNamesIn(const QString& classFolder) {
    QStringList names;
    const QDir folder(classFolder);
    for (const QString& name : folder.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        const QString port = folder.filePath(name);
        // A terminal without a device is a screen's or a program's.
        if (QFile::exists(port + QStringLiteral("/device")) && !isPhantom(port))
            names += name;
    }
    std::sort(names.begin(), names.end(), naturallyBefore);
    return names;
}

// The adapter is some folders above its port in the system's tree of devices.
QString identityIn(const QString& portFolder) {
    QDir device(QFileInfo(portFolder + QStringLiteral("/device")).canonicalFilePath());
    while (!device.isRoot() && !device.exists(QStringLiteral("idVendor")) && device.cdUp()) {
    }
    const QString vendor = firstLine(device.filePath(QStringLiteral("idVendor")));
    if (vendor.isEmpty())
        return {};
    return QStringList{vendor, firstLine(device.filePath(QStringLiteral("idProduct"))),
                       firstLine(device.filePath(QStringLiteral("serial")))}
        .join(u':');
}

QtPortList::QtPortList(const QString& deviceFolder) {
    QObject::connect(&m_watcher, &QFileSystemWatcher::directoryChanged, &m_watcher, [this] {
        if (Changed)
            Changed();
    });
    if (QFileInfo::exists(deviceFolder))
        m_watcher.addPath(deviceFolder);
}

int QtPortList::SerialPortCount() {
    m_ports.clear();
#ifdef Q_OS_LINUX
    // The toolkit's own list opens every port of the board to see whether it is real, and opening one
    // raises its lines.
    for (const QString& name : portNamesIn(QStringLiteral("/sys/class/tty")))
        m_ports += PortInfo{name, QStringLiteral("/dev/") + name,
                            identityIn(QStringLiteral("/sys/class/tty/") + name)};
#else
    for (const QSerialPortInfo& port : QSerialPortInfo::availablePorts()) {
        // Mac OS X lists each port twice; the "tty" one is for calls that come in.
        if (!port.portName().startsWith(QStringLiteral("tty.")))
            m_ports += PortInfo{port.portName(), port.systemLocation(), identityOf(port)};
    }
#endif
    return static_cast<int>(m_ports.size());
}

PortInfo QtPortList::SerialPort(const QString& name) {
#ifdef Q_OS_UNIX
    return {name, QDir::isAbsolutePath(name) ? name : QStringLiteral("/dev/") + name};
#else
    return {name, name};
#endif
}
