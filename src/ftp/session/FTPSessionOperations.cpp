// The operations of a session: how each begins. Their steps are in the tables of FTPOperations.h.
#include "FTPHost.h"
#include "FTPOperations.h"
#include "FTPPaths.h"
#include "FTPSessionClass.h"
#include "Text.h"

QString FTPSessionClass::ConnectingText() {
    return FTPConnectingText();
}

// clang-format off

// ---- On a session

void FTPSessionClass::Logoff()               { immediate(operationOf(u"Logoff")); }
void FTPSessionClass::ChangeDir()            { immediate(operationOf(u"ChangeDir")); }
void FTPSessionClass::ParentDir()            { immediate(operationOf(u"ParentDir")); }
void FTPSessionClass::GetWorkingDir()        { immediate(operationOf(u"GetWorkingDir")); }
void FTPSessionClass::MakeDir()              { immediate(operationOf(u"MakeDir")); }
void FTPSessionClass::RemoveDir()            { immediate(operationOf(u"RemoveDir")); }
void FTPSessionClass::DeleteSingleFile()     { immediate(operationOf(u"DeleteSingleFile")); }
void FTPSessionClass::RenameSingleFile()     { immediate(operationOf(u"RenameSingleFile")); }
void FTPSessionClass::ChmodSingleFile()      { immediate(operationOf(u"ChmodSingleFile")); }
void FTPSessionClass::GetSystemInfo()        { immediate(operationOf(u"GetSystemInfo")); }
void FTPSessionClass::GetStatus()            { immediate(operationOf(u"GetStatus")); }
void FTPSessionClass::AbortTransfer()        { immediate(operationOf(u"AbortTransfer")); }
void FTPSessionClass::GetSingleFile()        { immediate(operationOf(u"GetSingleFile")); }
void FTPSessionClass::PutSingleFile()        { immediate(operationOf(u"PutSingleFile")); }
void FTPSessionClass::RestartGetSingleFile() { immediate(operationOf(u"RestartGetSingleFile")); }
void FTPSessionClass::RestartPutSingleFile() { immediate(operationOf(u"RestartPutSingleFile")); }
void FTPSessionClass::PutDir()               { immediate(operationOf(u"PutDirImmediate")); }

void FTPSessionClass::SITECommand(const QString& text) {
    if (!beginImmediate())
        return;
    DirectCommandText = text;
    enter(operationOf(u"SITECommand"));
}

void FTPSessionClass::DirectCommand(const QString& text) {
    if (!beginImmediate())
        return;
    DirectCommandText = text;
    enter(operationOf(u"DirectCommand"));
}

void FTPSessionClass::GetDirList() {
    if (!beginImmediate())
        return;
    DirectoryFileList.clear();
    enter(operationOf(u"GetDirListImmediate"));
}

void FTPSessionClass::GetDir() {
    if (beginImmediate() && startTree(ServerDirectory))
        enter(operationOf(u"GetDirImmediate"));
}

void FTPSessionClass::DeleteDir() {
    if (beginImmediate() && startTree(ServerDirectory))
        enter(operationOf(u"DeleteDirImmediate"));
}

// ---- With a connection of their own

void FTPSessionClass::Logon()           { connectAndEnter(operationOf(u"Logon")); }
void FTPSessionClass::StartGetFile()    { oneShot(operationOf(u"GetFile")); }
void FTPSessionClass::StartPutFile()    { oneShot(operationOf(u"PutFile")); }
void FTPSessionClass::StartDeleteFile() { oneShot(operationOf(u"DeleteFile")); }
void FTPSessionClass::StartRenameFile() { oneShot(operationOf(u"RenameFile")); }
void FTPSessionClass::StartPutDir()     { oneShot(operationOf(u"PutDir")); }

void FTPSessionClass::StartGetDirList() {
    DirectoryFileList.clear();
    oneShot(operationOf(u"GetDirList"));
}

void FTPSessionClass::StartGetDir() {
    if (startTree(ServerDirectory))
        oneShot(operationOf(u"GetDir"));
}

void FTPSessionClass::StartDeleteDir() {
    if (startTree(ServerDirectory.startsWith(u'/') ? ServerDirectory : u'/' + ServerDirectory))
        oneShot(operationOf(u"DeleteDir"));
}

// clang-format on

bool FTPSessionClass::beginImmediate() {
    if (!SocketsActive())
        return false;
    IgnoreCancel = true;
    dropReplies();
    return true;
}

void FTPSessionClass::enter(const FTPOperation& operation) {
    NT = false;
    m_engine.reset();
    m_over = Over::No;
    const bool isAbort = &operation == &operationOf(u"AbortTransfer");
    forsakeReplies(isAbort);
    if (DataSocket && !isAbort)
        DataSocket->Stop();
    FTPSessionType = QStringView(operation.type).toString();
    NextFTPStep(QStringView(operation.firstStep()).toString(), QStringView(operation.firstCommand).toString(),
                m_engine.expanded(operation.status));
}

// What is still owed belongs to an operation that was dropped. Servers differ in how many replies an abort
// and its transfer have together.
void FTPSessionClass::forsakeReplies(bool isAbort) {
    if (m_replies.isOwed() && Text::equal(FTPSessionType, u"AbortTransfer")) {
        sendCommand(QStringLiteral("NOOP"));
        m_replies.forsakeUpToNOOP();
    } else {
        m_replies.forsake(isAbort);
    }
}

void FTPSessionClass::immediate(const FTPOperation& operation) {
    if (beginImmediate())
        enter(operation);
}

void FTPSessionClass::connectAndEnter(const FTPOperation& operation) {
    Buffer.clear();
    closeSockets();
    m_replies = {};
    enter(operation);
    m_replies.onConnect();
    openConnection();
}

void FTPSessionClass::oneShot(const FTPOperation& operation) {
    IgnoreCancel = false;
    connectAndEnter(operation);
}

void FTPSessionClass::openConnection() {
    DataSocket = new FTPDataSocket(m_clock, *this);
    DataSocket->setParent(&m_socketHome);
    CommandSocket = new FTPCommandSocket(m_clock, *this);
    CommandSocket->setParent(&m_socketHome);
    CommandSocket->SslConfiguration = SslConfiguration;
    CommandSocket->Address = ServerAddress;
    CommandSocket->Port = static_cast<quint16>(CommandPort);
    CommandSocket->Connect();
}

// The tree grows by paths that the server tells, which are absolute and end in no slash.
bool FTPSessionClass::startTree(const QString& top) {
    if (!top.startsWith(u'/')) {
        EndFTPSession(QStringLiteral("Error: The path of a directory tree must be absolute: ") + top);
        return false;
    }
    ServerDirectory = FTPPaths::withoutTrailingSlash(top);
    DeleteDirectory = ServerDirectory;
    DirList.clear();
    DirList.emplace_back(ServerDirectory, QString());
    CurrentDirectoryIndex = 0;
    return true;
}

void FTPSessionClass::GetFiles(const QString& prefix, const QString& path) {
    if (!FTPSessionState::GetFiles(prefix, path))
        EndFTPSession(QStringLiteral("Cannot find this path: ") + path);
}

// ---- What the data connection asks and tells

FTPTransferKind FTPSessionClass::Transfer() const {
    const FTPOperation* operation = findOperation(FTPSessionType);
    return operation ? operation->transfer : FTPTransfers::None;
}

QString FTPSessionClass::LocalPath(const QString& name) const {
    const bool sendsTree =
        Text::equal(FTPSessionType, u"PutDir") || Text::equal(FTPSessionType, u"PutDirImmediate");
    return sendsTree ? Paths.value(CurrentFileIndex) : LocalDirectory + name;
}

void FTPSessionClass::Progress(std::int32_t count) {
    if (FTPStatusInstance)
        FTPStatusInstance->Progress_FTP(count);
}

QString FTPSessionClass::TextOf(const QByteArray& bytes) const {
    return decode(bytes);
}

bool FTPSessionClass::TakeListingLine(const QString& line) {
    Skipped.clear();
    const bool fits = AddListingLine(line);
    for (const QString& skipped : std::as_const(Skipped))
        Tell(skipped);
    if (!fits)
        EndFTPSession(QStringLiteral("Error: The directory tree is too large."));
    return fits;
}
