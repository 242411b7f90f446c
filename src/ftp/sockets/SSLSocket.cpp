#include "SSLSocket.h"

#include <algorithm>
#include <utility>

#include <QCoreApplication>
#include <QHostInfo>
#include <QPointer>
#include <QTcpServer>

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>
#endif

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
    const QHostAddress numeric(Address);
    m_mayFallBack = numeric.isNull();
    connectBy(m_mayFallBack ? QAbstractSocket::IPv4Protocol : numeric.protocol());
    if (m_mayFallBack)
        m_patience.start(ClockTimer::Mode::Single);
}

void SSLSocket::connectBy(QAbstractSocket::NetworkLayerProtocol protocol) {
    adopt(makeConnection());
    m_connection->connectToHost(Address, Port, QIODevice::ReadWrite, protocol);
}

// A silent host keeps its caller waiting for minutes. The toolkit forgets an answer whose context has gone,
// and never frees what waits for it.
void SSLSocket::lookForIPv6() {
    const auto answered = [this, connection = QPointer<QObject>(m_connection)](const QHostInfo& host) {
        if (!connection)
            return;
        const bool hasIPv6 = std::ranges::any_of(host.addresses(), [](const QHostAddress& address) {
            return address.protocol() == QAbstractSocket::IPv6Protocol;
        });
        if (hasIPv6)
            fallBack(QAbstractSocket::SocketTimeoutError);
    };
    QHostInfo::lookupHost(Address, QCoreApplication::instance(), answered);
}

bool SSLSocket::fallBack(int error) {
    m_patience.stop();
    if (!std::exchange(m_mayFallBack, false))
        return false;
    m_firstError = error;
    dropConnection();
    connectBy(QAbstractSocket::IPv6Protocol);
    return true;
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
    m_mayFallBack = false;
    m_patience.stop();
    // Both may be on the call stack now.
    if (m_listener) {
        m_listener->close();
        std::exchange(m_listener, nullptr)->deleteLater();
    }
    dropConnection();
}

void SSLSocket::dropConnection() {
    forgetReset();
    if (!m_connection)
        return;
    QTcpSocket* connection = std::exchange(m_connection, nullptr);
    connection->disconnect(this);
    if (connection->bytesToWrite() > 0)
        connection->abort();
    else
        connection->close();
    connection->deleteLater();
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

void SSLSocket::Flush() {
    if (m_connection)
        m_connection->flush();
}

QByteArray SSLSocket::ReadAll() {
    return m_connection ? m_connection->readAll() : QByteArray();
}

bool SSLSocket::IsConnected() const {
    return m_connection && m_connection->state() == QAbstractSocket::ConnectedState;
}

bool SSLSocket::IsConnecting() const {
    return m_connection && m_connection->state() == QAbstractSocket::ConnectingState;
}

QHostAddress SSLSocket::LocalAddress() const {
    return m_connection ? m_connection->localAddress() : QHostAddress();
}

QHostAddress SSLSocket::RemoteAddress() const {
    return m_connection ? m_connection->peerAddress() : QHostAddress();
}

void SSLSocket::StartEncryption() {
    auto* connection = qobject_cast<QSslSocket*>(m_connection);
    if (!connection)
        return;
    m_isEncrypting = true;
    connection->setSslConfiguration(SslConfiguration);
    connection->startClientEncryption();
}

bool SSLSocket::SSLConnected() const {
    const auto* connection = qobject_cast<QSslSocket*>(m_connection);
    return connection && connection->isEncrypted();
}

std::unique_ptr<QTcpSocket> SSLSocket::makeConnection() {
    if (m_kind == Kind::Plain)
        return std::make_unique<QTcpSocket>();
    auto connection = std::make_unique<QSslSocket>();
    connect(connection.get(), &QSslSocket::encrypted, this, &SSLSocket::onEncrypted);
    return connection;
}

void SSLSocket::adopt(std::unique_ptr<QTcpSocket> connection) {
    m_connection = connection.release();
    m_connection->setParent(this);
    m_connection->setReadBufferSize(ReadBufferSize);
    m_lastErrorCode = 0;
    m_lastErrorText.clear();
    m_wasReset = false;
    connect(m_connection, &QTcpSocket::connected, this, [this] {
        m_mayFallBack = false;
        m_patience.stop();
        watchForReset();
        Event_Connected();
    });
    connect(m_connection, &QTcpSocket::readyRead, this, [this] { Event_DataAvailable(); });
    connect(m_connection, &QTcpSocket::bytesWritten, this, [this] { onBytesWritten(); });
    connect(m_connection, &QTcpSocket::errorOccurred, this, [this](auto error) { onError(error); });
}

// The toolkit tells an end and a break alike, and takes the socket's error away. The system still knows: a
// connection that was broken off has no peer any more.
void SSLSocket::watchForReset() {
#ifdef Q_OS_UNIX
    m_probe = ::fcntl(static_cast<int>(m_connection->socketDescriptor()), F_DUPFD_CLOEXEC, 0);
#endif
}

bool SSLSocket::isReset() const {
#ifdef Q_OS_UNIX
    sockaddr_storage peer{};
    socklen_t size = sizeof(peer);
    return m_probe >= 0 && ::getpeername(m_probe, reinterpret_cast<sockaddr*>(&peer), &size) != 0;
#else
    return false;
#endif
}

void SSLSocket::forgetReset() {
#ifdef Q_OS_UNIX
    if (m_probe >= 0)
        ::close(std::exchange(m_probe, -1));
#endif
}

void SSLSocket::accept(qintptr descriptor, const QHostAddress& peer) {
    auto connection = makeConnection();
    if (!connection->setSocketDescriptor(descriptor) || !connection->peerAddress().isEqual(peer))
        return;
    m_listener->close();
    std::exchange(m_listener, nullptr)->deleteLater();
    adopt(std::move(connection));
    watchForReset();
    Event_Connected();
}

void SSLSocket::onEncrypted() {
    m_isEncrypting = false;
    Event_Secured();
}

void SSLSocket::onBytesWritten() {
    if (m_connection->bytesToWrite() == 0)
        Event_SendComplete();
}

void SSLSocket::onError(QAbstractSocket::SocketError error) {
    // Poll found nothing: no error.
    if (error == QAbstractSocket::SocketTimeoutError && IsConnected())
        return;
    if (fallBack(error))
        return;
    const bool hasClosed = error == QAbstractSocket::RemoteHostClosedError;
    const bool hasNoIPv6 = error == QAbstractSocket::HostNotFoundError;
    m_wasReset = hasClosed && isReset();
    forgetReset();
    m_lastErrorCode = hasClosed ? PeerClosed : hasNoIPv6 ? m_firstError : error;
    const bool isTls = m_isEncrypting || error == QAbstractSocket::SslHandshakeFailedError;
    m_lastErrorText = isTls ? m_connection->errorString() : QString();
    Event_Error();
}
