#include "FTPSessionClass.h"

#include <algorithm>
#include <array>
#include <limits>

#include <QRandomGenerator>

#include "FTPPaths.h"
#include "FTPStepTables.h"
#include "Text.h"

FTPSessionClass::FTPSessionClass(Clock& clock, Dialogs& dialogs, Globals& globals, const QString& id)
    : FTPStatusInstance(std::make_unique<FTPStatusClass>(*this, globals)),
      ConnectionTimer(std::make_unique<FTPConnectionTimer>(clock, *this)),
      ID(id),
      SessionStartTime(static_cast<double>(clock.now().count())),
      m_clock(clock),
      m_dialogs(dialogs),
      m_globals(globals),
      m_engine(*this),
      // A box of an internal check that cannot be shown is not worth more words.
      m_boxes(clock, [](const std::exception_ptr&) {}) {
    SetDataPortRange(DataPortStart, DataPortEnd);
}

FTPSessionClass::~FTPSessionClass() {
    closeSockets();
}

void FTPSessionClass::SetLoginInfo(const QString& address, const QString& user, const QString& password) {
    ServerAddress = address;
    ServerUserID = user;
    ServerPassword = password;
}

void FTPSessionClass::DeleteFileName(const QString& name) {
    Files.removeIf([&](const QString& file) { return Text::equal(file, name); });
}

QString FTPSessionClass::GetNextFileName() {
    return Files.isEmpty() ? QString() : Files.takeLast();
}

std::optional<QFileInfo> FTPSessionClass::GetNextFolderItem() {
    if (FileFolderItems.empty())
        return std::nullopt;
    QFileInfo item = FileFolderItems.back();
    FileFolderItems.pop_back();
    return item;
}

void FTPSessionClass::SetLocalFolderItem(const QFileInfo& item) {
    const QString path = item.absoluteFilePath();
    LocalDirectory = GetDirFromPath(item.isDir() ? path + u'/' : path);
    if (!item.isDir())
        AddFileName(item.fileName());
}

void FTPSessionClass::SetTimeoutSeconds(std::int32_t seconds) {
    constexpr std::int32_t Longest = std::numeric_limits<std::int32_t>::max() / 1000;
    Timeout = std::clamp(seconds, 0, Longest) * 1000;
}

void FTPSessionClass::SetStatusReporting(bool isOn) {
    if (isOn)
        FTPStatusInstance = std::make_unique<FTPStatusClass>(*this, m_globals);
}

void FTPSessionClass::SetDataPortRange(std::int32_t first, std::int32_t last) {
    DataPortStart = first;
    DataPortEnd = last;
    DataPort =
        static_cast<std::int32_t>(first + QRandomGenerator::global()->generateDouble() * (last - first));
}

void FTPSessionClass::NextDataPort() {
    ++DataPort;
    if (DataPort > DataPortEnd)
        DataPort = DataPortStart;
}

void FTPSessionClass::EndFTPSession(const QString& message) {
    ++m_endings;
    m_engine.reset();
    if (!message.isEmpty())
        reportEnd(message);
    ConnectionTimer->Off();
    if (!IgnoreCancel)
        closeSockets();
}

void FTPSessionClass::CancelFTPSession(const QString& message) {
    ++m_endings;
    m_engine.reset();
    reportEnd(message);
    ConnectionTimer->Off();
    closeSockets();
}

bool FTPSessionClass::SocketsActive() {
    if (!DataSocket)
        EndFTPSession(QStringLiteral("Data Socket is no longer active."));
    else if (!CommandSocket)
        EndFTPSession(QStringLiteral("Command Socket is no longer active."));
    else if (!CommandSocket->IsConnected())
        EndFTPSession(QStringLiteral("Connection Lost."));
    else
        return true;
    return false;
}

double FTPSessionClass::CalcSessionTime() const {
    return (static_cast<double>(m_clock.now().count()) - SessionStartTime) / 1'000'000;
}

void FTPSessionClass::NextFTPStep(const QString& step, const QString& command, const QString& status) {
    ResetConnectionTimer();
    CurrentFTPStep = step;
    if (Text::equal(command, FTPSteps::NOOP)) {
        Buffer = "200 NOOP command successful.\r\n";
        ParseCommandBuffer();
        return;
    }
    if (!isSendable(command)) {
        EndFTPSession(QStringLiteral("Error: A command cannot hold a line break."));
        return;
    }
    sendCommand(Text::equal(command, FTPSteps::FORCENOOP) ? FTPSteps::NOOP : QStringView(command));
    report(command, status);
}

void FTPSessionClass::ParseCommandBuffer() {
    ResetConnectionTimer();
    const qsizetype end = Buffer.indexOf("\r\n");
    if (end < 0)
        return;
    const QString line = decode(Buffer.first(end));
    Buffer.remove(0, end + 2);
    const std::int32_t code = Text::IntVal(Text::NthField(line, u" ", 1));
    if (FTPStatusInstance)
        FTPStatusInstance->Response_FTP(withoutPassword(line));
    m_engine.Execute(line, code);
}

void FTPSessionClass::ParseCommandBuffer(std::int32_t code) {
    ResetConnectionTimer();
    m_engine.Execute(QStringLiteral("x     "), code);
}

void FTPSessionClass::ResetConnectionTimer() {
    if (!ConnectionTimer)
        ConnectionTimer = std::make_unique<FTPConnectionTimer>(m_clock, *this);
    ConnectionTimer->Start(Timeout);
}

void FTPSessionClass::ExecuteDirectCommandSteps(const QString& line, std::int32_t code) {
    m_engine.Execute(::ExecuteDirectCommandSteps, line, code);
}

QByteArray FTPSessionClass::encode(const QString& text) const {
    return QStringEncoder(ServerTextEncoding).encode(text);
}

QString FTPSessionClass::decode(const QByteArray& bytes) const {
    return QStringDecoder(ServerTextEncoding).decode(bytes);
}

void FTPSessionClass::Successful_FTP(const QString& message) {
    if (FTPStatusInstance)
        FTPStatusInstance->Successful_FTP(message);
}

void FTPSessionClass::warn(const QString& message) {
    m_boxes.start(m_dialogs.MsgBox(message));
}

void FTPSessionClass::closeSockets() {
    // Either may be on the call stack.
    if (CommandSocket) {
        CommandSocket->Close();
        std::exchange(CommandSocket, nullptr)->deleteLater();
    }
    if (DataSocket) {
        DataSocket->Drop();
        std::exchange(DataSocket, nullptr)->deleteLater();
    }
}

void FTPSessionClass::reportEnd(const QString& message) {
    if (!FTPStatusInstance)
        return;
    if (SuccessfulMessage(message))
        FTPStatusInstance->Successful_FTP(message);
    else
        FTPStatusInstance->Error_FTP(withoutPassword(message));
}

bool FTPSessionClass::isSendable(const QString& command) const {
    // One command is one line on the wire, whatever a name in it holds.
    return std::ranges::none_of(command, [](QChar c) { return c == u'\r' || c == u'\n' || c == u'\0'; });
}

void FTPSessionClass::sendCommand(QStringView command) {
    if (!command.isEmpty() && CommandSocket)
        CommandSocket->Write(encode(command.toString() + FTPCoreCRLF));
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

QString FTPSessionClass::withoutPassword(QString text) const {
    // Servers have been seen to repeat what they refuse. A short password outside the logon may well be a
    // part of some other word.
    constexpr qsizetype ShortestTelling = 6;
    const bool isLogon = Text::equal(CurrentFTPStep, u"PASS");
    if (ServerPassword.isEmpty() || (!isLogon && ServerPassword.size() < ShortestTelling))
        return text;
    return text.replace(ServerPassword, QStringLiteral("PASS"));
}

bool FTPSessionClass::SuccessfulMessage(const QString& message) {
    // clang-format off
    static constexpr std::array<QStringView, 14> texts{
        u"File has been deleted.",
        u"The file list has been transferred.",
        u"File Transfer Complete.",
        u"File Rename Complete.",
        u"The directory has been deleted.",
        u"Directory Transfer Complete.",
        u"Directory Change Complete.",
        u"Empty Directory Removed.",
        u"Directory Created.",
        u"The working directory has been transferred.",
        u"Connected to Tessarin server.",
        u"Logoff Complete.",
        u"Chmod Command Complete.",
        u"System information received."};
    // clang-format on
    return std::ranges::any_of(texts, [&](QStringView text) { return Text::equal(text, message); });
}
