// The server that new firmware comes from.
#pragma once

#include <QString>

struct FirmwareServer {
    // The maker's, as configured: a host, with or without a port.
    static FirmwareServer makers();

    // "host" or "host:port", as a URL has it.
    QString address() const;
    // The two parts of an address; without a port it is 21.
    static FirmwareServer at(const QString& address, const QString& password);

    QString host;
    int port = 21;
    QString user;
    QString password;
};
