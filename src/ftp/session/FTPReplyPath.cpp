// How commands go out and replies come in.
#include <algorithm>

#include <QElapsedTimer>
#include <QMetaObject>
#include <QStringEncoder>

#include "FTPOperations.h"
#include "FTPSessionClass.h"
#include "Text.h"

namespace {

// How long replies are handled before the event loop turns.
constexpr qint64 BreathMilliseconds = 5;

// The last reply of a server that ends an idle session.
constexpr std::int32_t ServiceClosing = 421;

}  // namespace

bool FTPSessionClass::NextFTPStep(const QString& step, const QString& command, const QString& status) {
    ResetConnectionTimer();
    m_isAwaitingData = false;
    CurrentFTPStep = step;
    if (Text::equal(command, FTPSteps::NOOP)) {
        dropReplies();
        handle(QStringLiteral("200 NOOP command successful."));
        return true;
    }
    if (const QString fault = faultOf(command); !fault.isEmpty()) {
        EndFTPSession(fault);
        return false;
    }
    sendCommand(Text::equal(command, FTPSteps::FORCENOOP) ? QStringLiteral("NOOP") : command);
    report(command, status);
    return true;
}

QString FTPSessionClass::faultOf(const QString& command) const {
    // One command is one line on the wire, whatever a name in it holds.
    if (std::ranges::any_of(command, [](QChar c) { return c == u'\r' || c == u'\n' || c == u'\0'; }))
        return QStringLiteral("Error: A command cannot hold a line break.");
    // Two names must not become one on the server.
    QStringEncoder encoder(ServerTextEncoding);
    encoder.encode(command).operator QByteArray();
    if (encoder.hasError())
        return QStringLiteral("Error: A command cannot hold a character that the server's encoding lacks.");
    return {};
}

void FTPSessionClass::sendCommand(const QString& command) {
    if (command.isEmpty() || !CommandSocket)
        return;
    m_replies.onCommand();
    CommandSocket->Write(encode(command + FTPCoreCRLF));
}

void FTPSessionClass::report(const QString& command, const QString& status) {
    if (!FTPStatusInstance)
        return;
    const bool holdsPassword = Text::InStr(command, u"PASS") > 0;
    FTPStatusInstance->Response_FTP(holdsPassword ? QStringLiteral("PASS") : command);
    // The status of a command given by the caller is the command itself.
    const bool repeatsIt = holdsPassword && !status.isEmpty() && command.endsWith(status);
    FTPStatusInstance->Status_FTP(repeatsIt ? QStringLiteral("PASS") : status);
}

void FTPSessionClass::ResetConnectionTimer() {
    if (!ConnectionTimer)
        ConnectionTimer = std::make_unique<FTPConnectionTimer>(m_clock, *this);
    ConnectionTimer->Start(Timeout);
}

// ---- Replies

void FTPSessionClass::RepliesCame() {
    // While replies wait to be handled, the connection holds back what follows.
    if (!m_isCatchingUp)
        handleReplies();
}

void FTPSessionClass::handleReplies() {
    // A reply may end the session, and its connection with it.
    FTPCommandSocket* connection = CommandSocket;
    m_isCatchingUp = false;
    Buffer += connection->ReadAll();
    QElapsedTimer busy;
    busy.start();
    const auto hasReply = [this] {
        const qsizetype end = Buffer.indexOf("\r\n");
        return end >= 0 && end <= MaxReplyLine;
    };
    while (CommandSocket == connection && hasReply()) {
        if (busy.elapsed() >= BreathMilliseconds) {
            catchUpLater();
            return;
        }
        // What the data connection holds already came before this reply, or with it.
        if (DataSocket)
            DataSocket->Poll();
        if (CommandSocket == connection && hasReply())
            ParseCommandBuffer();
    }
    // A transfer's command waits for the data connection as long as a turn lasts: bytes that come with the
    // reply are better than bytes behind it.
    if (CommandSocket == connection && !(DataSocket && DataSocket->IsConnecting()))
        connection->Flush();
    if (CommandSocket == connection && Buffer.size() > MaxReplyLine)
        endFlood(QStringLiteral("Error: The reply line is too long."));
}

void FTPSessionClass::catchUpLater() {
    m_isCatchingUp = true;
    FTPCommandSocket* connection = CommandSocket;
    QMetaObject::invokeMethod(
        connection,
        [this, connection] {
            if (CommandSocket == connection)
                handleReplies();
        },
        Qt::QueuedConnection);
}

void FTPSessionClass::ParseCommandBuffer() {
    const QByteArray line = takeLine();
    if (line.isNull())
        return;
    const bool isForsaken = m_replies.takesOff(line);
    if (m_replies.length() > MaxReplies)
        endFlood(QStringLiteral("Error: The reply is too long."));
    else if (isForsaken || m_over != Over::No)
        pass(decode(line));
    else if (m_replies.isText())
        take(decode(line));
    else
        handle(decode(line));
}

// Nothing is reported behind an error.
void FTPSessionClass::endFlood(const QString& message) {
    if (m_over == Over::Badly)
        closeSockets();
    else
        CancelFTPSession(message);
}

void FTPSessionClass::ParseCommandBuffer(std::int32_t code) {
    ResetConnectionTimer();
    m_engine.Execute(QStringLiteral("x     "), code);
}

// The line before the first line end, or none.
QByteArray FTPSessionClass::takeLine() {
    const qsizetype end = Buffer.indexOf("\r\n");
    if (end < 0)
        return {};
    const QByteArray line = Buffer.first(end);
    Buffer.remove(0, end + 2);
    return line.isNull() ? QByteArray("") : line;
}

// Unread replies are lost, but not the beginning of one that is still on its way.
void FTPSessionClass::dropReplies() {
    for (QByteArray line = takeLine(); !line.isNull(); line = takeLine())
        m_replies.takesOff(line);
}

void FTPSessionClass::take(const QString& line) {
    // While the end of the data connection is awaited, a server's answers do not count as activity.
    if (!m_isAwaitingData)
        ResetConnectionTimer();
    show(line);
}

void FTPSessionClass::handle(const QString& line) {
    take(line);
    m_engine.Execute(line, codeOf(line));
}

// A reply that belongs to no operation. A server that ends the session tells so.
void FTPSessionClass::pass(const QString& line) {
    show(line);
    if (m_over == Over::Well && codeOf(line) == ServiceClosing)
        EndFTPSession(QStringLiteral("Error: ") + line + QStringLiteral("\n"));
}

std::int32_t FTPSessionClass::codeOf(const QString& line) {
    return Text::IntVal(Text::NthField(line, u" ", 1));
}

void FTPSessionClass::show(const QString& line) {
    if (FTPStatusInstance)
        FTPStatusInstance->Response_FTP(withoutPassword(line));
}

// Servers have been seen to repeat the password that they refuse. Elsewhere its letters are those of some
// other word, as a short one's may be here.
QString FTPSessionClass::withoutPassword(QString text) const {
    constexpr qsizetype ShortestTelling = 6;
    if (ServerPassword.isEmpty() || !Text::equal(CurrentFTPStep, u"PASS"))
        return text;
    if (ServerPassword.size() >= ShortestTelling)
        return text.replace(ServerPassword, QStringLiteral("PASS"));
    return text.replace(QStringLiteral("PASS ") + ServerPassword, QStringLiteral("PASS"),
                        Qt::CaseInsensitive);
}

void FTPSessionClass::ExecuteDirectCommandSteps(const QString& line, std::int32_t code) {
    m_engine.Execute(operationOf(u"DirectCommand"), line, code);
}

void FTPSessionClass::ControlFailed(const QString& reason) {
    // After QUIT the server closes, and after an error there is nothing more to tell.
    if (!Text::equal(CurrentFTPStep, u"QUIT") && m_over != Over::Badly)
        EndFTPSession(QStringLiteral("Error: ") + reason);
}

void FTPSessionClass::TimedOut() {
    EndFTPSession(QStringLiteral("Error: The connection timed out. Ending session."));
}

// ---- The end of the data connection

void FTPSessionClass::AwaitData(bool asks, const QString& status) {
    m_isAwaitingData = true;
    m_asks = asks;
    m_askStatus = status;
    askServer();
}

void FTPSessionClass::askServer() {
    if (!m_isAwaitingData || !m_asks || m_pause.isOn() || m_replies.isOwed())
        return;
    sendCommand(QStringLiteral("NOOP"));
    report(QStringLiteral("FORCENOOP"), m_askStatus);
    m_pause.start(ClockTimer::Mode::Single);
}

void FTPSessionClass::DataMoved() {
    if (m_over == Over::No)
        ResetConnectionTimer();
}

// A NOOP that is still to be answered goes on by itself.
void FTPSessionClass::DataEnded() {
    if (!m_isAwaitingData || m_replies.isOwed())
        return;
    m_isAwaitingData = false;
    m_engine.Resume();
}
