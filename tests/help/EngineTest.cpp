// The engine: the one window, the defaults, the packed book.
#include <QProcess>

#include "Errors.h"
#include "HelpFiles.h"
#include "ScriptedDialogs.h"
#include "SimClock.h"
#include "UniHelpEngine.h"

namespace {

using namespace std::chrono_literals;

// Writes down what the engine asks of a window.
class RecordingWindow final : public HelpWindow {
public:
    RecordingWindow(QStringList& calls, HelpSettings& settings, bool opens)
        : m_calls(calls), m_settings(settings), m_opens(opens) {
        m_calls += QStringLiteral("made");
    }
    ~RecordingWindow() override { m_calls += QStringLiteral("gone"); }

    Task<bool> CustomizeHelp(HelpSettings settings) override {
        m_settings = settings;
        co_return m_opens;
    }
    void Show() override { m_calls += QStringLiteral("shown"); }
    void OpenPage(const FolderItem& page, const QString&) override {
        m_calls += QStringLiteral("page ") + page.Name();
    }
    void OpenSearch(const QString& text) override { m_calls += QStringLiteral("search ") + text; }
    void setRectangle(const QRect& r) override {
        m_calls += QStringLiteral("at %1 %2 %3 %4").arg(r.x()).arg(r.y()).arg(r.width()).arg(r.height());
    }
    void Close() override {
        m_calls += QStringLiteral("closed");
        Closed();
    }

private:
    QStringList& m_calls;
    HelpSettings& m_settings;
    bool m_opens;
};

class EngineTest : public testing::Test {
protected:
    std::unique_ptr<UniHelpEngine> makeEngine(bool useVirtualVolume = false) {
        return std::make_unique<UniHelpEngine>(
            globals, SpecialFolders{{}, {}, files.outside("tmp"), files.world.path()},
            [this] { return std::make_unique<RecordingWindow>(calls, settings, opens); }, useVirtualVolume);
    }
    QStringList taken() {
        clock.advance(1s);
        return std::exchange(calls, {});
    }

    HelpFiles files;
    SimClock clock;
    ScriptedDialogs dialogs{clock};
    UniHelpGlobals globals{clock, dialogs};
    QStringList calls;
    HelpSettings settings;
    bool opens = true;
};

TEST_F(EngineTest, OneWindowAtATime) {
    const auto engine = makeEngine();
    EXPECT_EQ(engine->HelpFolder, files.HelpFolder);
    engine->Run(engine->HelpFolder.Child(QStringLiteral("VLXUtility.htm")));
    EXPECT_EQ(taken(), (QStringList{"made", "shown", "page VLXUtility.htm"}));
    EXPECT_EQ(settings.HomePage, files.file("VLXUtility.htm"));
    EXPECT_EQ(settings.title, QStringLiteral("VLX Utility Help"));
    engine->Run(QStringLiteral("swr"));
    EXPECT_EQ(taken(), (QStringList{"closed", "made", "gone", "shown", "search swr"}));
    engine->closeWindow();
    EXPECT_EQ(taken(), (QStringList{"closed", "gone"}));
    EXPECT_EQ(clock.pendingWaits(), 0);
}

TEST_F(EngineTest, AutoSetFalseGivesTheRememberedRectangle) {
    const auto engine = makeEngine();
    engine->AutoSet = false;
    globals.UHelpLeft = 33;
    engine->Run(QStringLiteral("x"));
    EXPECT_EQ(taken().last(), QStringLiteral("at 33 80 900 600"));
}

TEST_F(EngineTest, BookThatCannotBeOpenedShowsNoWindow) {
    const auto engine = makeEngine();
    opens = false;
    engine->Run(QStringLiteral("x"));
    EXPECT_EQ(taken(), (QStringList{"made", "closed", "gone"}));
    engine->HelpFolder = FolderItem();
    EXPECT_THROW(engine->Run(QStringLiteral("x")), NilObjectError);
}

TEST_F(EngineTest, PackedBookIsUnpackedIntoATemporaryFolder) {
    files.write(QStringLiteral("VLXUtility.htm"), "home");
    files.write(QStringLiteral("sub/a b.htm"), "below");
    files.write(QStringLiteral("b.qrc"),
                "<RCC><qresource><file>VLXUtility.htm</file><file>sub/a b.htm</file></qresource></RCC>");
    const QString packed = files.outside(QStringLiteral("UniHelpGuide.vv"));
    ASSERT_EQ(QProcess::execute(QStringLiteral(VLX_RCC),
                                {"--binary", "-o", packed, files.file("b.qrc").AbsolutePath()}),
              0);

    {
        const auto engine = makeEngine(true);
        clock.advance(1s);
        EXPECT_EQ(dialogs.shown.size(), 1) << "there is no folder for temporary files yet";
    }
    QDir().mkdir(files.outside(QStringLiteral("tmp")));
    dialogs.shown.clear();
    const auto engine = makeEngine(true);
    EXPECT_EQ(engine->HelpFolder.Name(), QStringLiteral("Help691458"))
        << "the day of the year, then the time";
    for (const auto& [name, text] :
         {std::pair("VLXUtility.htm", "home"), std::pair("sub/a b.htm", "below")}) {
        QFile file(engine->HelpFolder.AbsolutePath() + u'/' + QString::fromLatin1(name));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << name;
        EXPECT_EQ(file.readAll(), QByteArray(text));
    }
    EXPECT_TRUE(dialogs.shown.isEmpty());
}

TEST_F(EngineTest, PackedBookThatIsNoneLeavesNoHelpFolder) {
    const auto engine = makeEngine(true);
    EXPECT_TRUE(engine->HelpFolder.isNil());
    EXPECT_THROW(engine->Run(QStringLiteral("x")), NilObjectError);
}

TEST_F(EngineTest, UnpackingThatFailsIsToldInItsWords) {
    const auto engine = makeEngine();
    files.write(QStringLiteral("a.htm"), "x");
    const FolderItem nowhere(files.outside(QStringLiteral("none/none")));
    const struct {
        FolderItem source, target;
    } Cases[] = {{FolderItem(), nowhere}, {files.file("a.htm"), nowhere}, {files.HelpFolder, nowhere}};
    for (const auto& c : Cases)
        clock.run(engine->VVExtract(c.source, c.target));
    const QString head = QStringLiteral("The Help System encounted a problem.\n");
    const QString copy =
        head + "One or more VirtualVolume files could not be copied to the temporary help folder.";
    EXPECT_EQ(
        dialogs.shown,
        (QStringList{copy, copy,
                     head + "A temporary help folder for extracting the VirtualVolume files could not be "
                            "created."}));
    EXPECT_EQ(dialogs.beeps, 3);
    clock.run(globals.UHViewerError(-6, QStringLiteral("gone")));
    EXPECT_EQ(dialogs.shown.last(), QStringLiteral("The Help System's HTML Viewer encounted a problem.\n"
                                                   "HTMLViewer.Error (-6): gone"));
}

}  // namespace
