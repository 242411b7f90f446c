// An asynchronous FTP client: one control connection, one data connection, one inactivity timer.
#pragma once

#include <cstdint>
#include <memory>

#include <QFileInfo>
#include <QObject>
#include <QSslConfiguration>
#include <QString>
#include <QStringConverter>

#include "Clock.h"
#include "Dialogs.h"
#include "Flows.h"
#include "FTPCommandSocket.h"
#include "FTPConnectionTimer.h"
#include "FTPDataSocket.h"
#include "FTPEngine.h"
#include "FTPParsedDirListLineClass.h"
#include "FTPReplyCount.h"
#include "FTPSessionState.h"
#include "FTPSocketOwners.h"
#include "FTPStatusClass.h"
#include "FTPStepHost.h"
#include "Globals.h"

// Every operation is a chain of named steps that the server's replies drive; a caller starts one and learns
// its end through FTPStatusInstance. Nothing blocks. Behind the end nothing more happens: replies that come
// late are shown and no more, and the next operation takes those off that are still owed.
//
// There are two families. Immediate operations (GetSingleFile, ChangeDir, ...) run on the session that Logon
// opened and leave it open. One-shot operations (StartGetFile, ...) connect, log on, work through a loop,
// quit and close. One operation runs at a time: starting another drops the one that runs.
//
// Not to be destroyed from inside a report; destroying it at any other moment drops the connections and
// closes the files, and a partial download stays where it is.
//
// Its fields are those of FTPSessionState.
class FTPSessionClass final : public FTPSessionState,
                              public FTPStepHost,
                              public FTPCommandOwner,
                              public FTPDataOwner,
                              public FTPTimerOwner {
public:
    // Longest line of a reply, and most that a server may say to one command or unasked, in bytes.
    static constexpr qsizetype MaxReplyLine = 64 * 1024;
    static constexpr qsizetype MaxReplies = 64 * 1024;
    // How long the client waits before it asks once more whether a data connection has ended.
    static constexpr Clock::Milliseconds AskPause{250};

    FTPSessionClass(Clock& clock, Dialogs& dialogs, Globals& globals, const QString& id = QString());
    ~FTPSessionClass();

    // Setting up: plain stores.
    void SetLoginInfo(const QString& address, const QString& user, const QString& password);
    void AddFileName(const QString& name) { Files += name; }
    void AddFile(const QFileInfo& item) { FileFolderItems.push_back(item); }
    void DeleteFileName(const QString& name);
    void SetLocalDirectoryPathName(const QString& path) { LocalDirectory = path; }
    void SetServerDirectoryPathName(const QString& path) { ServerDirectory = path; }
    QString GetLocalDirectoryPathName() const { return LocalDirectory; }
    QString GetServerDirectoryPathName() const { return ServerDirectory; }
    void SetLocalFolderItem(const QFileInfo& item);
    void SetTimeoutSeconds(std::int32_t seconds);
    // False changes nothing: reporting cannot be turned off this way.
    void SetStatusReporting(bool isOn);
    void SetServerEncoding(QStringConverter::Encoding encoding) { ServerTextEncoding = encoding; }

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
    void EndFTPSession(const QString& message) override;
    // The same, but closes both connections in every case.
    void CancelFTPSession(const QString& message) override;
    // Whether the session can take a command; if not, it has been ended with the reason.
    bool SocketsActive();
    QString GetCurrentFTPStep() const { return CurrentFTPStep; }
    QString GetFTPSessionType() const { return FTPSessionType; }
    // Seconds since construction.
    double CalcSessionTime() const;

    // The only way in which a step changes. The command "NOOP" sends nothing: a made-up reply 200 enters the
    // new step at once. "FORCENOOP" sends a real NOOP. False for a command that cannot be sent, which has
    // ended the operation.
    bool NextFTPStep(const QString& step, const QString& command, const QString& status) override;
    // Handles the first line of Buffer.
    void ParseCommandBuffer();
    // Hands `code` to the present step without a line.
    void ParseCommandBuffer(std::int32_t code);
    void ResetConnectionTimer();
    void ExecuteDirectCommandSteps(const QString& line, std::int32_t code);
    FTPParsedDirListLineClass ParseDirListLine(const QString& line) const { return ::ParseDirListLine(line); }

    // Puts a folder's tree into Files and Paths; a path where nothing is ends the operation.
    void GetFiles(const QString& prefix, const QString& path);

    std::unique_ptr<FTPStatusClass> FTPStatusInstance;  // nil silences the session
    std::unique_ptr<FTPConnectionTimer> ConnectionTimer;
    // Decides which certificates a TLS logon trusts: the system's own unless set otherwise.
    QSslConfiguration SslConfiguration = QSslConfiguration::defaultConfiguration();

private:
    // FTPStepHost
    void Succeed(const QString& message) override;
    void AwaitData(bool asks, const QString& status) override;
    void Tell(const QString& status) override;
    void StopConnectionTimer() override { ConnectionTimer->Off(); }
    void Warn(const QString& message) override;
    // FTPCommandOwner
    void RepliesCame() override;
    void ControlFailed(const QString& reason) override;
    void ControlSecured() override { m_engine.onSecured(); }
    // FTPDataOwner
    FTPTransferKind Transfer() const override;
    QString LocalPath(const QString& name) const override;
    std::int32_t SendSize() const override { return SendBufferSize; }
    std::int32_t RestartOffset() const override { return RestartByteCount; }
    void SetRestartOffset(std::int32_t offset) override { RestartByteCount = offset; }
    void Progress(std::int32_t count) override;
    void DataMoved() override;
    QString TextOf(const QByteArray& bytes) const override;
    void TakeListing(const QString& listing) override { DirectoryFileList = listing; }
    bool TakeListingLine(const QString& line) override;
    void DataEnded() override;
    // FTPTimerOwner
    void TimedOut() override;

    bool beginImmediate();
    void enter(const FTPOperation& operation);
    void immediate(const FTPOperation& operation);
    void connectAndEnter(const FTPOperation& operation);
    void oneShot(const FTPOperation& operation);
    void forsakeReplies(bool isAbort);
    void openConnection();
    bool startTree(const QString& top);
    void closeSockets();
    void finish(const QString& message);
    void askServer();
    void reportEnd(const QString& message);
    QString faultOf(const QString& command) const;
    void handleReplies();
    void catchUpLater();
    QByteArray takeLine();
    void dropReplies();
    void endFlood(const QString& message);
    void take(const QString& line);
    void handle(const QString& line);
    void pass(const QString& line);
    void show(const QString& line);
    static std::int32_t codeOf(const QString& line);
    void sendCommand(const QString& command);
    void report(const QString& command, const QString& status);
    QString withoutPassword(QString text) const;
    static bool SuccessfulMessage(const QString& message);

    // What an end of an operation leaves behind.
    enum class Over { No, Well, Badly };

    Clock& m_clock;
    Dialogs& m_dialogs;
    Globals& m_globals;
    FTPEngine m_engine;
    Flows m_boxes;
    FTPReplyCount m_replies;
    ClockTimer m_pause;
    Over m_over = Over::No;
    bool m_isAwaitingData = false;
    bool m_asks = false;
    QString m_askStatus;
    bool m_isCatchingUp = false;
    QObject m_socketHome;
};
