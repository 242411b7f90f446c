// The maker's FTP server.
#pragma once

#include <QString>

inline QString FTPHostName() {
    return QStringLiteral(VLX_FTP_HOST);
}

// The password of the anonymous login: an e-mail address, as anonymous servers ask for one.
inline QString FTPAnonymousPassword() {
    return QStringLiteral(VLX_FTP_PASSWORD);
}

// The first words of every logon.
inline QString FTPConnectingText() {
    return QStringLiteral("Connecting to %1. Please be patient, this takes a few seconds.")
        .arg(FTPHostName());
}
