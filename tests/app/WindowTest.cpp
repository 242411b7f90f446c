#include <QAbstractButton>
#include <QAction>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QLineEdit>
#include <QMenu>
#include <QScrollArea>
#include <QScrollBar>
#include <QTcpServer>
#include <QTest>

#include "AppBench.h"

using namespace std::chrono_literals;

namespace {

bool isControl(const QWidget* widget) {
    return qobject_cast<const QAbstractButton*>(widget) || qobject_cast<const QLineEdit*>(widget) ||
           qobject_cast<const QComboBox*>(widget) || qobject_cast<const QTextEdit*>(widget);
}

// Parts that the toolkit puts inside its own controls.
bool isToolkitsOwn(const QWidget* widget) {
    return widget->objectName().startsWith(u"qt_") ||
           qobject_cast<const QComboBox*>(widget->parentWidget()) || widget->inherits("QTabBar") ||
           (widget->parentWidget() && widget->parentWidget()->inherits("QTabBar"));
}

// Each tab's page in the smallest window.
template <typename Look>
void lookAtPages(Look look) {
    AppBench bench(Tab::Port);
    bench.window().resize(bench.window().minimumSize());
    for (const Tab tab : {Tab::Port, Tab::Firmware, Tab::Operate, Tab::Configuration, Tab::CommandTester}) {
        bench.chooseTab(tab);
        auto* area = qobject_cast<QScrollArea*>(
            bench.control<QTabWidget>(QStringLiteral("TabPanel1"))->currentWidget());
        look(*area, *area->widget());
    }
}

bool holds(const QWidget& page, const QWidget& control) {
    return page.rect().contains(QRect(control.mapTo(&page, QPoint()), control.size()));
}

TEST(WindowTest, EveryControlHasItsNamesAndFitsTheSmallestWindow) {
    lookAtPages([](const QScrollArea& area, const QWidget& page) {
        EXPECT_LE(page.width(), area.viewport()->width()) << "the standard font needs no scrolling";
        EXPECT_LE(page.height(), area.viewport()->height());
        for (const QWidget* widget : page.findChildren<QWidget*>()) {
            if (!isControl(widget) || isToolkitsOwn(widget))
                continue;
            const std::string name = widget->objectName().toStdString();
            EXPECT_NE(name, "") << widget->metaObject()->className();
            EXPECT_FALSE(spokenName(*widget).isEmpty()) << name;
            if (!widget->isVisible())
                continue;
            EXPECT_TRUE(holds(page, *widget)) << name;
            if (qobject_cast<const QAbstractButton*>(widget) && name.find("CommandMacro") != 0) {
                EXPECT_GE(widget->width(), widget->sizeHint().width()) << name;
            }
        }
    });
}

TEST(WindowTest, LargeFontScrollsAndCutsNothing) {
    const QFont standard = QApplication::font();
    QFont large = standard;
    large.setPointSizeF(standard.pointSizeF() * 2);
    QApplication::setFont(large);
    lookAtPages([](const QScrollArea& area, const QWidget& page) {
        for (const QAbstractButton* button : page.findChildren<QAbstractButton*>()) {
            if (!button->isVisible() || isToolkitsOwn(button))
                continue;
            EXPECT_TRUE(holds(page, *button)) << button->objectName().toStdString();
            EXPECT_GE(button->height(), button->fontMetrics().height());
        }
        EXPECT_GE(page.height(), page.minimumSizeHint().height());
        const bool isTaller = page.height() > area.viewport()->height();
        EXPECT_EQ(area.verticalScrollBar()->maximum() > 0, isTaller);
    });
    QApplication::setFont(standard);
}

TEST(WindowTest, LogStaysInReachWhileAFlowOwnsTheLine) {
    AppBench bench(Tab::Firmware);
    bench.control<QPushButton>(QStringLiteral("BrowseButton"))->setFocus();
    bench.press(QStringLiteral("GetRevButton"));
    auto* log = bench.control<QTextEdit>(QStringLiteral("StatusField"));
    EXPECT_TRUE(log->isEnabled());
    EXPECT_EQ(bench.window().focusWidget(), log);
    typeKey(*log, {}, Qt::Key_A, Qt::ControlModifier);
    EXPECT_TRUE(log->textCursor().hasSelection());
    for (const char* name : {"DefaultButton", "BrowseButton", "GetRevButton", "SendVLXButton"})
        EXPECT_FALSE(bench.control<QPushButton>(QString::fromLatin1(name))->isEnabled()) << name;
    auto* tabs = bench.control<QTabWidget>(QStringLiteral("TabPanel1"));
    EXPECT_FALSE(tabs->isTabEnabled(0));
    bench.press(QStringLiteral("DefaultButton"));
    bench.clock().advance(5s);
    EXPECT_EQ(bench.port().written(), ";;;;;;I;^RVM;");
    EXPECT_TRUE(tabs->isTabEnabled(0));
    EXPECT_EQ(bench.window().focusWidget(), bench.control<QPushButton>(QStringLiteral("BrowseButton")));
}

TEST(WindowTest, TraceMenuOpensTheLogToTheExchange) {
    AppBench bench(Tab::Port);
    auto* trace = bench.window().findChild<QAction*>(QStringLiteral("ViewTraceMenu"));
    ASSERT_TRUE(trace);
    EXPECT_FALSE(trace->isChecked());
    bench.press(QStringLiteral("TestCommButtton"));
    bench.clock().advance(5s);
    EXPECT_FALSE(bench.logText().contains(QStringLiteral("Send ")));
    trace->trigger();
    bench.press(QStringLiteral("TestCommButtton"));
    bench.clock().advance(5s);
    EXPECT_TRUE(bench.logText().contains(QStringLiteral("Send \"^RVM;\"")));
    bench.quit();
    bench.start();
    EXPECT_TRUE(bench.app().globals().m_Verbose);
}

TEST(WindowTest, BytesThatComeOnOtherTabsWaitForTheirReader) {
    AppBench bench(Tab::Configuration);
    bench.amplifier().emitNoise("^TM099;");
    bench.clock().advance(100ms);
    EXPECT_NE(bench.label(QStringLiteral("Temperature")), QStringLiteral("99 C"));
    bench.chooseTab(Tab::CommandTester);
    bench.amplifier().emitNoise("!");
    bench.clock().advance(100ms);
    EXPECT_EQ(bench.control<QTextEdit>(QStringLiteral("TesterTermField"))->toPlainText(),
              QStringLiteral("^TM099;!"));
}

TEST(WindowTest, ReportTellsThePortsAndTheLine) {
    AppBench bench(Tab::Operate);
    QFile report(bench.dataFolder() + QStringLiteral("/report.txt"));
    bench.dialogs().files = {report.fileName()};
    bench.window().findChild<QAction*>(QStringLiteral("HelpSaveReport"))->trigger();
    bench.clock().advance(1s);
    ASSERT_TRUE(report.open(QIODevice::ReadOnly));
    const QByteArray text = report.readAll();
    for (const char* part : {"In the list: ttyUSB0", "VLX Version 01.23", " out 5E424E3B"})
        EXPECT_TRUE(text.contains(part)) << part;
}

TEST(WindowTest, AboutHasItsSizeAndClosesByAClick) {
    AppBench bench(Tab::Port);
    auto* item = bench.window().findChild<QAction*>(QStringLiteral("HelpAboutVLXUtil"));
    item->trigger();
    auto* about = child<QDialog>(bench.window(), QStringLiteral("AboutWindow"));
    QTest::mouseClick(child<QLabel>(*about, QStringLiteral("VersionText")), Qt::LeftButton);
    EXPECT_FALSE(about->isVisible());
}

TEST(WindowTest, LogShortcutsActFromWhereverTheFocusIs) {
    AppBench bench(Tab::Firmware);
    auto* log = bench.control<QTextEdit>(QStringLiteral("StatusField"));
    for (QWidget* focused :
         {static_cast<QWidget*>(bench.control<QLineEdit>(QStringLiteral("FolderPath"))),
          static_cast<QWidget*>(bench.control<QPushButton>(QStringLiteral("GetRevButton"))),
          static_cast<QWidget*>(bench.control<QTabWidget>(QStringLiteral("TabPanel1")))}) {
        log->setPlainText(QStringLiteral("the log"));
        typeKey(*focused, {}, Qt::Key_A, Qt::ControlModifier);
        EXPECT_EQ(log->textCursor().selectedText(), QStringLiteral("the log"))
            << focused->objectName().toStdString();
        typeKey(*focused, {}, Qt::Key_X, Qt::ControlModifier);
        EXPECT_EQ(log->toPlainText(), QString()) << focused->objectName().toStdString();
        EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("the log"));
        typeText(*log, QStringLiteral("x"));
        EXPECT_EQ(log->toPlainText(), QString()) << "it is read-only";
    }
}

// A server that takes connections and never says a word.
TEST(WindowTest, CopyingIsStartedOnceAndGivenUpByEscapeOrTheMenu) {
    QTcpServer silent;
    silent.listen(QHostAddress::LocalHost);
    AppBench bench;
    bench.firmwareServer = FirmwareServer::at(QStringLiteral("127.0.0.1:%1").arg(silent.serverPort()), {});
    bench.start();
    bench.chooseTab(Tab::Firmware);
    auto* const button = bench.control<QPushButton>(QStringLiteral("GetRevButton1"));
    auto* const giveUp = bench.control<QAction>(QStringLiteral("GiveUpCopying"));
    button->setFocus();
    const auto logs = [&](const char* text, int times) {
        for (int i = 0; i < 500 && bench.logText().count(QLatin1String(text)) < times; ++i) {
            bench.clock().advance(10ms);
            QTest::qWait(1);
        }
        return bench.logText().count(QLatin1String(text)) == times;
    };
    for (int round = 1; round <= 2; ++round) {
        EXPECT_FALSE(giveUp->isEnabled());
        button->click();
        EXPECT_TRUE(logs("Connecting to", round));
        button->click();
        EXPECT_TRUE(logs("Files are being copied from Tessarin already.", round));
        if (round == 1) {
            QTest::keyClick(button, Qt::Key_Escape);
        } else {
            const QPoint middle = button->rect().center();
            QContextMenuEvent menu(QContextMenuEvent::Keyboard, middle, button->mapToGlobal(middle));
            QApplication::sendEvent(button, &menu);
            auto* const shown = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            ASSERT_TRUE(shown && shown->actions().contains(giveUp));
            giveUp->trigger();
            shown->close();
        }
        EXPECT_TRUE(logs("Copying from Tessarin was given up.", round));
        EXPECT_TRUE(button->isEnabled());
    }
}

}  // namespace
