// The serial ports of the machine.
#pragma once

#include <QFileSystemWatcher>
#include <QList>
#include <QStringList>

#include "SerialPort.h"

class QtPortList final : public PortList {
public:
    // Ports come and go as files of `deviceFolder`.
    explicit QtPortList(const QString& deviceFolder = QStringLiteral("/dev"));

    int SerialPortCount() override;
    // Of the ports that the last count found.
    PortInfo SerialPort(int index) override { return m_ports[index]; }
    PortInfo SerialPort(const QString& name) override;

private:
    QList<PortInfo> m_ports;
    QFileSystemWatcher m_watcher;
};

// Names of the ports with hardware behind them, in natural order (ttyUSB2 before ttyUSB10), by the
// system's folder of terminals, "/sys/class/tty" on Linux. No port is opened for it.
QStringList portNamesIn(const QString& classFolder);

// Vendor, product and serial number of the USB adapter behind a port's folder there; empty without one.
QString identityIn(const QString& portFolder);
