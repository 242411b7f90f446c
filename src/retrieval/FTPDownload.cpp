#include "FTPDownload.h"

#include "ImageNames.h"
#include "Text.h"

using namespace std::chrono_literals;

namespace {

const QString FirmwareDirectory = QStringLiteral("/VLX/firmware");
const QString NotesName = QStringLiteral("vlxfwnotes.rtf");
constexpr std::int32_t TimeoutSeconds = 60;
constexpr int MostTries = 3;
// Servers answer QUIT at once; one that does not is left.
constexpr auto LogoffLimit = 5s;
const QString NoListing = QStringLiteral("ERROR");

}  // namespace

// Ends whatever a run has begun, also when the run is cancelled.
struct FTPDownload::Run {
    explicit Run(FTPDownload& of) : owner(of) {}
    Run(const Run&) = delete;
    Run& operator=(const Run&) = delete;
    ~Run() {
        owner.dropSession();
        owner.m_files.end();
        owner.m_progress.clear();
        owner.m_panel.setGetRevButton1Enabled(true);
    }

    FTPDownload& owner;
};

FTPDownload::FTPDownload(Platform& platform, Globals& globals, FirmwarePanel& panel, FirmwareFolder& folder,
                         AmplifierQuery& amplifier, FirmwareServer server)
    : m_clock(platform.clock),
      m_dialogs(platform.dialogs),
      m_globals(globals),
      m_panel(panel),
      m_folder(folder),
      m_amplifier(amplifier),
      m_server(std::move(server)),
      m_files(platform, globals),
      m_progress(platform.clock, globals),
      m_excess(platform.clock, 0s, [this] {
          Session->CancelFTPSession(QStringLiteral("Error: The server sends more than can be wanted."));
      }) {}

Task<> FTPDownload::FTPDownload1_Run() {
    const Run run(*this);
    m_hasFailed = false;
    m_isGivenUp = false;
    if (Text::InStr(m_globals.m_FolderPath, u"M7FT") > 0)
        co_await refuseLiveSyncFolder();
    else
        co_await copyFrom(m_globals.m_FolderPath);
    if (m_isGivenUp)
        m_globals.SetStatusText(QStringLiteral("Copying from Tessarin was given up."), false);
}

Task<> FTPDownload::refuseLiveSyncFolder() {
    const QString refusal = QStringLiteral("The VLX Utility cannot copy files into a Live Sync folder.");
    const QString advice = QStringLiteral("Change to a folder that does not have \"M7FT\" in its path.");
    m_dialogs.Beep();
    co_await m_dialogs.MsgBox(refusal + u' ' + advice);
    m_globals.SetStatusText(refusal, false);
    m_globals.SetStatusText(advice, false);
}

Task<> FTPDownload::copyFrom(QString folder) {
    // Whatever folder the user chooses meanwhile.
    m_runFolder = std::move(folder);
    m_globals.FTPFile.clear();
    m_files.begin(m_runFolder);
    QString listing;
    const QString failure = co_await reachFirmware(listing);
    if (!failure.isEmpty()) {
        tellReason();
        dropSession();
        if (!m_isGivenUp)
            co_await m_dialogs.MsgBox(failure);
        co_return;
    }
    QStringList list = co_await ImageNames::inListing(m_clock, std::move(listing));
    co_await copyNewFiles(std::move(list));
    FTPLogoff();
    co_await m_folder.Checklocalfiles();
    if (m_isGivenUp)
        co_return;
    co_await compareVersions();
    co_await loggedOff();
}

// The text to tell when the server's list of files cannot be had.
Task<QString> FTPDownload::reachFirmware(QString& listing) {
    const bool isLoggedOn = co_await FTPLogon();
    if (!isLoggedOn)
        co_return QStringLiteral("Logon to Tessarin FTP server failed");
    const bool isThere = co_await FTPChangeDir(FirmwareDirectory);
    if (!isThere)
        co_return QStringLiteral("Could not find /VLX/firmware directory on Tessarin server");
    listing = co_await FTPGetDirectory();
    if (listing == NoListing)
        co_return QStringLiteral("Error getting directory listing from ftp server.");
    co_return QString();
}

Task<> FTPDownload::copyNewFiles(QStringList list) {
    std::int32_t count = 0;
    co_await FTPGetNewHexVersion(std::move(list), ImageNames::Prefix, count);
    if (count > 0) {
        co_await copyNotes(count);
        m_globals.SetStatusText(
            QStringLiteral("Copied %1 files from Tessarin to \"%2\"").arg(Text::Str(count), m_runFolder),
            false);
    } else if (!m_hasFailed) {
        m_globals.SetStatusText(
            QStringLiteral("Your folder has the most recent VLX firmware files from Tessarin."), false);
    }
}

Task<> FTPDownload::copyNotes(std::int32_t& count) {
    const bool isFetched = co_await FTPGetFile(NotesName);
    if (isFetched) {
        ++count;
        keep(NotesName, count);
    }
}

Task<> FTPDownload::compareVersions() {
    const bool ok = co_await m_amplifier.Refresh();
    if (m_globals.isMain())
        m_globals.SetStatusText(m_amplifier.mainText(), false);
    if (!ok)
        co_return;
    m_panel.setMCUinstalledText(m_globals.m_strMcuVersion);
    co_await m_folder.CheckNewVersion();
}

Task<> FTPDownload::loggedOff() {
    m_panel.setGetRevButton1Enabled(true);
    ClockTimer limit(m_clock, LogoffLimit, [this] { m_ended->open(); });
    limit.start(ClockTimer::Mode::Single);
    co_await m_ended->wait();
}

bool FTPDownload::giveUp() {
    if (!m_isAtWork)
        return false;
    m_isAtWork = false;
    m_isGivenUp = true;
    Session->CancelFTPSession(QStringLiteral("Given up."));
    return true;
}

void FTPDownload::dropSession() {
    m_isAtWork = false;
    m_excess.stop();
    m_status = nullptr;
    Session.reset();
}

Task<bool> FTPDownload::FTPLogon() {
    Session = std::make_unique<FTPSessionClass>(m_clock, m_dialogs, m_globals);
    Session->SetLoginInfo(m_server.host, m_server.user, m_server.password);
    Session->CommandPort = m_server.port;
    auto status = std::make_unique<RetrievalStatus>(
        *Session, m_globals,
        RetrievalStatus::Receiver{[this] { m_ended->open(); },
                                  [this](auto count, auto& done) { show(count, done); }});
    m_status = status.get();
    Session->FTPStatusInstance = std::move(status);
    Session->SetTimeoutSeconds(TimeoutSeconds);
    m_isAtWork = true;
    begin();
    Session->Logon();
    return succeeded();
}

Task<bool> FTPDownload::FTPChangeDir(const QString& path) {
    Session->SetServerDirectoryPathName(path);
    begin();
    Session->ChangeDir();
    return succeeded();
}

Task<QString> FTPDownload::FTPGetDirectory() {
    begin();
    Session->UseNameList = true;
    Session->GetDirList();
    const bool ok = co_await succeeded();
    co_return ok ? Session->DirectoryFileList : NoListing;
}

Task<bool> FTPDownload::FTPGetFile(QString name) {
    begin();
    m_globals.FTPFile = name;
    bool ok = m_files.makeFolder();
    if (ok) {
        Session->SetLocalDirectoryPathName(m_files.path());
        Session->AddFileName(name);
        Session->GetSingleFile();
        ok = co_await succeeded();
    } else {
        m_status->lastError = cannotWrite();
    }
    m_progress.clear();
    if (!ok)
        tellFailure(name);
    co_return ok;
}

void FTPDownload::FTPLogoff() {
    m_isAtWork = false;
    begin();
    Session->Logoff();
}

Task<bool> FTPDownload::FTPGetNewVersion(QStringList list, QString prefix, QString extension,
                                         std::int32_t& count) {
    const double baseline = Text::equal(prefix, ImageNames::Prefix) ? Text::Val(m_folder.hmcuVersion) : 0;
    const QString newer = ImageNames::newerThan(baseline, prefix, extension, list);
    if (newer.isEmpty())
        co_return false;
    strFileName = newer;
    const bool ok = co_await FTPGetFile(strFileName);
    count += ok ? 1 : 0;
    co_return ok;
}

Task<bool> FTPDownload::FTPHexVerify() {
    return m_files.HexVerify(strFileName);
}

// `count` counts each attempt, a damaged one too.
Task<bool> FTPDownload::FTPGetNewHexVersion(QStringList list, QString prefix, std::int32_t& count) {
    for (int tries = 0; tries < MostTries; ++tries) {
        const bool isFetched = co_await FTPGetNewVersion(list, prefix, ImageNames::Extension, count);
        if (!isFetched)
            co_return true;
        const bool isGood = co_await FTPHexVerify();
        if (isGood) {
            keep(strFileName, count);
            co_return true;
        }
        co_await m_clock.yield();
    }
    tellFailure(strFileName);
    co_return true;
}

// A file that has come and cannot get its place does not count.
void FTPDownload::keep(const QString& name, std::int32_t& count) {
    if (m_files.keep(name))
        return;
    --count;
    m_status->lastError = cannotWrite();
    tellFailure(name);
}

QString FTPDownload::cannotWrite() const {
    return QStringLiteral("Cannot write into the folder \"%1\".").arg(m_runFolder);
}

void FTPDownload::begin() {
    m_globals.FTPDone = false;
    m_globals.FTPError = false;
    m_ended.emplace(m_clock);
    m_status->lastError.clear();
}

Task<bool> FTPDownload::succeeded() {
    co_await m_ended->wait();
    const bool isTooMuch = m_excess.isOn();
    m_excess.stop();
    co_return !m_globals.FTPError && !isTooMuch;
}

void FTPDownload::tellFailure(const QString& name) {
    m_hasFailed = true;
    if (m_isGivenUp)
        return;
    m_files.tellFailure(name);
    tellReason();
}

// The trace has told it already.
void FTPDownload::tellReason() {
    if (!m_globals.m_Verbose && !m_isGivenUp && !m_status->lastError.isEmpty())
        m_globals.SetStatusText(m_status->lastError, false);
}

void FTPDownload::show(std::int32_t count, const QString& done) {
    const bool isListing = m_globals.FTPFile.isEmpty();
    if (count > (isListing ? FetchedFiles::MaxListing : FetchedFiles::MaxSize))
        m_excess.start(ClockTimer::Mode::Single);
    if (!isListing)
        m_progress.show(m_globals.FTPFile, done);
}
