// An FTP server for the demo alone: read-only, on loopback, on a free port.
#pragma once

#include <vector>

#include <QString>
#include <QTcpServer>

class FtpConnection;

class FtpServer {
public:
    // What it does to those who log on from now on, and to their transfers.
    enum class Behaviour {
        Works,
        Refuses,        // the logon
        Stalls,         // takes commands and answers none
        CutsTransfers,  // closes in the middle of a file
        DamagesImages   // turns over one bit in the middle of an image
    };

    // Serves what is below `root`, which is "/" to the clients.
    explicit FtpServer(const QString& root);
    FtpServer(const FtpServer&) = delete;
    FtpServer& operator=(const FtpServer&) = delete;
    ~FtpServer();

    // 0 when no port is to be had.
    int port() const { return m_listener.serverPort(); }

    Behaviour behaviour = Behaviour::Works;

private:
    void accept();

    QString m_root;
    QTcpServer m_listener;
};
