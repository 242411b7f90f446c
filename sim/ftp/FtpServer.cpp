#include "FtpServer.h"

#include "FtpConnection.h"

FtpServer::FtpServer(const QString& root) : m_root(root) {
    m_listener.listen(QHostAddress::LocalHost);
    QObject::connect(&m_listener, &QTcpServer::newConnection, &m_listener, [this] { accept(); });
}

FtpServer::~FtpServer() = default;

void FtpServer::accept() {
    while (QTcpSocket* socket = m_listener.nextPendingConnection())
        new FtpConnection(*socket, m_root, behaviour);
}
