#include "UniHelpEngine.h"

#include <QDate>
#include <QResource>
#include <QTime>

#include "Errors.h"

namespace {

const QString FolderNotCreated =
    QStringLiteral("A temporary help folder for extracting the VirtualVolume files could not be created.");
const QString FileNotCopied =
    QStringLiteral("One or more VirtualVolume files could not be copied to the temporary help folder.");

// A packed book: one file that opens as a tree of folders and files for as long as this object lives.
class VirtualVolume {
public:
    explicit VirtualVolume(QString file)
        : m_file(std::move(file)), m_isOpen(QResource::registerResource(m_file, MapRoot)) {}
    VirtualVolume(const VirtualVolume&) = delete;
    VirtualVolume& operator=(const VirtualVolume&) = delete;
    ~VirtualVolume() {
        if (m_isOpen)
            QResource::unregisterResource(m_file, MapRoot);
    }

    bool isOpen() const { return m_isOpen; }
    static FolderItem Root() { return FolderItem(u':' + MapRoot); }

private:
    static inline const QString MapRoot = QStringLiteral("/UniHelpGuide");

    QString m_file;
    bool m_isOpen;
};

// "Help", then day of the year, hour, minute and second without separators.
QString temporaryFolderName(const QDateTime& now) {
    const QTime time = now.time();
    return QStringLiteral("Help%1%2%3%4")
        .arg(now.date().dayOfYear())
        .arg(time.hour())
        .arg(time.minute())
        .arg(time.second());
}

}  // namespace

UniHelpEngine::UniHelpEngine(UniHelpGlobals& globals, SpecialFolders folders, WindowMaker makeWindow,
                             bool useVirtualVolume)
    : UseVirtualVolume(useVirtualVolume),
      m_globals(globals),
      m_folders(std::move(folders)),
      m_makeWindow(std::move(makeWindow)),
      m_dropping(globals.clock, Clock::Microseconds{0}, [this] { m_window.reset(); }),
      m_opening(globals.clock, Clock::Microseconds{0}, [this] { open(); }),
      m_flows(globals.clock, globals.errorHandler()) {
    m_globals.UniHelp = this;
    if (UseVirtualVolume)
        m_flows.start(VVInitialize(QStringLiteral("UniHelpGuide.vv")));
    else
        HelpFolder = FolderItem(m_folders.executable).Child(QStringLiteral("Help"));
}

void UniHelpEngine::Run(const FolderItem& page, const QString& anchor) {
    openWith([page, anchor](HelpWindow& window) { window.OpenPage(page, anchor); });
}

void UniHelpEngine::Run(const QString& text) {
    openWith([text](HelpWindow& window) { window.OpenSearch(text); });
}

void UniHelpEngine::openWith(FirstStep firstStep) {
    if (HelpFolder.isNil())
        throw NilObjectError(QStringLiteral("There is no help folder."));
    m_firstStep = std::move(firstStep);
    m_opening.start(ClockTimer::Mode::Single);
}

void UniHelpEngine::open() {
    m_flows.cancelAll();
    closeWindow();
    m_window = m_makeWindow();
    m_dropping.stop();
    m_window->Closed = [this] { m_dropping.start(ClockTimer::Mode::Single); };
    m_flows.start(showWindow());
}

void UniHelpEngine::closeWindow() {
    if (m_window)
        m_window->Close();
}

Task<> UniHelpEngine::showWindow() {
    bool isOpened = false;
    try {
        isOpened = co_await m_window->CustomizeHelp(settings());
    } catch (...) {
        closeWindow();
        throw;
    }
    if (!isOpened) {
        closeWindow();
        co_return;
    }
    m_window->Show();
    m_firstStep(*m_window);
    if (!AutoSet)
        m_window->setRectangle(
            {m_globals.UHelpLeft, m_globals.UHelpTop, m_globals.UHelpWidth, m_globals.UHelpHeight});
}

HelpSettings UniHelpEngine::settings() const {
    return {.UseFullTextSearch = UseFullTextSearch,
            .ShowSearchHighlights = ShowSearchHighlights,
            .ShowPrintButton = ShowPrintButton,
            .UseVirtualVolume = UseVirtualVolume,
            .IconCategory = IconCategory,
            .IconCategoryOpen = IconCategoryOpen,
            .IconPage = IconPage,
            .FontName = FontName,
            .AltFont = AltFont,
            .FontSize = FontSize,
            .PrintSettings = PrintSettings,
            .HelpFolder = HelpFolder,
            .title = HelpTitle,
            .HomePage = HelpFolder.Child(HomePage)};
}

Task<> UniHelpEngine::VVInitialize(QString name) {
    const FolderItem file = FolderItem(m_folders.executable).Child(name);
    const VirtualVolume volume(file.AbsolutePath());
    if (!volume.isOpen()) {
        closeWindow();
        HelpFolder = FolderItem();
        co_return;
    }
    const FolderItem folder =
        FolderItem(m_folders.temporary).Child(temporaryFolderName(m_globals.clock.wallClock()));
    folder.CreateAsFolder();
    if (!folder.Exists()) {
        co_await m_globals.UHError(FolderNotCreated);
        co_return;
    }
    HelpFolder = folder;
    for (const FolderItem& item : VirtualVolume::Root().Children())
        co_await VVExtract(item, folder.Child(item.Name()));
}

Task<> UniHelpEngine::VVExtract(FolderItem source, FolderItem target) {
    if (!source.Exists()) {
        co_await m_globals.UHError(FileNotCopied);
        co_return;
    }
    if (!source.Directory()) {
        if (!target.Parent().Exists() || !source.CopyFileTo(target.Parent()))
            co_await m_globals.UHError(FileNotCopied);
        co_return;
    }
    target.CreateAsFolder();
    if (!target.Exists()) {
        co_await m_globals.UHError(FolderNotCreated);
        co_return;
    }
    for (const FolderItem& child : source.Children())
        co_await VVExtract(child, target.Child(child.Name()));
}
