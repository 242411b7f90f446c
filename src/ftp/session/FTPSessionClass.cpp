#include "FTPSessionClass.h"

#include <algorithm>
#include <limits>

#include "FTPOperations.h"
#include "Text.h"

FTPSessionClass::FTPSessionClass(Clock& clock, Dialogs& dialogs, Globals& globals, const QString& id)
    : FTPStatusInstance(std::make_unique<FTPStatusClass>(*this, globals)),
      ConnectionTimer(std::make_unique<FTPConnectionTimer>(clock, *this)),
      m_clock(clock),
      m_dialogs(dialogs),
      m_globals(globals),
      m_engine(*this, *this),
      // A box of an internal check that cannot be shown is not worth more words.
      m_boxes(clock, [](const std::exception_ptr&) {}),
      m_pause(clock, AskPause, [this] { askServer(); }) {
    ID = id;
    SessionStartTime = static_cast<double>(clock.now().count());
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

void FTPSessionClass::EndFTPSession(const QString& message) {
    finish(message);
    if (!IgnoreCancel)
        closeSockets();
    // A report may begin the next operation.
    if (!message.isEmpty())
        reportEnd(message);
}

void FTPSessionClass::CancelFTPSession(const QString& message) {
    finish(message);
    closeSockets();
    reportEnd(message);
}

void FTPSessionClass::finish(const QString& message) {
    m_over = message.isEmpty() || SuccessfulMessage(message) ? Over::Well : Over::Badly;
    m_engine.reset();
    m_isAwaitingData = false;
    m_pause.stop();
    ConnectionTimer->Off();
    if (DataSocket && m_over == Over::Badly)
        DataSocket->Stop();
}

void FTPSessionClass::reportEnd(const QString& message) {
    if (!FTPStatusInstance)
        return;
    if (SuccessfulMessage(message))
        FTPStatusInstance->Successful_FTP(message);
    else
        FTPStatusInstance->Error_FTP(withoutPassword(message));
}

void FTPSessionClass::Succeed(const QString& message) {
    m_over = Over::Well;
    if (FTPStatusInstance)
        FTPStatusInstance->Successful_FTP(message);
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

void FTPSessionClass::Tell(const QString& status) {
    if (FTPStatusInstance)
        FTPStatusInstance->Status_FTP(status);
}

void FTPSessionClass::Warn(const QString& message) {
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

bool FTPSessionClass::SuccessfulMessage(const QString& message) {
    return std::ranges::any_of(FTPOperations, [&](const FTPOperation& operation) {
        return operation.isSuccessfulMessage && Text::equal(operation.success, message);
    });
}
