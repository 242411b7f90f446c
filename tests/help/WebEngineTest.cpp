// The help window on the real page view.
#include <fcntl.h>
#include <sys/stat.h>

#include <functional>

#include <QElapsedTimer>
#include <QEventLoop>
#include <QPointer>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>
#include <QWebEngineHistory>
#include <QWebEngineProfile>
#include <QWebEngineView>

#include "HTMLViewerPlugin.h"
#include "SystemClock.h"
#include "UniHelpEngine.h"
#include "UniHelpViewer.h"
#include "ViewerBench.h"

namespace {

using namespace std::chrono_literals;

// Turns the event loop until the condition holds.
bool waitFor(const std::function<bool()>& condition, std::chrono::milliseconds limit = 20s) {
    QElapsedTimer time;
    time.start();
    while (!condition() && time.elapsed() < limit.count()) {
        QEventLoop loop;
        QTimer::singleShot(10, &loop, &QEventLoop::quit);
        loop.exec();
    }
    return condition();
}

class WebEngineTest : public testing::Test {
protected:
    // The superuser, as whom tests may run in a container, has no sandbox.
    static void SetUpTestSuite() { qputenv("QTWEBENGINE_DISABLE_SANDBOX", "1"); }

    WebEngineTest() {
        files.writeContents(
            "<page name='Home' source='VLXUtility.htm'/><page name='Two' source='sub/two.htm'/>"
            "<page name='Photo' source='photo.png'/>");
        files.writeIndex("<topic name='Two' source='sub/two.htm'/>");
        files.write(QStringLiteral("VLXUtility.htm"),
                    "<body>home caf\xc3\xa9 <a href='sub/two.htm#end'>on</a></body>");
        files.write(QStringLiteral("sub/two.htm"),
                    "<meta charset='iso-8859-1'><body>second p\xe4ge<a id='end'></a></body>");
        files.write(QStringLiteral("photo.png"), "no picture");
        globals.ShowURL = [this](const QString& url) { said += QStringLiteral("url ") + url; };
        engine.RunScript = [this](const QString& script) { said += QStringLiteral("script ") + script; };
    }
    ~WebEngineTest() override {
        globals.onError = [](const std::exception_ptr&) {};
    }

    void open() { open(engine.HomePage, QStringLiteral("home")); }
    // Opens the window anew on a page that holds `text`.
    void open(const QString& page, const QString& text) {
        const QPointer<QWidget> before = window();
        engine.Run(engine.HelpFolder.Child(page));
        ASSERT_TRUE(waitFor([&before] { return !before && view(); }));
        ASSERT_TRUE(waitForText(text));
        ASSERT_TRUE(waitFor([] { return !view()->page()->isLoading(); }));
    }
    // Opens the window on a page with nothing but a link, and follows it.
    void followLink(const QByteArray& link) {
        files.write(QStringLiteral("link.htm"), "<body>link to <a " + link + ">there</a></body>");
        open(QStringLiteral("link.htm"), QStringLiteral("link to"));
        follow();
    }
    static UniHelpViewer* window() {
        for (QWidget* widget : QApplication::topLevelWidgets())
            if (auto* found = qobject_cast<UniHelpViewer*>(widget))
                return found;
        return nullptr;
    }
    static QWebEngineView* view() {
        return window() ? window()->findChild<QWebEngineView*>(QStringLiteral("HelpView")) : nullptr;
    }
    static QString pageText() {
        auto text = std::make_shared<std::optional<QString>>();
        view()->page()->toPlainText([text](const QString& shown) { *text = shown; });
        waitFor([&text] { return text->has_value(); });
        return text->value_or(QString());
    }
    static bool waitForText(const QString& part) {
        return waitFor([&part] { return pageText().contains(part); });
    }
    // Goes to the first link of the page by the keyboard and follows it.
    static void follow() {
        QWidget* page = view()->focusProxy();
        page->setFocus();
        typeKey(*page, QStringLiteral("\t"), Qt::Key_Tab);
        typeKey(*page, QStringLiteral("\r"), Qt::Key_Return);
    }
    static void press(const char* button) {
        child<QAbstractButton>(*window(), QString::fromLatin1(button))->click();
    }
    static QString selectedRow() {
        const auto rows = child<QTreeWidget>(*window(), QStringLiteral("HelpList"))->selectedItems();
        return rows.isEmpty() ? QString() : rows.front()->text(0);
    }

    HelpFiles files;
    SystemClock clock;
    ScriptedDialogs dialogs{clock};
    UniHelpGlobals globals{clock, dialogs};
    HTMLViewerPlugin library;
    UniHelpEngine engine{globals, {{}, {}, files.outside(QStringLiteral("tmp")), files.world.path()}, [this] {
                             return std::make_unique<UniHelpViewer>(globals, library);
                         }};
    QStringList said;
};

TEST_F(WebEngineTest, LinksListsAndHistoryLeadToTheirPages) {
    open();
    EXPECT_TRUE(pageText().contains(QStringLiteral("café")));
    follow();
    EXPECT_TRUE(waitForText(QStringLiteral("second päge")));
    EXPECT_TRUE(waitFor([] { return selectedRow() == QStringLiteral("Two"); }));
    press("BtnBack");
    EXPECT_TRUE(waitForText(QStringLiteral("home")));
    EXPECT_EQ(selectedRow(), QStringLiteral("Home"));
    press("BtnNext");
    EXPECT_TRUE(waitForText(QStringLiteral("second")));
    press("BtnHome");
    EXPECT_TRUE(waitForText(QStringLiteral("home")));
    EXPECT_FALSE(view()->history()->canGoBack()) << "the engine keeps no way back of its own";
    EXPECT_TRUE(dialogs.shown.isEmpty()) << dialogs.shown.join(u'\n').toStdString();
}

TEST_F(WebEngineTest, LinksThatLeadOutOfTheBookAreHandedOn) {
    files.write(QStringLiteral("frame.htm"), "<a href='ftp://c.example/'>away</a>");
    for (const char* link :
         {"href='https://a.example/'", "target='_blank' href='http://b.example/'", "href='mailto:a@b'",
          "href='UHScript:say%20it'", "></a><iframe src='frame.htm'></iframe><a"}) {
        const auto before = said.size();
        followLink(link);
        EXPECT_TRUE(waitFor([this, before] { return said.size() > before; })) << link;
        EXPECT_TRUE(pageText().contains(QStringLiteral("link to"))) << "the page stays";
    }
    EXPECT_EQ(said, (QStringList{"url https://a.example/", "url http://b.example/", "url mailto:a@b",
                                 "script say it", "url ftp://c.example/"}));
    followLink("href='photo.png'");
    EXPECT_TRUE(waitFor([] { return view()->url().path() == QStringLiteral("/photo.png"); }));
    EXPECT_FALSE(child<QAbstractButton>(*window(), QStringLiteral("BtnBack"))->isEnabled());
    EXPECT_TRUE(dialogs.shown.isEmpty()) << dialogs.shown.join(u'\n').toStdString();
}

TEST_F(WebEngineTest, LinkThatLeadsNowhereLeavesThePageAsItIs) {
    followLink("href='gone.htm'");
    press("BtnIndex");
    EXPECT_TRUE(pageText().contains(QStringLiteral("link to")));
    EXPECT_TRUE(dialogs.shown.isEmpty());
    child<QListWidget>(*window(), QStringLiteral("IndexList"))->setCurrentRow(0);
    EXPECT_TRUE(waitForText(QStringLiteral("second")));
    EXPECT_EQ(selectedRow(), QStringLiteral("Two"));
}

TEST_F(WebEngineTest, MarkedPagesKeepTheirPicturesAndMayBeLong) {
    files.write(QStringLiteral("sub/two.htm"),
                "<meta charset='iso-8859-1'><body>p\xe4ge needle in the hay <!--" +
                    QByteArray(3'000'000, '-') + "--><object data='inner.htm'>lost</object></body>");
    files.write(QStringLiteral("sub/inner.htm"), "inner");
    engine.Run(QStringLiteral("NEEDLE in"));
    ASSERT_TRUE(waitFor([] { return view() != nullptr; }));
    EXPECT_TRUE(waitForText(QStringLiteral("päge NEEDLE IN the hay")));
    EXPECT_FALSE(pageText().contains(QStringLiteral("lost")));
}

TEST_F(WebEngineTest, NothingButTheBookIsLoaded) {
    QTcpServer server;
    ASSERT_TRUE(server.listen(QHostAddress::LocalHost));
    int calls = 0;
    QObject::connect(&server, &QTcpServer::newConnection, [&calls] { ++calls; });
    const QByteArray net = "http://127.0.0.1:" + QByteArray::number(server.serverPort());
    // Whoever opened the pipe to read would let a writer in.
    const QByteArray pipe = QFile::encodeName(files.outside(QStringLiteral("pipe.htm")));
    ASSERT_EQ(mkfifo(pipe.constData(), 0600), 0);
    QFile secret(files.outside(QStringLiteral("secret.htm")));
    ASSERT_TRUE(secret.open(QIODevice::WriteOnly));
    secret.write("secret");
    secret.close();
    ASSERT_TRUE(
        QFile::link(secret.fileName(), files.HelpFolder.AbsolutePath() + QStringLiteral("/link.htm")));
    const QByteArray page =
        "<head><link rel='stylesheet' href='NET/a.css'><link rel='preconnect' href='NET'>"
        "<link rel='dns-prefetch' href='NET'><link rel='prefetch' href='NET/p'><link rel='icon' "
        "href='NET/i.ico'>"
        "<meta http-equiv='refresh' content='0;url=NET/r'>"
        "<style>@import url('NET/b.css'); body{background:url('NET/bg.png')}</style>"
        "<script>document.write('scripted')</script><script src='NET/s.js'></script></head>"
        "<body>home<img src='NET/i.png'><iframe src='NET/f.htm'></iframe><video src='NET/v.mp4' "
        "autoplay></video>"
        "<object data='NET/o.htm'></object>"
        "<img src='file://PIPE'><iframe src='file://PIPE'></iframe><object data='file://PIPE'></object>"
        "<object data='../secret.htm'>refused1</object><object data='..%2fsecret.htm'>refused2</object>"
        "<object data='link.htm'>refused3</object><object data='vlxhelp://other/frame.htm'>refused4</object>"
        "<object data='frame.htm'>refused5</object>"
        "<form action='NET/form'><input autofocus name='q'></form>last</body>";
    files.write(QStringLiteral("frame.htm"), "inside");
    files.write(QStringLiteral("VLXUtility.htm"), QByteArray(page).replace("NET", net).replace("PIPE", pipe));
    open();
    ASSERT_TRUE(waitForText(QStringLiteral("refused4")));
    typeKey(*view()->focusProxy(), QStringLiteral("\r"), Qt::Key_Return);
    EXPECT_FALSE(waitFor([&calls] { return calls > 0; }, 1500ms)) << "the network was reached";
    const int writer = ::open(pipe.constData(), O_WRONLY | O_NONBLOCK | O_CLOEXEC);
    EXPECT_EQ(writer, -1) << "a file outside of the book was opened";
    const QString text = pageText();
    for (int i = 1; i <= 4; ++i)
        EXPECT_TRUE(text.contains(QStringLiteral("refused%1").arg(i))) << i;
    EXPECT_FALSE(text.contains(QStringLiteral("refused5"))) << "a page of the book may hold another";
    EXPECT_FALSE(text.contains(QStringLiteral("scripted")));
    EXPECT_TRUE(text.contains(QStringLiteral("last"))) << "the page did not move on by itself";
    // The proof that the server would have noticed.
    QTcpSocket caller;
    caller.connectToHost(QHostAddress::LocalHost, server.serverPort());
    EXPECT_TRUE(waitFor([&calls] { return calls == 1; }));
}

TEST_F(WebEngineTest, LeavesNothingOnTheDisk) {
    open();
    EXPECT_TRUE(view()->page()->profile()->isOffTheRecord());
    EXPECT_TRUE(view()->page()->profile()->persistentStoragePath().isEmpty() ||
                !QDir(view()->page()->profile()->persistentStoragePath()).exists());
}

TEST_F(WebEngineTest, WindowIsMadeAndDroppedOverAndOver) {
    open();
    for (int i = 0; i < 5; ++i) {
        const QPointer<QWidget> before = window();
        engine.Run(engine.HelpFolder.Child(engine.HomePage));
        ASSERT_TRUE(waitFor([&before] { return !before && view(); }));
        // In the middle of the first load.
        engine.closeWindow();
        ASSERT_TRUE(waitFor([] { return window() == nullptr; }));
    }
    open();
}

}  // namespace

// The web engine gives back some of its own objects by another size than it took, and others never.
extern "C" const char* __asan_default_options();       // NOLINT(bugprone-reserved-identifier)
extern "C" const char* __lsan_default_suppressions();  // NOLINT(bugprone-reserved-identifier)
extern "C" const char* __asan_default_options() {
    return "new_delete_type_mismatch=0";
}
extern "C" const char* __lsan_default_suppressions() {
    return "leak:libQt6WebEngine\nleak:libQt6Quick\nleak:libQt6Qml\nleak:libfontconfig\n";
}
