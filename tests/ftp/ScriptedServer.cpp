#include "ScriptedServer.h"

#include <memory>

#include <QFileInfo>
#include <QTimer>

#include <sys/socket.h>

namespace {

// Breaks a connection off: the other side loses what it has not yet taken.
void reset(QTcpSocket& socket) {
    socket.flush();
    const linger atOnce{1, 0};
    setsockopt(static_cast<int>(socket.socketDescriptor()), SOL_SOCKET, SO_LINGER, &atOnce, sizeof(atOnce));
    socket.abort();
}

}  // namespace

ScriptedServer::ScriptedServer(const QString& root, const QHostAddress& address) : m_root(root) {
    m_listener.listen(address);
    connect(&m_listener, &QTcpServer::newConnection, this, [this] { onConnection(); });
    connect(&m_dataListener, &QTcpServer::newConnection, this,
            [this] { adoptData(m_dataListener.nextPendingConnection()); });
}

void ScriptedServer::send(QByteArray text) {
    if (intercept)
        intercept(replies, text);
    ++replies;
    if (!isConnected())
        return;
    if (text == Hang) {
        m_control->abort();
    } else if (sendsByteByByte) {
        for (const char byte : text) {
            m_control->write(&byte, 1);
            m_control->flush();
        }
    } else {
        m_control->write(text);
    }
}

void ScriptedServer::onConnection() {
    m_control = m_listener.nextPendingConnection();
    m_control->setSocketOption(QAbstractSocket::LowDelayOption, 1);
    m_input.clear();
    m_cwd = QStringLiteral("/");
    connect(m_control, &QTcpSocket::readyRead, this, [this] {
        m_input += m_control->readAll();
        for (qsizetype end = m_input.indexOf("\r\n"); end >= 0; end = m_input.indexOf("\r\n")) {
            const QString command = QString::fromLatin1(m_input.first(end));
            m_input.remove(0, end + 2);
            onLine(command);
        }
    });
    send("220 Ready.\r\n");
}

void ScriptedServer::onLine(const QString& command) {
    commands += command;
    if (answer) {
        if (const auto own = answer(command)) {
            if (!own->isEmpty())
                send(*own);
            return;
        }
    }
    const QByteArray text = reply(command.section(u' ', 0, 0), command.section(u' ', 1));
    if (!text.isEmpty())
        send(text + "\r\n");
}

QString ScriptedServer::path(const QString& argument) const {
    return QDir::cleanPath(m_root + (argument.startsWith(u'/') ? argument : m_cwd + u'/' + argument));
}

QByteArray ScriptedServer::reply(const QString& verb, const QString& argument) {
    using Reply = std::function<QByteArray(ScriptedServer&, const QString&)>;
    static const std::map<QString, Reply> usual{
        {QStringLiteral("USER"), [](auto&, auto&) { return QByteArray("331 Password?"); }},
        {QStringLiteral("PASS"), [](auto&, auto&) { return QByteArray("230 In."); }},
        {QStringLiteral("TYPE"), [](auto&, auto&) { return QByteArray("200 Type set."); }},
        {QStringLiteral("NOOP"), [](auto&, auto&) { return QByteArray("200 Fine."); }},
        {QStringLiteral("QUIT"), [](auto&, auto&) { return QByteArray("221 Bye."); }},
        {QStringLiteral("SYST"), [](auto&, auto&) { return QByteArray("215 UNIX"); }},
        {QStringLiteral("STAT"), [](auto&, auto&) { return QByteArray("211-All\r\n is well\r\n211 End"); }},
        {QStringLiteral("SITE"), [](auto&, auto&) { return QByteArray("200 Done."); }},
        {QStringLiteral("ABOR"), [](auto&, auto&) { return QByteArray("226 Abort done."); }},
        {QStringLiteral("PASV"), [](auto& s, auto&) { return s.passive(); }},
        {QStringLiteral("EPSV"), [](auto& s, auto&) { return s.passive(); }},
        {QStringLiteral("PORT"),
         [](auto& s, auto& text) {
             return s.active(text.section(u',', 4, 4).toInt() * 256 + text.section(u',', 5, 5).toInt());
         }},
        {QStringLiteral("EPRT"),
         [](auto& s, auto& text) { return s.active(text.section(u'|', 3, 3).toInt()); }},
        {QStringLiteral("PWD"),
         [](auto& s, auto&) { return "257 \"" + s.m_cwd.toLatin1() + "\" is current"; }},
        {QStringLiteral("CWD"),
         [](auto& s, auto& text) {
             if (!QFileInfo(s.path(text)).isDir())
                 return QByteArray("550 No such directory.");
             s.m_cwd = u'/' + QDir(s.m_root).relativeFilePath(s.path(text));
             s.m_cwd = s.m_cwd == u"/." ? QStringLiteral("/") : s.m_cwd;
             return QByteArray("250 Changed.");
         }},
        {QStringLiteral("CDUP"),
         [](auto& s, auto&) {
             s.m_cwd = QFileInfo(s.m_cwd).path();
             return QByteArray("250 Up.");
         }},
        {QStringLiteral("MKD"),
         [](auto& s, auto& text) {
             return QDir().mkdir(s.path(text)) ? QByteArray("257 Made.") : QByteArray("550 Not made.");
         }},
        {QStringLiteral("RMD"),
         [](auto& s, auto& text) {
             return QDir().rmdir(s.path(text)) ? QByteArray("250 Removed.") : QByteArray("550 Not removed.");
         }},
        {QStringLiteral("DELE"),
         [](auto& s, auto& text) {
             return QFile::remove(s.path(text)) ? QByteArray("250 Deleted.") : QByteArray("550 Not deleted.");
         }},
        {QStringLiteral("RNFR"),
         [](auto& s, auto& text) {
             s.m_renameFrom = s.path(text);
             return QByteArray("350 To?");
         }},
        {QStringLiteral("RNTO"),
         [](auto& s, auto& text) {
             return QFile::rename(s.m_renameFrom, s.path(text)) ? QByteArray("250 Renamed.")
                                                                : QByteArray("550 Not renamed.");
         }},
        {QStringLiteral("SIZE"),
         [](auto& s, auto& text) { return "213 " + QByteArray::number(QFileInfo(s.path(text)).size()); }},
        {QStringLiteral("REST"),
         [](auto& s, auto& text) {
             s.m_restart = text.toLongLong();
             return QByteArray("350 Restarting.");
         }},
        {QStringLiteral("RETR"),
         [](auto& s, auto& text) {
             QFile file(s.path(text));
             if (!file.open(QIODevice::ReadOnly))
                 return QByteArray("550 No such file.");
             file.seek(std::exchange(s.m_restart, 0));
             s.download(file.readAll());
             return QByteArray();
         }},
        {QStringLiteral("STOR"),
         [](auto& s, auto& text) {
             s.upload(text);
             return QByteArray();
         }},
    };
    if (verb == u"LIST" || verb == u"NLST") {
        download(listing(verb));
        return {};
    }
    const auto known = usual.find(verb);
    return known == usual.end() ? QByteArray("502 Not implemented.") : known->second(*this, argument);
}

QByteArray ScriptedServer::passive() {
    if (!m_dataListener.isListening())
        m_dataListener.listen(m_listener.serverAddress());
    m_data = nullptr;
    const int number = m_dataListener.serverPort();
    if (commands.constLast() == u"EPSV")
        return "229 Extended passive (|||" + QByteArray::number(number) + "|)";
    return "227 Passive (127,0,0,1," + QByteArray::number(number / 256) + ',' +
           QByteArray::number(number % 256) + ").";
}

// As real servers do, it connects only when the transfer begins.
QByteArray ScriptedServer::active(int port) {
    m_pending = nullptr;
    m_data = new QTcpSocket(this);
    m_data->setProperty("port", port);
    return "200 Port set.";
}

QByteArray ScriptedServer::listing(const QString& verb) const {
    if (!fixedListing.isEmpty())
        return fixedListing;
    QByteArray lines;
    const auto items =
        QDir(m_root + m_cwd).entryInfoList(QDir::AllEntries | QDir::NoDotAndDotDot, QDir::Name);
    for (const QFileInfo& item : items) {
        const QByteArray name = item.fileName().toLatin1();
        const QByteArray head = item.isDir() ? "drwxr-xr-x   2 ftp ftp " : "-rw-r--r--   1 ftp ftp ";
        const QByteArray line =
            head + QByteArray::number(item.size()).rightJustified(10) + " Mar 09 14:05 " + name;
        lines += (verb == u"NLST" ? name : line) + "\r\n";
    }
    return lines;
}

void ScriptedServer::download(const QByteArray& bytes) {
    if (timing.reply != DataTiming::Reply::WithoutStart)
        send("150 Here it comes" + transferNote + ".\r\n");
    if (timing.reply != DataTiming::Reply::Behind)
        send("226 Transfer complete.\r\n");
    whenDataConnected([this, bytes] {
        if (timing.inBursts || timing.reply != DataTiming::Reply::Behind) {
            sendBursts(bytes);
            return;
        }
        m_data->write(bytes);
        endDownload();
    });
}

// One burst in each turn of the event loop.
void ScriptedServer::sendBursts(QByteArray bytes) {
    QTimer::singleShot(1, m_data, [this, bytes = std::move(bytes)] {
        const qsizetype count = timing.inBursts ? bytes.size() / 3 + 1 : bytes.size();
        m_data->write(bytes.left(count));
        m_data->flush();
        if (bytes.size() > count)
            sendBursts(bytes.sliced(count));
        else
            endDownload();
    });
}

void ScriptedServer::endDownload() {
    if (timing.end == DataTiming::End::Close)
        m_data->disconnectFromHost();
    if (timing.end == DataTiming::End::Reset)
        reset(*m_data);
    if (timing.end == DataTiming::End::Open)
        connect(m_data, &QTcpSocket::disconnected, this, [this] { send("426 Broken off.\r\n"); });
    else if (timing.reply == DataTiming::Reply::Behind)
        send("226 Transfer complete.\r\n");
}

void ScriptedServer::upload(const QString& argument) {
    auto file = std::make_shared<QFile>(path(argument));
    const qint64 offset = std::exchange(m_restart, 0);
    file->open(offset > 0 ? QIODevice::ReadWrite : QIODevice::WriteOnly | QIODevice::Truncate);
    file->seek(offset);
    if (timing.reply != DataTiming::Reply::WithoutStart)
        send("150 Send it.\r\n");
    if (timing.reply != DataTiming::Reply::Behind)
        send("226 Transfer complete.\r\n");
    // A client that was told so early may have asked for the next port already when this one's bytes come.
    whenDataConnected([this, file] {
        QTcpSocket* data = m_data;
        if (timing.end == DataTiming::End::Reset) {
            reset(*data);
            send("426 Broken off.\r\n");
            return;
        }
        const auto take = [data, file] { file->write(data->readAll()); };
        const auto finish = [this, data, file, take] {
            take();
            file->close();
            data->disconnect(this);
            if (timing.reply == DataTiming::Reply::Behind)
                send("226 Transfer complete.\r\n");
        };
        connect(data, &QTcpSocket::readyRead, this, take);
        connect(data, &QTcpSocket::disconnected, this, finish);
        take();
        if (data->state() == QAbstractSocket::UnconnectedState)
            finish();
    });
}

void ScriptedServer::whenDataConnected(std::function<void()> work) {
    const int activePort = m_data ? m_data->property("port").toInt() : 0;
    if (activePort != 0) {
        QTcpSocket* socket = m_data;
        connect(socket, &QTcpSocket::connected, this, [work = std::move(work)] { work(); });
        connect(socket, &QTcpSocket::errorOccurred, this, [this, socket](auto) {
            if (socket->state() != QAbstractSocket::ConnectedState)
                send("425 Nobody there.\r\n");
        });
        socket->connectToHost(m_listener.serverAddress(), static_cast<quint16>(activePort));
        return;
    }
    if (m_data && !std::exchange(m_isDataTaken, true))
        work();
    else
        m_pending = std::move(work);
}

void ScriptedServer::adoptData(QTcpSocket* socket) {
    socket->setParent(this);
    m_data = socket;
    m_isDataTaken = m_pending != nullptr;
    if (auto work = std::exchange(m_pending, nullptr))
        work();
}
