#include "FtpConnection.h"

#include <algorithm>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLocale>

using Behaviour = FtpServer::Behaviour;

namespace {

constexpr qsizetype LongestLine = 4096;

QByteArray damaged(QByteArray bytes) {
    if (!bytes.isEmpty())
        bytes[bytes.size() / 2] = static_cast<char>(bytes[bytes.size() / 2] ^ 1);
    return bytes;
}

QByteArray detailsOf(const QFileInfo& item) {
    const QString date = QLocale::c().toString(item.lastModified().toUTC(), u"MMM dd  yyyy");
    return QStringLiteral("%1rw-r--r--   1 ftp      ftp      %2 %3 ")
        .arg(item.isDir() ? u'd' : u'-')
        .arg(item.size(), 12)
        .arg(date)
        .toLatin1();
}

}  // namespace

const FtpConnection::Command FtpConnection::Commands[] = {
    {"USER", &FtpConnection::USER}, {"PASS", &FtpConnection::PASS}, {"QUIT", &FtpConnection::QUIT},
    {"NOOP", &FtpConnection::NOOP}, {"SYST", &FtpConnection::SYST}, {"TYPE", &FtpConnection::TYPE},
    {"PWD", &FtpConnection::PWD},   {"CWD", &FtpConnection::CWD},   {"PASV", &FtpConnection::PASV},
    {"EPSV", &FtpConnection::EPSV}, {"NLST", &FtpConnection::NLST}, {"LIST", &FtpConnection::LIST},
    {"SIZE", &FtpConnection::SIZE}, {"RETR", &FtpConnection::RETR},
};

FtpConnection::FtpConnection(QTcpSocket& control, const QString& root, const Behaviour& behaviour)
    : QObject(&control), m_control(control), m_root(root), m_behaviour(behaviour) {
    connect(&m_control, &QTcpSocket::readyRead, this, [this] { takeCommands(); });
    connect(&m_control, &QTcpSocket::disconnected, &m_control, &QObject::deleteLater);
    connect(&m_dataListener, &QTcpServer::newConnection, this, [this] { dataConnected(); });
    reply("220 Demonstration server.");
}

void FtpConnection::takeCommands() {
    while (m_control.canReadLine())
        answer(QString::fromLatin1(m_control.readLine()).trimmed());
    if (m_control.bytesAvailable() > LongestLine)
        m_control.abort();
}

void FtpConnection::answer(const QString& line) {
    if (m_behaviour == Behaviour::Stalls)
        return;
    const QString verb = line.section(u' ', 0, 0).toUpper();
    const auto* const known =
        std::ranges::find_if(Commands, [&](const Command& c) { return verb == QLatin1String(c.verb); });
    const bool isOpenToAll = verb == u"USER" || verb == u"PASS" || verb == u"QUIT";
    if (known == std::end(Commands))
        reply("502 This server only gives files.");
    else if (!m_isLoggedOn && !isOpenToAll)
        reply("530 Log on first.");
    else
        (this->*known->handle)(line.section(u' ', 1));
}

void FtpConnection::reply(const QByteArray& text) {
    m_control.write(text + "\r\n");
}

void FtpConnection::USER(const QString&) {
    reply("331 Any password will do.");
}

void FtpConnection::PASS(const QString&) {
    m_isLoggedOn = m_behaviour != Behaviour::Refuses;
    reply(m_isLoggedOn ? "230 Welcome." : "530 Not today.");
}

void FtpConnection::QUIT(const QString&) {
    reply("221 Good bye.");
    m_control.disconnectFromHost();
}

void FtpConnection::NOOP(const QString&) {
    reply("200 Done.");
}

void FtpConnection::SYST(const QString&) {
    reply("215 UNIX Type: L8");
}

void FtpConnection::TYPE(const QString&) {
    reply("200 Every file is sent as it is.");
}

void FtpConnection::PWD(const QString&) {
    reply("257 \"" + m_folder.toLatin1() + "\" is the current directory.");
}

void FtpConnection::CWD(const QString& argument) {
    const QString folder = path(argument);
    if (folder.isEmpty() || !QFileInfo(folder).isDir()) {
        reply("550 There is no such directory.");
        return;
    }
    m_folder = u'/' + QDir(m_root).relativeFilePath(folder);
    if (m_folder == u"/.")
        m_folder = QStringLiteral("/");
    reply("250 Directory changed.");
}

void FtpConnection::PASV(const QString&) {
    const int port = listenForData();
    reply(QStringLiteral("227 Entering Passive Mode (127,0,0,1,%1,%2).")
              .arg(port / 256)
              .arg(port % 256)
              .toLatin1());
}

void FtpConnection::EPSV(const QString&) {
    reply("229 Entering Extended Passive Mode (|||" + QByteArray::number(listenForData()) + "|)");
}

void FtpConnection::NLST(const QString& argument) {
    sendListing(argument, false);
}

void FtpConnection::LIST(const QString& argument) {
    sendListing(argument, true);
}

void FtpConnection::SIZE(const QString& argument) {
    const QFileInfo item(path(argument));
    reply(item.isFile() ? "213 " + QByteArray::number(item.size()) : "550 There is no such file.");
}

void FtpConnection::RETR(const QString& argument) {
    QFile file(path(argument));
    if (!QFileInfo(file).isFile() || !file.open(QIODevice::ReadOnly)) {
        reply("550 There is no such file.");
        return;
    }
    const QByteArray bytes = file.readAll();
    reply("150 Opening BINARY mode data connection for " + argument.toLatin1() + " (" +
          QByteArray::number(bytes.size()) + " bytes).");
    const bool isDamaged = m_behaviour == Behaviour::DamagesImages && argument.endsWith(u".hex");
    send(isDamaged ? damaged(bytes) : bytes, m_behaviour == Behaviour::CutsTransfers);
}

QString FtpConnection::path(const QString& argument) const {
    // From the client's root: no ".." leads above it, and nor does a link.
    const QString asked = QDir::cleanPath(argument.startsWith(u'/') ? argument : m_folder + u'/' + argument);
    const QString found = QFileInfo(m_root + u'/' + asked).canonicalFilePath();
    const QString root = QFileInfo(m_root).canonicalFilePath();
    return found == root || found.startsWith(root + u'/') ? found : QString();
}

int FtpConnection::listenForData() {
    m_transfer = nullptr;
    m_dataListener.close();
    m_dataListener.listen(QHostAddress::LocalHost);
    return m_dataListener.serverPort();
}

void FtpConnection::send(const QByteArray& bytes, bool isCut) {
    m_transfer = [this, bytes, isCut](QTcpSocket& data) {
        data.write(isCut ? bytes.first(bytes.size() / 2) : bytes);
        data.disconnectFromHost();
        reply(isCut ? "426 The connection broke." : "226 Transfer complete.");
    };
    dataConnected();
}

void FtpConnection::sendListing(const QString& argument, bool withDetails) {
    const QString folder = path(argument.startsWith(u'-') ? QString() : argument);
    QByteArray lines;
    for (const QFileInfo& item : QDir(folder).entryInfoList(QDir::AllEntries | QDir::NoDotAndDotDot))
        lines += (withDetails ? detailsOf(item) : QByteArray()) + item.fileName().toLatin1() + "\r\n";
    reply("150 Here comes the directory listing.");
    send(lines, false);
}

// As soon as both are there: the connection and something to send.
void FtpConnection::dataConnected() {
    if (!m_transfer || !m_dataListener.hasPendingConnections())
        return;
    QTcpSocket* data = m_dataListener.nextPendingConnection();
    connect(data, &QTcpSocket::disconnected, data, &QObject::deleteLater);
    std::exchange(m_transfer, nullptr)(*data);
}
