// Figures of the help viewer, each beside what it must reach. Manuals of the distribution serve as a book.
#include <cstdio>

#include <QAbstractButton>
#include <QApplication>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QProcess>
#include <QTemporaryDir>
#include <QTimer>
#include <QTreeWidget>

#include "HelpSearch.h"
#include "HTMLViewerPlugin.h"
#include "LoopGap.h"
#include "QtDialogs.h"
#include "SystemClock.h"
#include "UniHelpEngine.h"
#include "UniHelpViewer.h"

namespace {

constexpr int Rounds = 5;
const QString Word = QStringLiteral("zeroblob");

bool report(const char* what, double value, const char* unit, double limit) {
    const bool isReached = value <= limit;
    std::printf("%-66s %9.3f %s, at most %9.3f  %s\n", what, value, unit, limit, isReached ? "PASS" : "FAIL");
    return isReached;
}

double milliseconds(const QElapsedTimer& timer) {
    return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

void write(const QString& path, const QByteArray& contents) {
    QFile file(path);
    if (file.open(QIODevice::WriteOnly))
        file.write(contents);
}

// The pages of the distribution's manuals in a help folder, its contents made of their names.
class ForeignBook {
public:
    ForeignBook() {
        QDir().mkpath(HelpFolder.AbsolutePath());
        for (const char* manual : {"/usr/share/doc/sqlite3", "/usr/share/doc/gnuplot/htmldocs"})
            copyPages(QString::fromLatin1(manual));
        write(HelpFolder.AbsolutePath() + QStringLiteral("/uhtoc.xml"),
              "<helpbook>" + m_rows + "</helpbook>");
        write(HelpFolder.AbsolutePath() + QStringLiteral("/uhindex.xml"), "<helpindex/>");
    }

    QTemporaryDir world;
    FolderItem HelpFolder{world.filePath(QStringLiteral("Help"))};
    QStringList pages;
    qint64 bytes = 0;

private:
    void copyPages(const QString& manual) {
        QDirIterator files(manual, {QStringLiteral("*.html")}, QDir::Files, QDirIterator::Subdirectories);
        while (files.hasNext()) {
            const QString source = files.next();
            // A number instead of the name: a page that matches in its title is not read.
            const QString name = QStringLiteral("p%1.html").arg(pages.size());
            const QString target = HelpFolder.AbsolutePath() + u'/' + name;
            QFile::copy(source, target);
            bytes += QFileInfo(target).size();
            pages += target;
            m_rows += QStringLiteral("<page name='%1' source='%1'/>").arg(name).toLatin1();
        }
    }

    QByteArray m_rows;
};

double grepMilliseconds(const ForeignBook& book) {
    QElapsedTimer timer;
    timer.start();
    QProcess grep;
    grep.setStandardOutputFile(QProcess::nullDevice());
    grep.start(QStringLiteral("grep"), {QStringLiteral("-ril"), Word, book.HelpFolder.AbsolutePath()});
    grep.waitForFinished();
    return milliseconds(timer);
}

bool benchSearch() {
    const ForeignBook book;
    if (book.pages.isEmpty()) {
        std::printf("search: sqlite3-doc and gnuplot-doc are not installed, nothing to search\n");
        return true;
    }
    const XmlDocument toc = XmlDocument::LoadXml(book.HelpFolder.Child(QStringLiteral("uhtoc.xml")));
    SystemClock clock;
    double best = 1e9;
    double grep = 1e9;
    Clock::Microseconds gap{0};
    int found = 0;
    for (int i = 0; i < Rounds; ++i) {
        grep = std::min(grep, grepMilliseconds(book));
        found = 0;
        QElapsedTimer timer;
        timer.start();
        const auto longest = longestGap([&] {
            return SearchTOC({clock, toc.DocumentElement(), book.HelpFolder, true}, Word,
                             [&found](const SearchRow&) { ++found; });
        });
        best = std::min(best, milliseconds(timer));
        gap = std::max(gap, longest);
    }
    std::printf("%lld pages, %.1f MB, \"%s\" on %d of them\n", static_cast<long long>(book.pages.size()),
                static_cast<double>(book.bytes) / 1e6, qPrintable(Word), found);
    const bool isFast = report("search of a word, all pages read; grep -ril times 5", best, "ms", 5 * grep);
    const bool isAlive =
        report("longest gap of the event loop in it", static_cast<double>(gap.count()) / 1000, "ms", 50);
    return isFast && isAlive;
}

class SilentView final : public HTMLViewer {
public:
    explicit SilentView(QWidget* parent) : m_control(new QWidget(parent)) {}
    ~SilentView() override { delete m_control; }
    QWidget* control() override { return m_control; }
    void LoadPage(const FolderItem& /*file*/, const QString& /*anchor*/) override {}
    void LoadPage(const QString& /*html*/, const FolderItem& /*base*/) override {}

private:
    QWidget* m_control;
};

class SilentLibrary final : public HTMLViewerLibrary {
public:
    bool isAvailable() override { return true; }
    std::unique_ptr<HTMLViewer> make(const FolderItem& /*helpFolder*/, QWidget* parent) override {
        return std::make_unique<SilentView>(parent);
    }
};

// Tells when a page has come.
class TimedView final : public HTMLViewer {
public:
    TimedView(std::unique_ptr<HTMLViewer> shown, std::function<void()> came)
        : m_shown(std::move(shown)), m_came(std::move(came)) {
        m_shown->CancelLoad = [this](const QString& url) { return CancelLoad(url); };
        m_shown->StatusChanged = [this](const QString& text) { StatusChanged(text); };
        m_shown->Error = [this](int code, const QString& text) { Error(code, text); };
        m_shown->DocumentComplete = [this](const QString& url) {
            DocumentComplete(url);
            m_came();
        };
    }
    QWidget* control() override { return m_shown->control(); }
    void LoadPage(const FolderItem& file, const QString& anchor) override { m_shown->LoadPage(file, anchor); }
    void LoadPage(const QString& html, const FolderItem& base) override { m_shown->LoadPage(html, base); }

private:
    std::unique_ptr<HTMLViewer> m_shown;
    std::function<void()> m_came;
};

class TimedLibrary final : public HTMLViewerLibrary {
public:
    bool isAvailable() override { return m_plugin.isAvailable(); }
    std::unique_ptr<HTMLViewer> make(const FolderItem& helpFolder, QWidget* parent) override {
        return std::make_unique<TimedView>(m_plugin.make(helpFolder, parent), came);
    }

    std::function<void()> came;

private:
    HTMLViewerPlugin m_plugin;
};

// A help system of its own on the real clock.
struct HelpSystem {
    HelpSystem(HTMLViewerLibrary& library, const QString& program)
        : engine(globals, {{}, {}, QDir::tempPath(), program},
                 [this, &library] { return std::make_unique<UniHelpViewer>(globals, library); }) {}

    SystemClock clock;
    QtDialogs dialogs{clock};
    UniHelpGlobals globals{clock, dialogs};
    UniHelpEngine engine;
};

void turnUntil(const std::function<bool()>& condition) {
    QElapsedTimer time;
    time.start();
    while (!condition() && time.elapsed() < 20000) {
        QEventLoop loop;
        QTimer::singleShot(1, &loop, &QEventLoop::quit);
        loop.exec();
    }
}

bool benchContents() {
    const QTemporaryDir world;
    QDir().mkpath(world.filePath(QStringLiteral("Help")));
    QByteArray rows;
    for (int chapter = 0; chapter < 100; ++chapter) {
        rows += "<chapter name='Chapter'>";
        for (int page = 0; page < 100; ++page)
            rows += "<page name='A page of it' source='none.htm'/>";
        rows += "</chapter>";
    }
    write(world.filePath(QStringLiteral("Help/uhtoc.xml")), "<helpbook>" + rows + "</helpbook>");
    write(world.filePath(QStringLiteral("Help/uhindex.xml")), "<helpindex/>");
    SilentLibrary library;
    HelpSystem help(library, world.path());
    help.engine.Run(FolderItem());
    QWidget* window = nullptr;
    turnUntil([&window] {
        for (QWidget* widget : QApplication::topLevelWidgets())
            if (widget->objectName() == QStringLiteral("UniHelpViewer") && widget->isVisible())
                window = widget;
        return window != nullptr;
    });
    if (!window)
        return false;
    QElapsedTimer timer;
    timer.start();
    window->findChild<QAbstractButton*>(QStringLiteral("BtnExpand"))->click();
    window->repaint();
    return report("contents of 10,000 pages in 100 chapters expanded whole", milliseconds(timer), "ms", 500);
}

// From the wish for help to the page.
double openingTime(HelpSystem& help, TimedLibrary& library) {
    bool isShown = false;
    library.came = [&isShown] { isShown = true; };
    QElapsedTimer timer;
    timer.start();
    help.engine.Run(help.engine.HelpFolder.Child(help.engine.HomePage));
    turnUntil([&isShown] { return isShown; });
    return milliseconds(timer);
}

bool benchOpening() {
    TimedLibrary library;
    if (!library.isAvailable()) {
        std::printf("opening help: the page view is not installed, nothing to measure\n");
        return true;
    }
    HelpSystem help(library, QApplication::applicationDirPath());
    const bool isFirstFast =
        report("help opened for the first time, to the page", openingTime(help, library), "ms", 1500);
    help.engine.closeWindow();
    const bool isSecondFast = report("the second time", openingTime(help, library), "ms", 300);
    return isFirstFast && isSecondFast;
}

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // The superuser, as whom the benchmark may run in a container, has no sandbox.
    qputenv("QTWEBENGINE_DISABLE_SANDBOX", "1");
    const QApplication application(argc, argv);
    const bool isSearchFast = benchSearch();
    const bool isContentsFast = benchContents();
    const bool isOpeningFast = benchOpening();
    return isSearchFast && isContentsFast && isOpeningFast ? 0 : 1;
}
