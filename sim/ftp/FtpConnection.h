// One client of the demo's FTP server.
#pragma once

#include <functional>

#include <QByteArray>
#include <QObject>
#include <QString>
#include <QTcpServer>
#include <QTcpSocket>

#include "FtpServer.h"

// Lives as long as its connection, of which it is a child.
class FtpConnection final : public QObject {
public:
    FtpConnection(QTcpSocket& control, const QString& root, const FtpServer::Behaviour& behaviour);

private:
    using Handler = void (FtpConnection::*)(const QString& argument);
    struct Command {
        const char* verb;
        Handler handle;
    };
    static const Command Commands[];

    void takeCommands();
    void answer(const QString& line);
    void reply(const QByteArray& text);

    void USER(const QString& argument);
    void PASS(const QString& argument);
    void QUIT(const QString& argument);
    void NOOP(const QString& argument);
    void SYST(const QString& argument);
    void TYPE(const QString& argument);
    void PWD(const QString& argument);
    void CWD(const QString& argument);
    void PASV(const QString& argument);
    void EPSV(const QString& argument);
    void NLST(const QString& argument);
    void LIST(const QString& argument);
    void SIZE(const QString& argument);
    void RETR(const QString& argument);

    // The path on disk of what the client names; empty for what does not exist below the root.
    QString path(const QString& argument) const;
    int listenForData();
    void send(const QByteArray& bytes, bool isCut);
    void sendListing(const QString& argument, bool withDetails);
    void dataConnected();

    QTcpSocket& m_control;
    QString m_root;
    const FtpServer::Behaviour& m_behaviour;
    QString m_folder = QStringLiteral("/");
    QTcpServer m_dataListener;
    std::function<void(QTcpSocket&)> m_transfer;  // waits for the data connection
    bool m_isLoggedOn = false;
};
