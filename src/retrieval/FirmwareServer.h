// The server that new firmware comes from.
#pragma once

#include <QString>

struct FirmwareServer {
    // The maker's, as configured: a host, with or without a port.
    static FirmwareServer makers();

    // "host" or "host:port", as a URL has it.
    QString address() const;
    // Of a file in a folder, or of the folder, whose path has a slash at both ends.
    QString url(const QString& folder, const QString& name = QString()) const;
    // A name as it stands in a URL, and so the one that curl gives the file: nothing in it ends the path, is
    // a pattern or an option to curl.
    static QString inUrl(const QString& name);
    // The two parts of an address; without a port it is 21.
    static FirmwareServer at(const QString& address, const QString& password);

    QString host;
    int port = 21;
    QString user;
    QString password;
};
