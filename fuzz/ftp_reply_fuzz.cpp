// Any bytes as the replies of a server, for any operation, without a network.
#include <cstddef>
#include <cstdint>

#include <QCoreApplication>
#include <QList>
#include <QTemporaryDir>

#include "FTPSessionClass.h"
#include "Require.h"
#include "ScriptedDialogs.h"
#include "SimClock.h"

namespace {

struct Start {
    const char16_t* type;
    const char16_t* step;
};

constexpr Start Starts[] = {
    {u"Logon", u"CONNECT"},
    {u"GetFile", u"CONNECT"},
    {u"PutFile", u"CONNECT"},
    {u"DeleteFile", u"CONNECT"},
    {u"RenameFile", u"CONNECT"},
    {u"GetDirList", u"CONNECT"},
    {u"GetDir", u"CONNECT"},
    {u"PutDir", u"GETFILES"},
    {u"DeleteDir", u"CONNECT"},
    {u"GetSingleFile", u"START"},
    {u"RestartGetSingleFile", u"START"},
    {u"RestartPutSingleFile", u"START"},
    {u"GetDirImmediate", u"START"},
    {u"DeleteDirImmediate", u"START"},
    {u"AbortTransfer", u"ABORT"},
    {u"DirectCommand", u"DONE"},
};

// A report must never hold the password where a server can repeat it; elsewhere it is any word.
class CheckingStatus final : public FTPStatusClass {
public:
    using FTPStatusClass::FTPStatusClass;
    void Error_FTP(const QString& text) override { checkWords(text); }
    void Response_FTP(const QString& text) override { checkWords(text); }

private:
    void checkWords(const QString& text) const {
        require(Session.CurrentFTPStep != u"PASS" || !text.contains(u"correct horse"));
    }
};

}  // namespace

// The first byte chooses the operation, the second its settings; each line of the rest is a reply.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static int argc = 0;
    static const QCoreApplication application(argc, nullptr);
    static const QTemporaryDir folder;
    if (size < 2)
        return 0;

    SimClock clock;
    ScriptedDialogs dialogs(clock);
    Globals globals(clock);
    FTPSessionClass session(clock, dialogs, globals);
    session.FTPStatusInstance = std::make_unique<CheckingStatus>(session, globals);
    session.FileDelimiter = QStringLiteral("/");
    session.LocalDirectory = folder.path() + u'/';
    session.Files = QStringList{QStringLiteral("a"), QStringLiteral("b")};
    session.ServerDirectory = data[1] & 1 ? QStringLiteral("/pub") : QString();
    session.PassiveMode = (data[1] & 2) != 0;
    session.IgnoreCancel = (data[1] & 4) != 0;
    session.SetLoginInfo(QStringLiteral("127.0.0.1"), QStringLiteral("me"), QStringLiteral("correct horse"));
    session.DirList.emplace_back(QStringLiteral("/pub"), QString());
    session.DeleteDirectory = QStringLiteral("/pub");
    // Without a control connection nothing goes to the network.
    session.DataSocket = new FTPDataSocket(clock, session);
    const Start& start = Starts[data[0] % std::size(Starts)];
    session.FTPSessionType = QString::fromUtf16(start.type);
    session.NextFTPStep(QString::fromUtf16(start.step), QString(), QString());

    const QByteArray replies(reinterpret_cast<const char*>(data + 2), static_cast<qsizetype>(size - 2));
    for (const QByteArray& line : replies.split('\n')) {
        session.Buffer += line + "\r\n";
        while (session.Buffer.contains("\r\n"))
            session.ParseCommandBuffer();
        if (session.DataSocket && line.startsWith("LIST"))
            session.DataSocket->ParseDirectoryList(QString::fromLatin1(line.mid(4)));
    }
    require(session.LocalDirectory.startsWith(folder.path()));
    clock.advance(std::chrono::minutes(1));
    session.IgnoreCancel = false;
    session.EndFTPSession(QString());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    require(clock.pendingWaits() == 0);
    return 0;
}
