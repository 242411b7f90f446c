// An FTP server in the test's own process that can be made to misbehave at any reply.
#pragma once

#include <functional>

#include <QDir>
#include <QHostAddress>
#include <QStringList>
#include <QTcpServer>
#include <QTcpSocket>

// When the bytes of a transfer come, and how they end.
struct DataTiming {
    enum class Reply {
        Behind,
        First,
        WithoutStart
    };  // 226 behind the end; before the data; and no 150 either
    enum class End { Close, Reset, Open };

    Reply reply = Reply::Behind;
    bool inBursts = false;
    End end = End::Close;
};

// Serves the folder `root` on loopback to one client at a time. Replies are numbered from 0, the greeting,
// over all connections.
class ScriptedServer : public QObject {
public:
    explicit ScriptedServer(const QString& root, const QHostAddress& address = QHostAddress::LocalHost);

    int port() const { return m_listener.serverPort(); }

    // May change reply `number` before it goes out: "" is silence, Hang closes the connection.
    static constexpr const char* Hang = "hang up";
    std::function<void(int number, QByteArray& reply)> intercept;
    // Whole exchanges of its own: answers for a verb, or none to do the usual.
    std::function<std::optional<QByteArray>(const QString& command)> answer;
    bool sendsByteByByte = false;
    DataTiming timing;
    QByteArray transferNote;  // behind the words of 150
    QByteArray fixedListing;  // in place of the folder's own

    QStringList commands;  // received
    int replies = 0;
    bool isConnected() const { return m_control && m_control->state() == QAbstractSocket::ConnectedState; }
    void send(QByteArray text);
    QTcpSocket* data() const { return m_data; }

private:
    void onConnection();
    void onLine(const QString& command);
    QByteArray reply(const QString& verb, const QString& argument);
    QString path(const QString& argument) const;
    QByteArray passive();
    QByteArray active(int port);
    QByteArray listing(const QString& verb) const;
    void download(const QByteArray& bytes);
    void sendBursts(QByteArray bytes);
    void endDownload();
    void upload(const QString& argument);
    void whenDataConnected(std::function<void()> work);
    void adoptData(QTcpSocket* socket);

    QString m_root;
    QString m_cwd = QStringLiteral("/");
    QString m_renameFrom;
    qint64 m_restart = 0;
    QTcpServer m_listener;
    QTcpServer m_dataListener;
    QTcpSocket* m_control = nullptr;
    QTcpSocket* m_data = nullptr;
    bool m_isDataTaken = false;  // a transfer has it
    QByteArray m_input;
    std::function<void()> m_pending;
};
