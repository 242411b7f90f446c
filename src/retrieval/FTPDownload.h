// Copies the newest firmware image and its release notes from the maker's server with the FTP client.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>

#include <QString>
#include <QStringList>

#include "AmplifierQuery.h"
#include "CopyProgress.h"
#include "FetchedFiles.h"
#include "FirmwareFolder.h"
#include "FirmwareServer.h"
#include "FTPSessionClass.h"
#include "Gate.h"
#include "RetrievalStatus.h"

// One run at a time. A run that is cancelled closes its connections and leaves nothing unfinished behind.
class FTPDownload {
public:
    FTPDownload(Platform& platform, Globals& globals, FirmwarePanel& panel, FirmwareFolder& folder,
                AmplifierQuery& amplifier, FirmwareServer server);
    FTPDownload(const FTPDownload&) = delete;
    FTPDownload& operator=(const FTPDownload&) = delete;

    // The whole run, from the logon to the comparison of versions; enables the button at its end.
    Task<> FTPDownload1_Run();
    // Breaks off a run that still talks to the server. False when there is none.
    bool giveUp();

    // Each ends with the operation's success or error; true, or a text, on success.
    Task<bool> FTPLogon();
    Task<bool> FTPChangeDir(const QString& path);
    Task<QString> FTPGetDirectory();
    // Into the folder of files in work.
    Task<bool> FTPGetFile(QString name);
    // Does not wait for the server's answer.
    void FTPLogoff();

    // Fetches the newest image of `list` if it is newer than the local one. `count` grows with each that
    // came.
    Task<bool> FTPGetNewVersion(QStringList list, QString prefix, QString extension, std::int32_t& count);
    // Verifies the image last fetched; deletes it if it is damaged.
    Task<bool> FTPHexVerify();
    // Fetches and verifies, three times at most, and gives a good image its place in the firmware folder.
    Task<bool> FTPGetNewHexVersion(QStringList list, QString prefix, std::int32_t& count);

    std::unique_ptr<FTPSessionClass> Session;  // of the current run
    QString strFileName;                       // chosen on the server last

private:
    struct Run;

    Task<> refuseLiveSyncFolder();
    Task<> copyFrom(QString folder);
    Task<QString> reachFirmware(QString& listing);
    Task<> copyNewFiles(QStringList list);
    Task<> copyNotes(std::int32_t& count);
    Task<> compareVersions();
    Task<> loggedOff();
    void dropSession();
    void begin();
    Task<bool> succeeded();
    void keep(const QString& name, std::int32_t& count);
    void tellFailure(const QString& name);
    void tellReason();
    QString cannotWrite() const;
    void show(std::int32_t count, const QString& done);

    Clock& m_clock;
    Dialogs& m_dialogs;
    Globals& m_globals;
    FirmwarePanel& m_panel;
    FirmwareFolder& m_folder;
    AmplifierQuery& m_amplifier;
    FirmwareServer m_server;
    FetchedFiles m_files;
    CopyProgress m_progress;
    RetrievalStatus* m_status = nullptr;
    // On when more has come than is wanted: the transfer is still on the call stack then.
    ClockTimer m_excess;
    std::optional<Gate> m_ended;  // opens when the operation under way has ended
    QString m_runFolder;          // the firmware folder when the run began
    bool m_hasFailed = false;     // a file that should have come has not
    bool m_isAtWork = false;      // with the server
    bool m_isGivenUp = false;
};
