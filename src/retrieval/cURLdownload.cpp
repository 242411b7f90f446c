#include "cURLdownload.h"

#include <algorithm>

#include "FTPSessionClass.h"
#include "ImageNames.h"
#include "Text.h"

using namespace std::chrono_literals;

namespace {

const QString Program = QStringLiteral("curl");
const QString FirmwareDirectory = QStringLiteral("/VLX/firmware/");
const QString NotesName = QStringLiteral("vlxfwnotes.rtf");
// How often what curl brings is looked at, and what it must bring in a minute, as with the FTP client.
constexpr auto LookStep = 1s;
constexpr int LooksPerMinute = 60;
constexpr qint64 LeastPerMinute = 1024;
constexpr int MostTries = 3;

// "####    37.2%". Later versions of curl have a "#" in their messages too: "* Connected to host (#0)".
bool isProgressBar(const QString& line) {
    return line.contains(u'#') && !QStringLiteral("*<>").contains(line.front());
}

// Later versions of curl write "Established connection to".
bool tellsConnection(const QString& line) {
    return Text::InStr(line, u"connected") > 0 || Text::InStr(line, u"Established connection") > 0;
}

bool isPage(const QString& listing) {
    return Text::Left(Text::Trim(Text::Left(listing, 1000)), 1) == u"<";
}

}  // namespace

// Ends whatever a run has begun, also when the run is cancelled.
struct cURLdownload::Run {
    explicit Run(cURLdownload& of) : owner(of) { owner.m_panel.setGetRevButton1Enabled(false); }
    Run(const Run&) = delete;
    Run& operator=(const Run&) = delete;
    ~Run() {
        owner.MyShell.Kill();
        owner.m_watch.stop();
        owner.m_files.end();
        owner.m_progress.clear();
        owner.m_panel.setGetRevButton1Enabled(true);
    }

    cURLdownload& owner;
};

cURLdownload::cURLdownload(Platform& platform, Globals& globals, FirmwarePanel& panel, FirmwareFolder& folder,
                           AmplifierQuery& amplifier, FirmwareServer server)
    : m_clock(platform.clock),
      m_globals(globals),
      m_panel(panel),
      m_folder(folder),
      m_amplifier(amplifier),
      m_server(std::move(server)),
      m_files(platform, globals),
      m_progress(platform.clock, globals),
      m_watch(platform.clock, LookStep, [this] { watch(); }) {
    MyShell.DataAvailable = [this] { MyShell_DataAvailable(); };
    MyShell.Completed = [this] { MyShell_Completed(); };
}

Task<> cURLdownload::cURLdownload1_Run() {
    {
        const Run run(*this);
        // Whatever folder the user chooses meanwhile.
        m_runFolder = m_globals.m_FolderPath;
        m_isGivenUp = false;
        strfn.clear();
        m_files.begin(m_runFolder);
        m_globals.SetStatusText(FTPSessionClass::ConnectingText(), false);
        const bool hasListing = co_await getListing();
        if (hasListing)
            co_await copyNewFiles();
    }
    m_globals.SetStatusText(QStringLiteral("Ready"), false);
}

Task<bool> cURLdownload::getListing() {
    gettingDIR = true;
    bConnected = false;
    m_globals.m_Data.clear();
    m_unlogged.clear();
    co_await execute(listingArguments());
    gettingDIR = false;
    if (!m_stopReason.isEmpty()) {
        m_globals.SetStatusText(m_stopReason, false);
    } else if (MyShell.ErrorCode() != 0) {
        if (!MyShell.ErrorText().isEmpty())
            m_globals.SetStatusText(
                QStringLiteral("The program \"curl\" cannot be started: ") + MyShell.ErrorText(), false);
        m_globals.SetStatusText(
            QStringLiteral("Unable to connect to Tessarin server. Error: ") + Text::Str(MyShell.ErrorCode()),
            false);
    } else if (isPage(m_globals.m_Data)) {
        m_globals.SetStatusText(QStringLiteral("The answer from Tessarin is no list of files."), false);
    } else {
        co_return true;
    }
    m_globals.m_Data.clear();
    co_return false;
}

Task<> cURLdownload::copyNewFiles() {
    const QStringList list = co_await ImageNames::inListing(m_clock, std::exchange(m_globals.m_Data, {}));
    if (cURLGetNewVersion(list, ImageNames::Prefix, ImageNames::Extension))
        co_await copyChosenFile();
    else
        m_globals.SetStatusText(
            QStringLiteral("Your folder has the most recent VLX firmware files from Tessarin."), false);
    co_await m_folder.Checklocalfiles();
    if (!m_isGivenUp)
        co_await compareVersions();
}

Task<> cURLdownload::copyChosenFile() {
    if (!m_files.makeFolder()) {
        m_files.tellFailure(strFileName);
        co_return;
    }
    co_await execute(downloadArguments());
    if (!m_stopReason.isEmpty())
        m_globals.SetStatusText(m_stopReason, false);
    co_await keepWhatCame();
}

// curl returns one code for all, that of the last file: the image is judged by what is in it.
Task<> cURLdownload::keepWhatCame() {
    m_files.rename(FirmwareServer::inUrl(strFileName), strFileName);
    bool isWhole = m_files.has(strFileName);
    if (isWhole)
        isWhole = co_await cURLHexVerify();
    std::int32_t count = 0;
    keep(strFileName, isWhole && m_files.hasEndRecord(), count);
    keep(NotesName, MyShell.ErrorCode() == 0 && m_stopReason.isEmpty(), count);
    if (count > 0)
        m_globals.SetStatusText(QStringLiteral("Copied %1 files from Tessarin.").arg(Text::Str(count)),
                                false);
}

void cURLdownload::keep(const QString& name, bool isWhole, std::int32_t& count) {
    if (isWhole && m_files.keep(name))
        ++count;
    else
        m_files.tellFailure(name);
}

Task<> cURLdownload::compareVersions() {
    const bool ok = co_await m_amplifier.Refresh();
    m_panel.setMCUinstalledText(ok ? m_globals.m_strMcuVersion : QStringLiteral("---"));
    if (ok)
        co_await m_folder.CheckNewVersion();
}

bool cURLdownload::cURLGetNewVersion(const QStringList& list, const QString& prefix,
                                     const QString& extension) {
    const QString newer = ImageNames::newerThan(Text::Val(m_folder.hmcuVersion), prefix, extension, list);
    if (newer.isEmpty())
        return false;
    strFileName = newer;
    return true;
}

Task<bool> cURLdownload::cURLHexVerify() {
    return m_files.HexVerify(strFileName);
}

Task<bool> cURLdownload::cURLGetNewHexVersion(QStringList list, QString prefix, std::int32_t&) {
    for (int tries = 0; tries < MostTries; ++tries) {
        if (!cURLGetNewVersion(list, prefix, ImageNames::Extension))
            co_return false;
        const bool isGood = co_await cURLHexVerify();
        if (isGood)
            co_return true;
        co_await m_clock.yield();
    }
    m_files.tellFailure(strFileName);
    co_return false;
}

QStringList cURLdownload::listingArguments() const {
    return {QStringLiteral("-#"), QStringLiteral("-l"), m_server.url(FirmwareDirectory)};
}

QStringList cURLdownload::downloadArguments() const {
    return {QStringLiteral("-#"), QStringLiteral("-v"),
            QStringLiteral("-O"), m_server.url(FirmwareDirectory, strFileName),
            QStringLiteral("-O"), m_server.url(FirmwareDirectory, NotesName)};
}

Task<> cURLdownload::execute(QStringList arguments) {
    m_stopReason.clear();
    m_ended.emplace(m_clock);
    MyShell.Execute(Program, arguments, gettingDIR ? QString() : m_files.path());
    m_looks = 0;
    m_hadCome = 0;
    m_watch.start(ClockTimer::Mode::Repeating);
    co_await m_ended->wait();
    m_watch.stop();
}

void cURLdownload::watch() {
    const qint64 come = gettingDIR ? m_globals.m_Data.size() : m_files.size();
    if (come > (gettingDIR ? FetchedFiles::MaxListing : FetchedFiles::MaxSize))
        stop(gettingDIR ? QStringLiteral("The list of files from Tessarin is too long.")
                        : QStringLiteral("curl was ended: more came than can be wanted."));
    else if (++m_looks % LooksPerMinute == 0 && come - std::exchange(m_hadCome, come) < LeastPerMinute)
        stop(QStringLiteral("curl was ended: next to nothing came for 60 seconds."));
}

bool cURLdownload::giveUp() {
    if (!MyShell.IsRunning())
        return false;
    m_isGivenUp = true;
    stop(QStringLiteral("Copying from Tessarin was given up."));
    return true;
}

void cURLdownload::stop(const QString& reason) {
    m_stopReason = reason;
    MyShell.Kill();
    m_ended->open();
}

void cURLdownload::MyShell_DataAvailable() {
    const QString output = Text::fromLine(MyShell.ReadOutput());
    const QString messages = Text::fromLine(MyShell.ReadMessages());
    if (gettingDIR) {
        takeListing(output);
        m_unlogged += messages;
        handle(wholeLines(m_unlogged));
    } else {
        m_globals.m_Data += output + messages;
        handle(wholeLines(m_globals.m_Data));
    }
}

// The list is the output alone: the progress bar among it would spoil a name.
void cURLdownload::takeListing(const QString& output) {
    m_globals.m_Data += output;
    m_unlogged += output;
    if (m_globals.m_Data.size() > FetchedFiles::MaxListing)
        watch();
}

// Takes all lines off but the last, which may not be whole yet. The progress bar is painted over and over
// behind Returns, and is no line of its own.
QStringList cURLdownload::wholeLines(QString& text) {
    const qsizetype end = std::max(text.lastIndexOf(u'\n'), text.lastIndexOf(u'\r')) + 1;
    QString lines = text.first(end).replace(u'\r', u'\n');
    text.remove(0, end);
    if (text.size() > MaxLine)
        text.clear();
    return lines.split(u'\n', Qt::SkipEmptyParts);
}

void cURLdownload::handle(const QStringList& lines) {
    for (const QString& line : lines)
        handleLine(line);
    if (!lines.isEmpty())
        m_panel.moveStatusFieldToEnd();
}

void cURLdownload::handleLine(const QString& line) {
    if (isProgressBar(line)) {
        showProgress(line);
        return;
    }
    m_globals.SetStatusText(line, true);
    if (!bConnected && tellsConnection(line)) {
        bConnected = true;
        m_globals.SetStatusText(QStringLiteral("Connected to Tessarin server."), false);
        m_globals.SetStatusText(QStringLiteral("Copying files to \"%1\"").arg(m_runFolder), false);
    }
    if (Text::InStr(line, u"BINARY mode data") > 0) {
        strfn = Text::Trim(Text::NthField(line, u" ", 9));
        if (!strfn.isEmpty())
            m_globals.SetStatusText(QStringLiteral("Copied \"%1\" from Tessarin").arg(strfn), false);
    }
}

void cURLdownload::showProgress(const QString& line) {
    const QString percentage = Text::Trim(line).section(u' ', -1).section(u'#', -1);
    if (!gettingDIR && percentage.endsWith(u'%'))
        m_progress.show(strfn.isEmpty() ? strFileName : strfn, percentage);
}
