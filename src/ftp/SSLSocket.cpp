#include "SSLSocket.h"

#include <QTcpServer>

namespace {

// Enough to keep a fast line busy, small enough that a slow disk does not fill the memory.
constexpr qint64 ReadBufferSize = 256 * 1024;
// How often Poll looks again while data keeps coming: the event loop must turn too.
constexpr int PollRounds = 16;

}  // namespace

class SSLSocket::Listener final : public QTcpServer {
public:
    Listener(SSLSocket& owner, const QHostAddress& peer) : QTcpServer(&owner), m_owner(owner), m_peer(peer) {}

protected:
    void incomingConnection(qintptr descriptor) override { m_owner.accept(descriptor, m_peer); }

private:
    SSLSocket& m_owner;
    QHostAddress m_peer;
};

SSLSocket::~SSLSocket() {
    Close();
}

void SSLSocket::Connect() {
    Close();
    adopt(std::make_unique<QSslSocket>());
    m_connection->connectToHost(Address, Port);
}

bool SSLSocket::Listen(const QHostAddress& local, const QHostAddress& peer) {
    Close();
    m_listener = new Listener(*this, peer);
    if (m_listener->listen(local, Port))
        return true;
    m_lastErrorCode = m_listener->serverError();
    m_lastErrorText.clear();
    return false;
}

void SSLSocket::Close() {
    m_isEncrypting = false;
    // Both may be on the call stack now.
    if (m_listener) {
        m_listener->close();
        std::exchange(m_listener, nullptr)->deleteLater();
    }
    if (m_connection) {
        QSslSocket* connection = std::exchange(m_connection, nullptr);
        connection->disconnect(this);
        if (connection->bytesToWrite() > 0)
            connection->abort();
        else
            connection->close();
        connection->deleteLater();
    }
}

void SSLSocket::Poll() {
    if (m_listener)
        m_listener->waitForNewConnection(0);
    for (int round = 0; round < PollRounds; ++round) {
        if (!IsConnected() || !m_connection->waitForReadyRead(0))
            return;
    }
}

void SSLSocket::Write(const QByteArray& bytes) {
    if (m_connection)
        m_connection->write(bytes);
}

QByteArray SSLSocket::ReadAll() {
    return m_connection ? m_connection->readAll() : QByteArray();
}

bool SSLSocket::IsConnected() const {
    return m_connection && m_connection->state() == QAbstractSocket::ConnectedState;
}

QHostAddress SSLSocket::LocalAddress() const {
    return m_connection ? m_connection->localAddress() : QHostAddress();
}

QHostAddress SSLSocket::RemoteAddress() const {
    return m_connection ? m_connection->peerAddress() : QHostAddress();
}

void SSLSocket::StartEncryption() {
    if (!m_connection)
        return;
    m_isEncrypting = true;
    m_connection->setSslConfiguration(SslConfiguration);
    m_connection->startClientEncryption();
}

bool SSLSocket::SSLConnected() const {
    return m_connection && m_connection->isEncrypted();
}

void SSLSocket::adopt(std::unique_ptr<QSslSocket> connection) {
    m_connection = connection.release();
    m_connection->setParent(this);
    m_connection->setReadBufferSize(ReadBufferSize);
    m_lastErrorCode = 0;
    m_lastErrorText.clear();
    connect(m_connection, &QSslSocket::connected, this, [this] { Event_Connected(); });
    connect(m_connection, &QSslSocket::readyRead, this, [this] { Event_DataAvailable(); });
    connect(m_connection, &QSslSocket::bytesWritten, this, [this] { onBytesWritten(); });
    connect(m_connection, &QSslSocket::errorOccurred, this, [this](auto error) { onError(error); });
    connect(m_connection, &QSslSocket::encrypted, this, [this] {
        m_isEncrypting = false;
        Event_Secured();
    });
}

void SSLSocket::accept(qintptr descriptor, const QHostAddress& peer) {
    auto connection = std::make_unique<QSslSocket>();
    if (!connection->setSocketDescriptor(descriptor) || !connection->peerAddress().isEqual(peer))
        return;
    m_listener->close();
    std::exchange(m_listener, nullptr)->deleteLater();
    adopt(std::move(connection));
    Event_Connected();
}

void SSLSocket::onBytesWritten() {
    if (m_connection->bytesToWrite() == 0)
        Event_SendComplete();
}

void SSLSocket::onError(QAbstractSocket::SocketError error) {
    // Poll found nothing: no error.
    if (error == QAbstractSocket::SocketTimeoutError && IsConnected())
        return;
    const bool hasClosed = error == QAbstractSocket::RemoteHostClosedError;
    m_lastErrorCode = hasClosed ? PeerClosed : error;
    const bool isTls = m_isEncrypting || error == QAbstractSocket::SslHandshakeFailedError;
    m_lastErrorText = isTls ? m_connection->errorString() : QString();
    Event_Error();
}
