// A whole session against a server that says and sends anything at any moment, on the simulated clock.
#include <cstddef>
#include <cstdint>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QList>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>

#include "FTPSessionClass.h"
#include "Require.h"
#include "ScriptedDialogs.h"
#include "SimClock.h"

namespace {

void turn() {
    for (int i = 0; i < 4; ++i)
        QCoreApplication::processEvents();
}

// What the session reports: never more ends than operations were begun and time-outs came.
class CountingStatus final : public FTPStatusClass {
public:
    using FTPStatusClass::FTPStatusClass;
    void Error_FTP(const QString&) override { ++ends; }
    void Successful_FTP(const QString&) override { ++ends; }
    void Response_FTP(const QString&) override { ++lines; }
    int ends = 0;
    int lines = 0;
};

class Server {
public:
    Server() {
        require(m_listener.listen(QHostAddress::LocalHost) && m_dataListener.listen(QHostAddress::LocalHost));
    }
    int port() const { return m_listener.serverPort(); }

    // One event: a reply, or something on the data connection.
    void act(const QByteArray& event) {
        take();
        const QByteArray rest = event.mid(1);
        switch (event.isEmpty() ? ' ' : event[0]) {
            case 'd':
                if (m_data)
                    m_data->write(QByteArray(rest).replace(';', "\r\n"));
                break;
            case 'c':
                if (m_data)
                    m_data->disconnectFromHost();
                break;
            case 'x':
                if (m_data)
                    m_data->abort();
                break;
            case 'p':
                say("227 (127,0,0,1," + QByteArray::number(m_dataListener.serverPort() / 256) + ',' +
                    QByteArray::number(m_dataListener.serverPort() % 256) + ")\r\n");
                break;
            default:
                say(event + "\r\n");
        }
    }

private:
    void take() {
        while (QTcpSocket* next = m_listener.nextPendingConnection())
            m_control = next;
        while (QTcpSocket* next = m_dataListener.nextPendingConnection())
            m_data = next;
        if (m_control)
            m_control->readAll();
    }
    void say(const QByteArray& text) {
        if (m_control)
            m_control->write(text);
    }

    QTcpServer m_listener;
    QTcpServer m_dataListener;
    QTcpSocket* m_control = nullptr;
    QTcpSocket* m_data = nullptr;
};

using Operation = void (FTPSessionClass::*)();
constexpr Operation Operations[] = {&FTPSessionClass::StartGetFile,    &FTPSessionClass::StartPutFile,
                                    &FTPSessionClass::StartGetDirList, &FTPSessionClass::StartGetDir,
                                    &FTPSessionClass::StartPutDir,     &FTPSessionClass::StartDeleteDir,
                                    &FTPSessionClass::StartDeleteFile, &FTPSessionClass::Logon};

QStringList below(const QString& path) {
    return QDir(path).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
}

}  // namespace

// The first byte chooses the operation and whether the mode is passive; each line of the rest is an event of
// the server, between which time passes.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static int argc = 0;
    static const QCoreApplication application(argc, nullptr);
    if (size < 1)
        return 0;
    const QTemporaryDir folder;
    const QString inside = folder.filePath(QStringLiteral("inside"));
    QDir().mkpath(inside);
    QFile upload(inside + QStringLiteral("/b"));
    require(upload.open(QIODevice::WriteOnly) && upload.write("some bytes") > 0);
    upload.close();

    SimClock clock;
    ScriptedDialogs dialogs(clock);
    Globals globals(clock);
    Server server;
    FTPSessionClass session(clock, dialogs, globals);
    auto counting = std::make_unique<CountingStatus>(session, globals);
    const CountingStatus& status = *counting;
    session.FTPStatusInstance = std::move(counting);
    session.FileDelimiter = QStringLiteral("/");
    session.LocalDirectory = inside + u'/';
    session.ServerDirectory = QStringLiteral("/pub");
    session.Files = QStringList{QStringLiteral("a"), QStringLiteral("b")};
    session.PassiveMode = data[0] < 128;
    session.SetLoginInfo(QStringLiteral("127.0.0.1"), QStringLiteral("me"), QStringLiteral("secret"));
    session.CommandPort = server.port();
    (session.*Operations[data[0] % std::size(Operations)])();
    turn();

    int events = 0;
    const QByteArray script(reinterpret_cast<const char*>(data + 1), static_cast<qsizetype>(size - 1));
    for (const QByteArray& event :
         script.split('\n').first(std::min<qsizetype>(script.count('\n') + 1, 100))) {
        ++events;
        server.act(event);
        turn();
        clock.advance(std::chrono::milliseconds(100));
        turn();
    }
    // Whatever the server did: silence ends it, and nothing lies beside the folder.
    clock.advance(std::chrono::minutes(3));
    turn();
    require(status.ends >= 1 && status.ends <= events + 2);
    require(status.lines <= 100 * (events + 2) + static_cast<int>(size));
    require(below(folder.path()) == QStringList(QStringLiteral("inside")));
    require(session.LocalDirectory.startsWith(inside));
    require(clock.pendingWaits() == 0);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return 0;
}
