#include "RealServers.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QStandardPaths>
#include <QTcpServer>
#include <QTcpSocket>
#include <QThread>

#include <unistd.h>

namespace {

// Servers that are only unpacked, since packages of FTP servers exclude each other.
const QString UnpackedServers = QStringLiteral(VLX_FTP_SERVERS);

// "bin", whom every system knows.
constexpr uid_t UserId = 2;

int freePort() {
    QTcpServer server;
    server.listen(QHostAddress::LocalHost);
    return server.serverPort();
}

}  // namespace

RealServer::RealServer(Kind kind, bool withTls) : m_port(freePort()) {
    // Its user is another one.
    QFile::setPermissions(m_folder.path(), QFile::Permissions(0x7755));
    QDir().mkpath(root() + QStringLiteral("/work"));
    const QString program = find(kind == Kind::vsftpd    ? QStringLiteral("vsftpd")
                                 : kind == Kind::proftpd ? QStringLiteral("proftpd")
                                                         : QStringLiteral("pure-ftpd"));
    if (program.isEmpty())
        return;
    if (withTls)
        makeCertificate();
    start(program, kind == Kind::vsftpd    ? prepareVsftpd(withTls)
                   : kind == Kind::proftpd ? prepareProftpd(withTls)
                                           : preparePureFtpd(withTls));
}

RealServer::~RealServer() {
    if (m_process.state() == QProcess::NotRunning)
        return;
    m_process.terminate();
    if (!m_process.waitForFinished(2000)) {
        m_process.kill();
        m_process.waitForFinished(2000);
    }
}

void RealServer::openWork() {
    QDirIterator items(root() + QStringLiteral("/work"),
                       QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
    const auto give = [this](const QString& path) {
        QFile::setPermissions(path, QFile::Permissions(0x7777));
        if (::chown(QFile::encodeName(path).constData(), UserId, UserId) != 0)
            m_problem = QStringLiteral("cannot give %1 to the server's user").arg(path);
    };
    give(root() + QStringLiteral("/work"));
    while (items.hasNext())
        give(items.next());
}

QString RealServer::find(const QString& program) {
    const QStringList unpacked{UnpackedServers + QStringLiteral("/usr/sbin"),
                               UnpackedServers + QStringLiteral("/usr/bin")};
    for (const QStringList& folders : {QStringList(), QStringList{QStringLiteral("/usr/sbin")}, unpacked}) {
        const QString path = QStandardPaths::findExecutable(program, folders);
        if (!path.isEmpty())
            return path;
    }
    m_isInstalled = false;
    m_problem = program + QStringLiteral(" is not installed (looked in the search path and in ") +
                UnpackedServers + u')';
    return {};
}

bool RealServer::make(const QString& program, const QStringList& arguments) {
    return QProcess::execute(program, arguments) == 0;
}

void RealServer::write(const QString& name, const QByteArray& text) {
    QFile file(m_folder.path() + u'/' + name);
    file.open(QIODevice::WriteOnly);
    file.write(text);
    file.close();
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
}

QStringList RealServer::prepareVsftpd(bool withTls) {
    const QString empty = m_folder.path() + QStringLiteral("/empty");
    QDir().mkpath(empty);
    QByteArray text =
        "listen=YES\nlisten_address=127.0.0.1\nbackground=NO\nanonymous_enable=YES\nlocal_enable=NO\n"
        "write_enable=YES\nanon_upload_enable=YES\nanon_mkdir_write_enable=YES\nanon_other_write_enable=YES\n"
        "anon_world_readable_only=NO\nanon_umask=000\nfile_open_mode=0777\nftp_username=bin\n"
        "seccomp_sandbox=NO\nisolate=NO\nisolate_network=NO\nxferlog_enable=NO\nconnect_from_port_20=NO\n"
        "ls_recurse_enable=NO\nuse_localtime=NO\n";
    text += "listen_port=" + QByteArray::number(m_port) + "\nanon_root=" + root().toUtf8() +
            "\nsecure_chroot_dir=" + empty.toUtf8() + '\n';
    if (withTls)
        text += "ssl_enable=YES\nallow_anon_ssl=YES\nrequire_ssl_reuse=NO\nrsa_cert_file=" +
                certificatePath().toUtf8() + '\n';
    write(QStringLiteral("vsftpd.conf"), text);
    return {m_folder.path() + QStringLiteral("/vsftpd.conf")};
}

QStringList RealServer::prepareProftpd(bool withTls) {
    const QByteArray folder = m_folder.path().toUtf8();
    write(QStringLiteral("passwd"),
          "anonymous:" + hashedPassword() + ":2:2::" + root().toUtf8() + ":/bin/sh\n");
    const QString program = find(QStringLiteral("proftpd"));
    const QString modules = QDir::cleanPath(QFileInfo(program).path() + QStringLiteral("/../lib/proftpd"));
    QByteArray text = "ModulePath " + modules.toUtf8() + '\n';
    // What is built in on one release is a module on the next.
    for (const char* module : {"mod_ls.c", "mod_xfer.c", "mod_tls.c"})
        text += QByteArray("<IfModule !") + module + ">\nLoadModule " + module + "\n</IfModule>\n";
    text +=
        "ServerType standalone\nServerName test\nDefaultAddress 127.0.0.1\nUseIPv6 off\n"
        "User root\nGroup root\nAuthOrder mod_auth_file.c\nRequireValidShell off\nWtmpLog off\n"
        "TransferLog none\n<IfModule mod_delay.c>\nDelayEngine off\n</IfModule>\nDefaultRoot "
        "~\nAllowOverwrite on\n"
        "AllowStoreRestart on\nAllowRetrieveRestart on\nUseReverseDNS off\nUmask 000\n";
    text += "Port " + QByteArray::number(m_port) + "\nAuthUserFile " + folder + "/passwd\nSystemLog " +
            folder + "/log\nPidFile " + folder + "/pid\nScoreboardFile " + folder + "/score\n";
    if (withTls)
        text += "TLSEngine on\nTLSRequired off\nTLSRSACertificateFile " + certificatePath().toUtf8() +
                "\nTLSRSACertificateKeyFile " + certificatePath().toUtf8() + '\n';
    write(QStringLiteral("proftpd.conf"), text);
    return {QStringLiteral("-n"), QStringLiteral("-q"), QStringLiteral("-c"),
            m_folder.path() + QStringLiteral("/proftpd.conf")};
}

QStringList RealServer::preparePureFtpd(bool withTls) {
    const QString users = m_folder.path() + QStringLiteral("/users");
    write(QStringLiteral("users"),
          "anonymous:" + hashedPassword() + ":2:2::" + root().toUtf8() + "/./::::::::::::\n");
    const QString database = users + QStringLiteral(".pdb");
    const QString tool = find(QStringLiteral("pure-pw"));
    if (!tool.isEmpty())
        make(tool, {QStringLiteral("mkdb"), database, QStringLiteral("-f"), users});
    QStringList arguments{QStringLiteral("-S"), QStringLiteral("127.0.0.1,%1").arg(m_port),
                          QStringLiteral("-l"), QStringLiteral("puredb:") + database,
                          QStringLiteral("-g"), m_folder.path() + QStringLiteral("/pid"),
                          QStringLiteral("-U"), QStringLiteral("000:000")};
    for (const char* option : {"-E", "-u1", "-H", "-4", "-A", "-D"})
        arguments += QString::fromLatin1(option);
    if (withTls)
        arguments += {QStringLiteral("-Y1"), QStringLiteral("-2"), certificatePath()};
    return arguments;
}

QByteArray RealServer::hashedPassword() {
    QProcess openssl;
    openssl.start(QStringLiteral("openssl"),
                  {QStringLiteral("passwd"), QStringLiteral("-6"), QStringLiteral("secret-word")});
    openssl.waitForFinished();
    return openssl.readAllStandardOutput().trimmed();
}

void RealServer::makeCertificate() {
    QProcess openssl;
    openssl.setStandardErrorFile(QProcess::nullDevice());
    openssl.start(QStringLiteral("openssl"),
                  {QStringLiteral("req"), QStringLiteral("-x509"), QStringLiteral("-newkey"),
                   QStringLiteral("rsa:2048"), QStringLiteral("-nodes"), QStringLiteral("-days"),
                   QStringLiteral("2"), QStringLiteral("-subj"), QStringLiteral("/CN=127.0.0.1"),
                   QStringLiteral("-addext"), QStringLiteral("subjectAltName=IP:127.0.0.1"),
                   QStringLiteral("-keyout"), m_folder.path() + QStringLiteral("/key"),
                   QStringLiteral("-out"), m_folder.path() + QStringLiteral("/cert")});
    openssl.waitForFinished();
    const auto contents = [this](const char* name) {
        QFile file(m_folder.path() + u'/' + QString::fromLatin1(name));
        file.open(QIODevice::ReadOnly);
        return file.readAll();
    };
    write(QStringLiteral("server.pem"), contents("key") + contents("cert"));
}

void RealServer::start(const QString& program, const QStringList& arguments) {
    openWork();
    m_process.setProcessChannelMode(QProcess::MergedChannels);
    m_process.start(program, arguments);
    const QDeadlineTimer deadline(10'000);
    while (!answers()) {
        if (deadline.hasExpired() || m_process.state() == QProcess::NotRunning) {
            m_process.waitForReadyRead(100);
            m_problem =
                program + QStringLiteral(" does not start: ") + QString::fromUtf8(m_process.readAll());
            return;
        }
        QThread::msleep(20);
    }
}

bool RealServer::answers() const {
    QTcpSocket probe;
    probe.connectToHost(QHostAddress::LocalHost, static_cast<quint16>(m_port));
    const bool hasGreeted = probe.waitForConnected(200) && probe.waitForReadyRead(3000);
    if (hasGreeted) {
        probe.write("QUIT\r\n");
        probe.waitForDisconnected(1000);
    }
    return hasGreeted;
}
