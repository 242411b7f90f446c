// The operations of a session: how each begins. Their steps are in the tables of FTPStepTables.h.
#include "FTPHost.h"
#include "FTPSessionClass.h"

namespace {

constexpr QStringView NOOP = u"NOOP";
constexpr QStringView None;

}  // namespace

QString FTPSessionClass::ConnectingText() {
    return QStringLiteral("Connecting to %1. Please be patient, this takes a few seconds.")
        .arg(FTPHostName());
}

// clang-format off

// ---- On a session

void FTPSessionClass::Logoff()               { immediate({u"Logoff",               u"QUIT",  u"QUIT", QStringLiteral("Send Logoff Command")}); }
void FTPSessionClass::ChangeDir()            { immediate({u"ChangeDir",            u"START", NOOP, QStringLiteral("Send Change Directory Command")}); }
void FTPSessionClass::ParentDir()            { immediate({u"ParentDir",            u"START", NOOP, QStringLiteral("Send Change Directory Command")}); }
void FTPSessionClass::GetWorkingDir()        { immediate({u"GetWorkingDir",        u"START", NOOP, QStringLiteral("Send Print Working Directory Command")}); }
void FTPSessionClass::MakeDir()              { immediate({u"MakeDir",              u"START", NOOP, QStringLiteral("Send Make Directory Command")}); }
void FTPSessionClass::RemoveDir()            { immediate({u"RemoveDir",            u"START", NOOP, QStringLiteral("Send Remove Directory Command")}); }
void FTPSessionClass::DeleteSingleFile()     { immediate({u"DeleteSingleFile",     u"START", NOOP, QStringLiteral("Send Delete Single File Command")}); }
void FTPSessionClass::RenameSingleFile()     { immediate({u"RenameSingleFile",     u"START", NOOP, QStringLiteral("Send Rename Single File Command")}); }
void FTPSessionClass::ChmodSingleFile()      { immediate({u"ChmodSingleFile",      u"START", NOOP, QStringLiteral("Send Change Mode Command")}); }
void FTPSessionClass::GetSystemInfo()        { immediate({u"GetSystemInfo",        u"START", NOOP, QStringLiteral("Send Get System Info Command")}); }
void FTPSessionClass::GetStatus()            { immediate({u"GetStatus",            u"START", NOOP, QStringLiteral("Send Get Status Command")}); }
void FTPSessionClass::AbortTransfer()        { immediate({u"AbortTransfer",        u"START", NOOP, QStringLiteral("Aborting File Transfer")}); }
void FTPSessionClass::GetSingleFile()        { immediate({u"GetSingleFile",        u"START", NOOP, QStringLiteral("Send Get Single File Command")}); }
void FTPSessionClass::PutSingleFile()        { immediate({u"PutSingleFile",        u"START", NOOP, QStringLiteral("Send Put Single File Command")}); }
void FTPSessionClass::RestartGetSingleFile() { immediate({u"RestartGetSingleFile", u"START", NOOP, QStringLiteral("Send Restart Get Single File Command")}); }
void FTPSessionClass::RestartPutSingleFile() { immediate({u"RestartPutSingleFile", u"START", NOOP, QStringLiteral("Send Restart Put Single File Command")}); }
void FTPSessionClass::PutDir()               { immediate({u"PutDirImmediate",      u"GETFILES", NOOP, QStringLiteral("Start Put Directory Sequence")}); }

void FTPSessionClass::SITECommand(const QString& text) {
    if (!beginImmediate())
        return;
    DirectCommandText = text;
    enter({u"SITECommand", u"START", NOOP, QStringLiteral("Send FTP SITE command ") + text});
}

void FTPSessionClass::DirectCommand(const QString& text) {
    if (!beginImmediate())
        return;
    DirectCommandText = text;
    enter({u"DirectCommand", u"START", NOOP, QStringLiteral("Send FTP Direct Command ") + text});
}

void FTPSessionClass::GetDirList() {
    if (!beginImmediate())
        return;
    DirectoryFileList.clear();
    enter({u"GetDirListImmediate", u"START", NOOP, QStringLiteral("Send Get Directory List Command")});
}

void FTPSessionClass::GetDir() {
    if (!beginImmediate())
        return;
    startTree(ServerDirectory);
    enter({u"GetDirImmediate", u"Start", NOOP, QStringLiteral("Start Get Directory Sequence")});
}

void FTPSessionClass::DeleteDir() {
    if (!beginImmediate())
        return;
    DeleteDirectory = ServerDirectory;
    startTree(DeleteDirectory);
    enter({u"DeleteDirImmediate", u"START", NOOP, QStringLiteral("Start Delete Directory Sequence")});
}

// ---- With a connection of their own

void FTPSessionClass::Logon()           { connectAndEnter({u"Logon", u"CONNECT", None, ConnectingText()}); }
void FTPSessionClass::StartGetFile()    { oneShot({u"GetFile",    u"CONNECT",  None, QStringLiteral("Start Get File Sequence")}); }
void FTPSessionClass::StartPutFile()    { oneShot({u"PutFile",    u"CONNECT",  None, QStringLiteral("Start Put File Sequence")}); }
void FTPSessionClass::StartDeleteFile() { oneShot({u"DeleteFile", u"CONNECT",  None, QStringLiteral("Start Delete File Sequence")}); }
void FTPSessionClass::StartRenameFile() { oneShot({u"RenameFile", u"CONNECT",  None, QStringLiteral("Start Rename File Sequence")}); }
void FTPSessionClass::StartPutDir()     { oneShot({u"PutDir",     u"GETFILES", None, QStringLiteral("Start Put Directory Sequence")}); }

void FTPSessionClass::StartGetDirList() {
    DirectoryFileList.clear();
    oneShot({u"GetDirList", u"CONNECT", None, QStringLiteral("Start Get Directory List Sequence")});
}

void FTPSessionClass::StartGetDir() {
    startTree(ServerDirectory);
    oneShot({u"GetDir", u"CONNECT", None, QStringLiteral("Start Get Directory Sequence")});
}

void FTPSessionClass::StartDeleteDir() {
    DeleteDirectory = ServerDirectory.startsWith(u'/') ? ServerDirectory : u'/' + ServerDirectory;
    startTree(DeleteDirectory);
    oneShot({u"DeleteDir", u"CONNECT", None, QStringLiteral("Start Delete Directory Sequence")});
}

// clang-format on

bool FTPSessionClass::beginImmediate() {
    if (!SocketsActive())
        return false;
    IgnoreCancel = true;
    Buffer.clear();
    return true;
}

void FTPSessionClass::enter(const Beginning& beginning) {
    NT = false;
    m_engine.reset();
    FTPSessionType = beginning.type.toString();
    NextFTPStep(beginning.firstStep.toString(), beginning.firstCommand.toString(), beginning.status);
}

void FTPSessionClass::immediate(const Beginning& beginning) {
    if (beginImmediate())
        enter(beginning);
}

void FTPSessionClass::connectAndEnter(const Beginning& beginning) {
    Buffer.clear();
    closeSockets();
    enter(beginning);
    openConnection();
}

void FTPSessionClass::oneShot(const Beginning& beginning) {
    IgnoreCancel = false;
    connectAndEnter(beginning);
}

void FTPSessionClass::openConnection() {
    DataSocket = new FTPDataSocket(*this);
    DataSocket->setParent(&m_socketHome);
    CommandSocket = new FTPCommandSocket(*this);
    CommandSocket->setParent(&m_socketHome);
    CommandSocket->SslConfiguration = SslConfiguration;
    CommandSocket->Address = ServerAddress;
    CommandSocket->Port = static_cast<quint16>(CommandPort);
    CommandSocket->Connect();
}

void FTPSessionClass::startTree(const QString& top) {
    DirList.clear();
    DirList.emplace_back(top, QString());
    CurrentDirectoryIndex = 0;
}
