// One connection at a time, plain at first and, if its kind can be, encrypted on demand: what the FTP client
// asks of the toolkit's sockets.
#pragma once

#include <memory>

#include <QByteArray>
#include <QHostAddress>
#include <QObject>
#include <QSslConfiguration>
#include <QSslSocket>
#include <QString>

#include "Clock.h"

class QTcpServer;

// Events come from the event loop, or from inside Poll. An object may be closed from inside its own events
// and deleted with deleteLater, never deleted there and then.
class SSLSocket : public QObject {
public:
    // The last error code when the other side has closed the connection. All other codes are those of
    // QAbstractSocket::SocketError.
    static constexpr int PeerClosed = 102;
    // For its users to tell apart from that; see WasReset.
    static constexpr int PeerReset = 104;

    ~SSLSocket() override;

    // Where Connect goes, and where Listen waits.
    QString Address;
    quint16 Port = 0;
    QSslConfiguration SslConfiguration = QSslConfiguration::defaultConfiguration();

    // How long an address by IPv4 may be silent before a host that has one by IPv6 too is tried there.
    static constexpr Clock::Milliseconds Patience{8000};

    // Drops the present connection without an event and opens a new one: by IPv4 if the address has it, else,
    // or if nobody answers there, by IPv6.
    void Connect();
    // Drops the present connection and waits for one from `peer` on the local address `local`. Connections
    // from elsewhere are refused. False when the port cannot be had; LastErrorCode then tells why.
    bool Listen(const QHostAddress& local, const QHostAddress& peer);
    // Drops the connection and the waiting for one, without an event. What was written and is still unsent
    // is lost.
    void Close();
    // Takes in what has arrived already, without waiting, and raises its events.
    void Poll();

    void Write(const QByteArray& bytes);
    // Hands what was written to the system now, and not when the event loop turns. May raise Event_Error.
    void Flush();
    // All bytes received so far.
    QByteArray ReadAll();

    bool IsConnected() const;
    bool IsConnecting() const;
    QHostAddress LocalAddress() const;
    QHostAddress RemoteAddress() const;
    int LastErrorCode() const { return m_lastErrorCode; }
    // Whether the other side has not closed the connection but broken it off: something may be lost.
    bool WasReset() const { return m_wasReset; }
    // Why the encryption failed, in words; empty for any other error.
    QString LastErrorText() const { return m_lastErrorText; }

    // Starts the TLS handshake on the open connection. Event_Secured or Event_Error follows; the peer's
    // certificate must satisfy SslConfiguration.
    void StartEncryption();
    bool SSLConnected() const;

protected:
    // A connection that is never encrypted costs less of each transfer.
    enum class Kind { Plain, Encryptable };

    SSLSocket(Clock& clock, Kind kind)
        : m_kind(kind), m_patience(clock, Patience, [this] { lookForIPv6(); }) {}

    virtual void Event_Connected() {}
    virtual void Event_DataAvailable() = 0;
    virtual void Event_Error() = 0;
    // All that was written has gone to the system.
    virtual void Event_SendComplete() {}
    virtual void Event_Secured() {}

private:
    class Listener;

    void connectBy(QAbstractSocket::NetworkLayerProtocol protocol);
    void lookForIPv6();
    bool fallBack(int error);
    std::unique_ptr<QTcpSocket> makeConnection();
    void adopt(std::unique_ptr<QTcpSocket> connection);
    void dropConnection();
    void watchForReset();
    bool isReset() const;
    void forgetReset();
    void accept(qintptr descriptor, const QHostAddress& peer);
    void onEncrypted();
    void onBytesWritten();
    void onError(QAbstractSocket::SocketError error);

    Kind m_kind;
    QTcpSocket* m_connection = nullptr;
    Listener* m_listener = nullptr;
    bool m_isEncrypting = false;
    // On while an attempt by IPv4 may still be followed by one by IPv6, and the error of the first.
    bool m_mayFallBack = false;
    ClockTimer m_patience;
    int m_firstError = 0;
    int m_probe = -1;  // a second descriptor of the connection
    bool m_wasReset = false;
    int m_lastErrorCode = 0;
    QString m_lastErrorText;
};
