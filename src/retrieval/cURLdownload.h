// Copies the newest firmware image and its release notes from the maker's server with the program curl: for
// owners whose network lets it through where it stops our own client.
#pragma once

#include <cstdint>
#include <optional>
#include <utility>

#include <QString>
#include <QStringList>

#include "AmplifierQuery.h"
#include "CopyProgress.h"
#include "FetchedFiles.h"
#include "FirmwareFolder.h"
#include "FirmwareServer.h"
#include "Gate.h"
#include "Shell.h"

// One run at a time. A run that is cancelled ends curl and leaves nothing unfinished behind.
class cURLdownload {
public:
    // Longest line of curl's own, in characters.
    static constexpr qsizetype MaxLine = 64 * 1024;

    cURLdownload(Platform& platform, Globals& globals, FirmwarePanel& panel, FirmwareFolder& folder,
                 AmplifierQuery& amplifier, FirmwareServer server);
    cURLdownload(const cURLdownload&) = delete;
    cURLdownload& operator=(const cURLdownload&) = delete;

    // The whole run, with the button disabled: a listing, and the downloads if there is something new.
    Task<> cURLdownload1_Run();
    // Ends a run that still talks to the server. False when there is none.
    bool giveUp();

    // Whether `list` has an image newer than the local one: that is strFileName then.
    bool cURLGetNewVersion(const QStringList& list, const QString& prefix, const QString& extension);
    // Verifies the image last fetched; deletes it if it is damaged.
    Task<bool> cURLHexVerify();
    // Chooses and verifies what has been fetched, three times at most. `count` is not touched.
    Task<bool> cURLGetNewHexVersion(QStringList list, QString prefix, std::int32_t& count);

    void MyShell_DataAvailable();
    void MyShell_Completed() { m_ended->open(); }

    QString strFileName;      // chosen on the server last
    bool gettingDIR = false;  // the listing runs
    bool bConnected = false;  // the connection has been told
    Shell MyShell;

private:
    struct Run;

    Task<bool> getListing();
    Task<> copyNewFiles();
    Task<> copyChosenFile();
    Task<> keepWhatCame();
    void keep(const QString& name, bool isWhole, std::int32_t& count);
    Task<> compareVersions();
    QStringList listingArguments() const;
    QStringList downloadArguments() const;
    Task<> execute(QStringList arguments);
    void watch();
    void stop(const QString& reason);
    void takeListing(const QString& output);
    static QStringList wholeLines(QString& text);
    void handle(const QStringList& lines);
    void handleLine(const QString& line);
    void showProgress(const QString& line);

    Clock& m_clock;
    Globals& m_globals;
    FirmwarePanel& m_panel;
    FirmwareFolder& m_folder;
    AmplifierQuery& m_amplifier;
    FirmwareServer m_server;
    FetchedFiles m_files;
    CopyProgress m_progress;
    ClockTimer m_watch;
    int m_looks = 0;              // since curl began
    qint64 m_hadCome = 0;         // bytes, a minute ago
    std::optional<Gate> m_ended;  // opens when curl has ended
    QString m_runFolder;          // the firmware folder when the run began
    QString m_unlogged;           // of the listing: the line that is not yet whole
    QString strfn;                // the file name last seen in curl's messages
    bool m_isGivenUp = false;
    QString m_stopReason;  // why curl was ended; empty when it ended by itself
};
