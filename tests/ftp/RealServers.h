// FTP servers of the distribution, each with a folder of its own on loopback.
#pragma once

#include <memory>

#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>

// Serves the folder root() to the user "anonymous" with the password "secret-word"; what lies in its folder
// "work" may be changed. Stopped and removed with the object.
class RealServer {
public:
    enum class Kind { vsftpd, proftpd, pureftpd };

    // `withTls`: also offers AUTH TLS, with the certificate of certificatePath().
    explicit RealServer(Kind kind, bool withTls = false);
    ~RealServer();

    // Empty when the server runs; else why the test has to be skipped or has failed.
    QString problem() const { return m_problem; }
    bool isInstalled() const { return m_isInstalled; }
    QString root() const { return m_folder.path() + QStringLiteral("/root"); }
    QString certificatePath() const { return m_folder.path() + QStringLiteral("/server.pem"); }
    int port() const { return m_port; }
    // Gives all that was put into the folder "work" to everybody.
    void openWork();

private:
    QString find(const QString& program);
    bool make(const QString& program, const QStringList& arguments);
    void write(const QString& name, const QByteArray& text);
    QStringList prepareVsftpd(bool withTls);
    QStringList prepareProftpd(bool withTls);
    QStringList preparePureFtpd(bool withTls);
    QByteArray hashedPassword();
    void makeCertificate();
    void start(const QString& program, const QStringList& arguments);
    bool answers() const;

    QTemporaryDir m_folder;
    QProcess m_process;
    QString m_problem;
    bool m_isInstalled = true;
    int m_port = 0;
};
