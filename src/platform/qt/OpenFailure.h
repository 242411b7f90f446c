// Why a serial port would not open, in one line for the log.
#pragma once

#include <QSerialPort>
#include <QString>

#include "SerialPort.h"

// What the system tells of a device and of who asks for it.
struct PortAccess {
    bool exists = true;
    QString trouble;        // why it can be no port, whoever asks
    bool isAllowed = true;  // this process may read and write it
    // When not allowed:
    bool groupMayUse = false;  // an ordinary group may read and write it
    bool isMember = false;     // the system's records have the user in that group
    bool loginKnows = false;   // this login has the group
    QString user;
    QString owner;
    QString group;
    int mode = 0;  // permission bits
};

PortAccess examinePortAccess(const QString& path);

QString openFailureLine(const PortInfo& port, const PortAccess& access, QSerialPort::SerialPortError error,
                        const QString& systemReason);
// The same, of the port as it is now.
QString openFailureLine(const PortInfo& port, QSerialPort::SerialPortError error,
                        const QString& systemReason);
