// The help window, pressed by the names of its controls.
#include <QLabel>
#include <QMenu>
#include <QStackedWidget>

#include "GoldenFile.h"
#include "Pictures.h"
#include "ViewerBench.h"
#include "WidgetWords.h"

namespace {

using namespace std::chrono_literals;

using ViewerTest = ViewerBench;

TEST_F(ViewerTest, OpensOnAPageAndSelectsItInTheContents) {
    open(files.file("sub/bottom.htm"));
    EXPECT_EQ(takeShown(), QStringList{"bottom.htm"});
    engine.Run(files.file("sub/bottom.htm"), QStringLiteral("fault-9"));
    clock.advance(1s);
    EXPECT_EQ(takeShown(), QStringList{"bottom.htm#fault-9"});
    EXPECT_EQ(rows(),
              QStringLiteral("Home -In/Out Port -Deep Bottom +Empty Heading Web Script Gone Notes Photo"));
    EXPECT_EQ(selectedRow(), QStringLiteral("Bottom"));
    EXPECT_EQ(window().windowTitle(), QStringLiteral("VLX Utility Help"));
    EXPECT_FALSE(control<QAbstractButton>("BtnBack").isEnabled())
        << "the first page is nothing to go back in";
    EXPECT_FALSE(control<QAbstractButton>("BtnPrint").isVisible());
    EXPECT_EQ(texts(control<QListWidget>("IndexList")), (QStringList{"Antenna", "Band", "bias"}));
}

// clang-format off
TEST_F(ViewerTest, WhatKeepsTheBookFromOpeningIsToldAndShowsNoWindow) {
    const QString head = QStringLiteral("The Help System encounted a problem.\n");
    const auto unreadable = [&head](const char* name) {
        return head + QStringLiteral("UniHelp cannot read the %1 file. Please make sure that it is located in the help folder and that it is compatible with UniHelp.").arg(QString::fromLatin1(name));
    };
    library.available = false;
    open();
    EXPECT_EQ(std::exchange(dialogs.shown, {}), QStringList{head + "The WebKit library required by the HTML Help Viewer is not installed."});
    library.available = true;
    globals.UHViewerStatus = [](bool) { return false; };
    open();
    EXPECT_EQ(std::exchange(dialogs.shown, {}).size(), 1) << "the program may veto the page view";
    globals.UHViewerStatus = [](bool available) { return available; };
    QFile::remove(files.file("uhtoc.xml").AbsolutePath());
    QFile::remove(files.file("uhindex.xml").AbsolutePath());
    open();
    EXPECT_EQ(std::exchange(dialogs.shown, {}), (QStringList{unreadable("uhtoc.xml"), unreadable("uhindex.xml")}));
    QDir(files.HelpFolder.AbsolutePath()).removeRecursively();
    open();
    EXPECT_EQ(std::exchange(dialogs.shown, {}), QStringList{head + "The \"Help\" folder is missing! This folder must remain in the same directory as the application."});
    EXPECT_EQ(dialogs.beeps, 5);
    EXPECT_EQ(windows(), 0);
    EXPECT_EQ(errors, 0);
}
// clang-format on

TEST_F(ViewerTest, MalformedBookGoesToTheDefaultErrorHandling) {
    files.write(QStringLiteral("uhtoc.xml"), "<helpbook><page></helpbook>");
    open();
    EXPECT_EQ(errors, 1);
    EXPECT_EQ(windows(), 0);
    EXPECT_TRUE(dialogs.shown.isEmpty());
}

TEST_F(ViewerTest, RowsOfTheContentsLeadToWhatTheyName) {
    open();
    takeShown();
    for (const char* row : {"Heading", "Web", "Script", "Gone", "Photo", "Notes", "Empty"})
        clickRow(QString::fromLatin1(row));
    EXPECT_EQ(takeShown(), (QStringList{"photo.png", "notes.txt"}));
    EXPECT_EQ(said, (QStringList{"url http://a.example/", "script say \"x\""}));
    press("BtnHistory");
    const auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_TRUE(menu);
    QStringList titles;
    for (const QAction* entry : menu->actions())
        titles += entry->text() + (entry->isChecked() ? QStringLiteral("*") : QString());
    EXPECT_EQ(titles, (QStringList{"Notes*", "Home"})) << "a medium is no part of the history";
    menu->actions()[1]->trigger();
    EXPECT_EQ(takeShown(), QStringList{"VLXUtility.htm"});
    press("BtnBack");
    EXPECT_EQ(takeShown(), QStringList{"notes.txt"}) << "the entry that was chosen is a new one";
}

TEST_F(ViewerTest, ChaptersOpenOntoTheirRowsAndCloseAgain) {
    open();
    press("BtnExpand");
    EXPECT_EQ(rows(),
              QStringLiteral("Home -In/Out Port -Deep Bottom -Empty Heading Web Script Gone Notes Photo"));
    press("BtnCollapse");
    EXPECT_EQ(rows(), QStringLiteral("Home +In/Out +Empty Heading Web Script Gone Notes Photo"));
    contents().setCurrentItem(contents().topLevelItem(1));
    Q_EMIT contents().itemDoubleClicked(contents().topLevelItem(1), 0);
    EXPECT_EQ(rows(), QStringLiteral("Home -In/Out Port +Deep +Empty Heading Web Script Gone Notes Photo"));
    typeKey(contents(), QStringLiteral("\r"), Qt::Key_Return);
    EXPECT_EQ(rows(), QStringLiteral("Home +In/Out +Empty Heading Web Script Gone Notes Photo"));
}

TEST_F(ViewerTest, ClicksInThePageAreFollowed) {
    open();
    takeShown();
    library.view->clickFile(QStringLiteral("sub/bottom.htm"));
    EXPECT_EQ(selectedRow(), QStringLiteral("Bottom"));
    library.view->clickFile(QStringLiteral("photo.png"));
    library.view->click(QStringLiteral("https://a.example/x"));
    library.view->click(QStringLiteral("mailto:a@b"));
    library.view->click(QStringLiteral("uhscript:do%20it%26'now'"));
    EXPECT_EQ(said, (QStringList{"url https://a.example/x", "url mailto:a@b", "script do it&\"now\""}));
    EXPECT_TRUE(takeShown().isEmpty()) << "the page view loads by itself what was clicked in it";
    press("BtnBack");
    EXPECT_EQ(takeShown(), QStringList{"VLXUtility.htm"}) << "a medium left the history as it was";
    EXPECT_EQ(selectedRow(), QStringLiteral("Home"));
    press("BtnNext");
    EXPECT_EQ(takeShown(), QStringList{"bottom.htm"});
    EXPECT_FALSE(control<QAbstractButton>("BtnNext").isEnabled());
    press("BtnHome");
    press("BtnBack");
    EXPECT_EQ(takeShown(), (QStringList{"VLXUtility.htm", "bottom.htm"}));
}

TEST_F(ViewerTest, StatusLineShowsWhereALinkLeads) {
    open();
    const struct {
        const char *told, *shown;
    } Cases[] = {{"Open \"http://a.example/\" now", "http://a.example/"},
                 {"Open \"file:///a.htm\"", ""},
                 {"Open \"UHScript:x\"", "Click to Run Script"},
                 {"Open \"mailto:a@b\"", "mailto:a@b"},
                 {"http://no.quotes/", ""},
                 {"", ""}};
    for (const auto& c : Cases) {
        library.view->StatusChanged(QString::fromLatin1(c.told));
        EXPECT_EQ(status(), QString::fromLatin1(c.shown)) << c.told;
    }
    library.view->Error(-6, QStringLiteral("out of reach"));
    EXPECT_EQ(
        dialogs.shown.last(),
        QStringLiteral("The Help System's HTML Viewer encounted a problem.\nHTMLViewer.Error (-6): out of "
                       "reach"));
}

TEST_F(ViewerTest, IndexScrollsAsOneTypesAndOpensWhatIsSelected) {
    open();
    takeShown();
    press("BtnIndex");
    EXPECT_FALSE(control<QAbstractButton>("BtnExpand").isVisible());
    auto& list = control<QListWidget>("IndexList");
    control<QLineEdit>("IndexField").setText(QStringLiteral("bA"));
    control<QLineEdit>("IndexField").setText(QStringLiteral("none"));
    EXPECT_TRUE(list.selectedItems().isEmpty() && takeShown().isEmpty())
        << "typing selects and opens nothing";
    press("BtnUp");
    press("BtnDown");
    press("BtnDown");
    press("BtnUp");
    press("BtnUp");
    EXPECT_EQ(takeShown(), (QStringList{"port.htm", "bottom.htm", "port.htm"}))
        << "at the ends nothing happens";
    EXPECT_EQ(selectedRow(), QStringLiteral("Port"));
    press("BtnContents");
    press("BtnDown");
    press("BtnUp");
    press("BtnUp");
    press("BtnUp");
    EXPECT_EQ(takeShown(), (QStringList{"port.htm", "VLXUtility.htm"})) << "chapters have no page";
}

TEST_F(ViewerTest, SearchListsMarksAndOpens) {
    open();
    takeShown();
    press("BtnSearch");
    EXPECT_EQ(window().focusWidget(), &control<QWidget>("SearchField"));
    search(QStringLiteral("Text OF"));
    EXPECT_EQ(results(), (QStringList{"Home", "Port", "Bottom", "Notes", "Photo"}));
    EXPECT_EQ(control<QLineEdit>("SearchField").selectedText(), QStringLiteral("Text OF"));
    control<QListWidget>("SearchList").setCurrentRow(2);
    EXPECT_EQ(takeShown(),
              QStringList{"bottom.htm*<body><span style=\"font-weight: bold;background: #FFFF66;\">TEXT "
                          "OF</span> sub/bottom.htm</body>"});
    EXPECT_EQ(selectedRow(), QStringLiteral("Bottom"));

    search(QStringLiteral("nowhere"));
    EXPECT_EQ(status(), QStringLiteral("Sorry, No Matches Were Found."));
    EXPECT_EQ(dialogs.beeps, 1);
    for (const char* nothing : {"", " ", "  "})
        search(QString::fromLatin1(nothing));
    EXPECT_EQ(
        dialogs.shown.value(0),
        QStringLiteral("The Help System encounted a problem.\nPlease enter a keyword or phrase that you "
                       "wish to search for."));
    EXPECT_EQ(dialogs.shown.size(), 3);
    search(QStringLiteral("   "));
    EXPECT_EQ(dialogs.shown.size(), 3) << "three blanks are a search";
    dialogs.cautionAnswers = {true};
    search(QStringLiteral("UniHelp CREDITS"));
    EXPECT_EQ(dialogs.shown.size(), 4);
    EXPECT_EQ(said, QStringList{"url https://unihelp.tessarin.example/"});
}

TEST_F(ViewerTest, SearchTextThatIsNoPatternIsAnErrorAndTheWindowLivesOn) {
    files.write(QStringLiteral("port.htm"), "<body>a{3,1}");
    open();
    press("BtnSearch");
    search(QStringLiteral("a{3,1}"));
    takeShown();
    control<QListWidget>("SearchList").setCurrentRow(0);
    EXPECT_EQ(errors, 1);
    library.view->clickFile(QStringLiteral("sub/bottom.htm"));
    EXPECT_EQ(selectedRow(), QStringLiteral("Bottom")) << "the next click still counts as the user's";
}

TEST_F(ViewerTest, WithoutFullTextOrHighlightsPagesOpenUnmarked) {
    engine.UseFullTextSearch = false;
    open();
    search(QStringLiteral("text of"));
    EXPECT_TRUE(results().isEmpty());
    takeShown();
    search(QStringLiteral("bottom"));
    control<QListWidget>("SearchList").setCurrentRow(0);
    EXPECT_EQ(takeShown(), QStringList{"bottom.htm"});
    engine.UseFullTextSearch = true;
    engine.ShowSearchHighlights = false;
    open(QStringLiteral("text of port"));
    EXPECT_EQ(takeShown(), QStringList{"port.htm"});
}

TEST_F(ViewerTest, SearchFromOutsideOpensItsFirstResult) {
    const struct {
        const char *text, *shown, *said;
    } Cases[] = {{"text of port", "port.htm*", ""},
                 {"  ", "VLXUtility.htm", ""},
                 {"nowhere", "VLXUtility.htm", ""},
                 {"Heading", "VLXUtility.htm", ""},
                 {"Web", "VLXUtility.htm", "url http://a.example/"},
                 {"Script", "VLXUtility.htm", "script say \"x\""},
                 {"Gone", "VLXUtility.htm", ""}};
    for (const auto& c : Cases) {
        open(QString::fromLatin1(c.text));
        const QString shown = takeShown().join(u' ');
        EXPECT_TRUE(shown.startsWith(QString::fromLatin1(c.shown))) << c.text << ": " << shown.toStdString();
        EXPECT_EQ(std::exchange(said, {}).join(u' '), QString::fromLatin1(c.said)) << c.text;
        EXPECT_EQ(control<QStackedWidget>("HelpTabs").currentIndex(), 2);
    }
    EXPECT_EQ(windows(), 1);
}

TEST_F(ViewerTest, DividerStaysBetweenItsLimits) {
    const struct {
        int x, width;
        std::optional<int> at;
    } Cases[] = {{300, 700, 300}, {229, 700, 230}, {230, 700, {}},  {480, 700, {}}, {479, 700, 479},
                 {481, 700, 480}, {-5, 700, 230},  {100, 400, 230}, {300, 400, 180}};
    for (const auto& c : Cases)
        EXPECT_EQ(dividerFor(c.x, c.width), c.at) << c.x << " of " << c.width;

    open();
    const auto mouse = [this](QEvent::Type type, int x) {
        QMouseEvent event(type, QPointF(x, 100), QPointF(x, 100), Qt::LeftButton, Qt::LeftButton,
                          Qt::NoModifier);
        QApplication::sendEvent(&window(), &event);
    };
    window().resize(900, 500);
    mouse(QEvent::MouseButtonPress, 100);
    mouse(QEvent::MouseMove, 300);
    EXPECT_EQ(control<QWidget>("HelpView").geometry(), QRect(240, 0, 660, 470)) << "not the divider";
    mouse(QEvent::MouseButtonPress, 235);
    mouse(QEvent::MouseMove, 300);
    mouse(QEvent::MouseButtonRelease, 300);
    EXPECT_EQ(control<QWidget>("HelpView").geometry(), QRect(310, 0, 590, 470));
    // Children of the window by name, with their places.
    const auto geometry = [this] {
        QStringList places{QStringLiteral("-- %1 by %2").arg(window().width()).arg(window().height())};
        for (const QWidget* item : window().findChildren<QWidget*>()) {
            if (!item->objectName().isEmpty() && !item->objectName().startsWith(QStringLiteral("qt_")))
                places += wordsOf(*item) + u' ' + QDebug::toString(item->geometry());
        }
        return places;
    };
    QStringList places = geometry();
    window().resize(640, 420);
    places += geometry();
    compareWithGolden(QStringLiteral(VLX_HELP_GOLDENS "/geometry.txt"), places.join(u'\n').toUtf8() + '\n');
}

TEST_F(ViewerTest, ListTextGrowsAndShrinksWithinItsLimits) {
    engine.FontSize = 40;
    open();
    const auto size = [this] { return contents().font().pixelSize(); };
    EXPECT_EQ(size(), 11);
    for (int i = 0; i < 9; ++i)
        press("BtnLarger");
    EXPECT_EQ(size(), 16);
    for (int i = 0; i < 9; ++i)
        press("BtnSmaller");
    EXPECT_EQ(size(), 9);
}

TEST_F(ViewerTest, MaskedPicturesAreShownWhole) {
    const QImage house = Pictures::masked("navhome", "navhomemask").toImage();
    EXPECT_EQ(house.deviceIndependentSize(), QSizeF(20, 20));
    EXPECT_EQ(qAlpha(house.pixel(0, 0)), 0);
    EXPECT_EQ(qAlpha(house.pixel(12, 30)), 255) << "the wall on the left";
    EXPECT_EQ(qAlpha(house.pixel(20, 12)), 255) << "the roof";
}

TEST_F(ViewerTest, PrintButtonCallsItsHook) {
    int prints = 0;
    globals.UHPrint = [&prints] { ++prints; };
    engine.ShowPrintButton = true;
    open();
    press("BtnPrint");
    EXPECT_EQ(prints, 1);
}

TEST_F(ViewerTest, RectangleIsRememberedAndAppliedWithoutAutoSet) {
    int closed = 0;
    globals.UHClosed = [&closed] { ++closed; };
    engine.AutoSet = false;
    open();
    EXPECT_EQ(window().size(), QSize(900, 600));
    window().resize(500, 300);
    window().close();
    clock.advance(1s);
    EXPECT_EQ(closed, 1);
    EXPECT_EQ(windows(), 0);
    open();
    EXPECT_EQ(window().size(), QSize(500, 300));
}

TEST_F(ViewerTest, VanishedFolderLeavesTheWindowUsable) {
    open();
    takeShown();
    QDir(files.HelpFolder.AbsolutePath()).removeRecursively();
    clickRow(QStringLiteral("Notes"));
    press("BtnHome");
    press("BtnExpand");
    search(QStringLiteral("text"));
    EXPECT_TRUE(takeShown().isEmpty());
    EXPECT_TRUE(results().isEmpty());
    EXPECT_EQ(errors, 0);
    open();
    EXPECT_EQ(windows(), 0) << "but it does not open again";
}

TEST_F(ViewerTest, EveryControlIsReachedByTabAndSaysWhatItIs) {
    open();
    press("BtnSearch");
    QStringList reached;
    control<QWidget>("BtnContents").setFocus();
    for (int i = 0; i < 30; ++i) {
        const QWidget* focused = window().focusWidget();
        EXPECT_FALSE(focused->accessibleName().isEmpty()) << focused->objectName().toStdString();
        if (!reached.contains(focused->objectName()))
            reached += focused->objectName();
        typeKey(*window().focusWidget(), QStringLiteral("\t"), Qt::Key_Tab);
    }
    EXPECT_EQ(reached,
              (QStringList{"BtnContents", "BtnIndex", "BtnSearch", "BtnHome", "SearchField", "SearchBtn",
                           "SearchList", "BtnUp", "BtnDown", "BtnSmaller", "BtnLarger"}));
}

TEST_F(ViewerTest, ClosingDuringASearchIsClean) {
    open();
    // On the simulated clock a search does not wait; one that opens while another closes does.
    for (int i = 0; i < 100; ++i) {
        engine.Run(QStringLiteral("text of"));
        clock.step();
        window().close();
    }
    clock.advance(1s);
    EXPECT_EQ(windows(), 0);
    EXPECT_EQ(clock.pendingWaits(), 0);
}

}  // namespace
