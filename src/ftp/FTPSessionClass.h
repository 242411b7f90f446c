// An asynchronous FTP client: one control connection, one data connection, one inactivity timer.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include <QFileInfo>
#include <QObject>
#include <QSslConfiguration>
#include <QString>
#include <QStringConverter>
#include <QStringList>

#include "Clock.h"
#include "Dialogs.h"
#include "Flows.h"
#include "FTPCommandSocket.h"
#include "FTPConnectionTimer.h"
#include "FTPDataSocket.h"
#include "FTPDirectoryClass.h"
#include "FTPEngine.h"
#include "FTPParsedDirListLineClass.h"
#include "FTPStatusClass.h"
#include "Globals.h"

// Every operation is a chain of named steps that the server's replies drive; a caller starts one and learns
// its end through FTPStatusInstance. Nothing blocks.
//
// There are two families. Immediate operations (GetSingleFile, ChangeDir, ...) run on the session that Logon
// opened and leave it open. One-shot operations (StartGetFile, ...) connect, log on, work through a loop,
// quit and close. One operation runs at a time: starting another drops the one that runs.
//
// Not to be destroyed from inside a report; destroying it at any other moment drops the connections and
// closes the files, and a partial download stays where it is.
class FTPSessionClass {
public:
    // Longest line of a reply, and longest listing, that a server may send, in bytes.
    static constexpr qsizetype MaxReplyLine = 64 * 1024;
    static constexpr qsizetype MaxListing = 64 * 1024 * 1024;
    // Most directories in the tree of a walk.
    static constexpr std::size_t MaxDirectories = 100'000;

    FTPSessionClass(Clock& clock, Dialogs& dialogs, Globals& globals, const QString& id = QString());
    FTPSessionClass(const FTPSessionClass&) = delete;
    FTPSessionClass& operator=(const FTPSessionClass&) = delete;
    ~FTPSessionClass();

    // Setting up: plain stores.
    void SetLoginInfo(const QString& address, const QString& user, const QString& password);
    void AddFileName(const QString& name) { Files += name; }
    void AddFile(const QFileInfo& item) { FileFolderItems.push_back(item); }
    void DeleteFileName(const QString& name);
    // The last index of Files: -1 when it is empty.
    std::int32_t GetFileCount() const { return static_cast<std::int32_t>(Files.size()) - 1; }
    // Takes the last element off; empty, or no item, when there is none.
    QString GetNextFileName();
    std::optional<QFileInfo> GetNextFolderItem();
    void SetLocalDirectoryPathName(const QString& path) { LocalDirectory = path; }
    void SetServerDirectoryPathName(const QString& path) { ServerDirectory = path; }
    QString GetLocalDirectoryPathName() const { return LocalDirectory; }
    QString GetServerDirectoryPathName() const { return ServerDirectory; }
    void SetLocalFolderItem(const QFileInfo& item);
    void SetTimeoutSeconds(std::int32_t seconds);
    // False changes nothing: reporting cannot be turned off this way.
    void SetStatusReporting(bool isOn);
    void SetServerEncoding(QStringConverter::Encoding encoding) { ServerTextEncoding = encoding; }
    void SetDataPortRange(std::int32_t first, std::int32_t last);
    void NextDataPort();

    // Opening and closing a session. ConnectingText names the maker's server, whatever ServerAddress is.
    static QString ConnectingText();
    void Logon();
    void Logoff();

    // Immediate operations. Names and paths come from Files, ServerDirectory and LocalDirectory. A name or
    // command with a line break in it ends its operation with an error; nothing of it is sent.
    void ChangeDir();
    void ParentDir();
    void GetWorkingDir();
    void MakeDir();
    void RemoveDir();
    void DeleteSingleFile();
    // The new name is added to Files first, the old one second.
    void RenameSingleFile();
    void ChmodSingleFile();
    void GetSystemInfo();
    void GetStatus();
    void SITECommand(const QString& text);
    void DirectCommand(const QString& text);
    void AbortTransfer();
    void GetSingleFile();
    void PutSingleFile();
    void RestartGetSingleFile();
    void RestartPutSingleFile();
    // The result is in DirectoryFileList.
    void GetDirList();
    // Walks: ServerDirectory is an absolute path. GetDir makes its folder in LocalDirectory; PutDir sends
    // what LocalDirectory holds.
    void GetDir();
    void PutDir();
    void DeleteDir();

    // One-shot operations.
    void StartGetFile();
    void StartPutFile();
    void StartDeleteFile();
    void StartRenameFile();
    void StartGetDirList();
    void StartGetDir();
    void StartPutDir();
    void StartDeleteDir();

    // Ends the operation: reports the text, unless it is empty, as a success or as an error, and closes both
    // connections unless IgnoreCancel is set.
    void EndFTPSession(const QString& message);
    // The same, but closes both connections in every case.
    void CancelFTPSession(const QString& message);
    // Whether the session can take a command; if not, it has been ended with the reason.
    bool SocketsActive();
    QString GetCurrentFTPStep() const { return CurrentFTPStep; }
    QString GetFTPSessionType() const { return FTPSessionType; }
    // Seconds since construction.
    double CalcSessionTime() const;

    // The only way in which a step changes. The command "NOOP" sends nothing: a made-up reply 200 enters the
    // new step at once. "FORCENOOP" sends a real NOOP.
    void NextFTPStep(const QString& step, const QString& command, const QString& status);
    // Handles the first line of Buffer.
    void ParseCommandBuffer();
    // Hands `code` to the present step without a line.
    void ParseCommandBuffer(std::int32_t code);
    void ResetConnectionTimer();
    void ExecuteDirectCommandSteps(const QString& line, std::int32_t code);
    FTPParsedDirListLineClass ParseDirListLine(const QString& line) const { return ::ParseDirListLine(line); }

    // Local paths.
    QString GetDirFromPath(const QString& path) const;
    QString UpOneLocalDirectory(const QString& path) const;
    QString GetFileFromPath(const QString& path) const;
    // Puts a folder's tree into Files and Paths: "*name" for a folder, "*UP" behind its items.
    void GetFiles(const QString& prefix, const QString& path);
    // The place of the directory in DirList, or -1.
    std::int32_t GetCurrentDirectoryIndex(const QString& path) const;

    // The data port.
    QString BuildPortString() const;
    std::int32_t CalculatePassivePort(const QString& reply) const;
    QString CalculatePassiveAddress(const QString& reply) const;
    // Connects to the port that the reply names on the host of the control connection, never to another
    // host. A reply without a usable port ends the operation.
    void CalcSetPassivePort(const QString& reply);
    void SetPassivePort(std::int32_t port);

    QString ServerAddress;
    QString ServerUserID;
    QString ServerPassword;
    QString ServerDirectory;
    QString LocalDirectory;  // with its trailing delimiter
    QStringList Files;       // a stack: the last element goes first
    QByteArray Buffer;       // control text received and not yet consumed
    std::int32_t SendBufferSize = 2048;
    std::int32_t BytesReceived = 0;  // kept by no flow
    std::int32_t CurrentDirectoryIndex = 0;
    std::int32_t CurrentFileIndex = 0;
    QString DirectoryFileList;
    std::vector<FTPDirectoryClass> DirList;
    bool NT = false;
    QStringList Paths;
    std::int32_t DataPortStart = 30003;
    std::int32_t DataPortEnd = 30100;
    std::int32_t DataPort = 0;
    std::int32_t Timeout = 20000;  // milliseconds without any traffic
    bool UseNameList = false;
    QString ChmodMask;
    QStringConverter::Encoding ServerTextEncoding = QStringConverter::Latin1;
    bool ShowInvisible = false;
    std::int32_t CommandPort = 21;
    std::int32_t PassivePort = 0;
    bool IgnoreCancel = false;
    QString FTPCoreCRLF = QStringLiteral("\r\n");
    std::unique_ptr<FTPStatusClass> FTPStatusInstance;  // nil silences the session
    QString FTPSessionType;
    QString FileDelimiter = QStringLiteral(":");
    std::int32_t FileCount = 0;
    QString DeleteDirectory;
    FTPDataSocket* DataSocket = nullptr;  // owned by the session, as is CommandSocket
    QString CurrentWorkingDirectory;
    QString CurrentFTPStep;
    std::unique_ptr<FTPConnectionTimer> ConnectionTimer;
    FTPCommandSocket* CommandSocket = nullptr;
    QString ID;
    bool PassiveMode = true;
    QString FTPTransferType = QStringLiteral("I");
    std::vector<QFileInfo> FileFolderItems;
    double SessionStartTime = 0;  // microseconds
    std::int32_t RestartByteCount = 0;
    // The text of a SITE or direct command. (`DirectCommand` is the operation.)
    QString DirectCommandText;
    bool FTPS = false;
    // Decides which certificates a TLS logon trusts: the system's own unless set otherwise.
    QSslConfiguration SslConfiguration = QSslConfiguration::defaultConfiguration();

    // For the session's own sockets, engine and step actions.
    Clock& clock() { return m_clock; }
    FTPEngine& engine() { return m_engine; }
    QByteArray encode(const QString& text) const;
    QString decode(const QByteArray& bytes) const;
    // How many times an operation of this session has ended: tells an action that its work ended it.
    int endings() const { return m_endings; }
    void Successful_FTP(const QString& message);
    void ParseDirectoryList(const QString& text);
    // Makes the folder for a server directory in LocalDirectory, and makes it the new LocalDirectory. A walk
    // begins with the folder of ServerDirectory and never leaves it.
    void MakeTopFolder();
    void MakeLocalFolder(const QString& serverPath);
    void LeaveLocalFolder();
    // Deletes a local file if there is one, silently.
    void DeleteLocalFile(const QString& path) const;
    void warn(const QString& message);

private:
    // How an operation begins. Its type selects the step table.
    struct Beginning {
        QStringView type;
        QStringView firstStep;
        QStringView firstCommand;
        QString status;
    };
    bool beginImmediate();
    void enter(const Beginning& beginning);
    void immediate(const Beginning& beginning);
    void connectAndEnter(const Beginning& beginning);
    void openConnection();
    void oneShot(const Beginning& beginning);
    void startTree(const QString& top);
    void closeSockets();
    void reportEnd(const QString& message);
    bool isSendable(const QString& command) const;
    void sendCommand(QStringView command);
    void report(const QString& command, const QString& status);
    QString withoutPassword(QString text) const;
    static bool SuccessfulMessage(const QString& message);

    Clock& m_clock;
    Dialogs& m_dialogs;
    Globals& m_globals;
    FTPEngine m_engine;
    Flows m_boxes;
    QString m_walkRoot;  // the walk makes nothing outside this local folder
    int m_endings = 0;
    QObject m_socketHome;
};
