// The window of a load, pressed and read as the user does.
#include <QClipboard>
#include <QGuiApplication>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>
#include <QTextEdit>

#include "Child.h"
#include "LoadBench.h"
#include "LoadWindow.h"

using namespace std::chrono_literals;

namespace {

class LoadWindowTest : public testing::Test {
protected:
    LoadWindowTest() {
        mainWindow.setGeometry(300, 200, 800, 600);
        mainWindow.show();
        bench.install(HexText::file(image));
    }

    void start() {
        flow.emplace(LoadMcu(bench.clock, bench.globals, bench.loader, bench.versionedFilename, mainWindow));
        window = mainWindow.findChild<QWidget*>(QStringLiteral("LoadWindow"));
    }
    QString text() { return child<QTextEdit>(*window, QStringLiteral("ActivityLog"))->toPlainText(); }
    bool isFull() {
        auto* const bar = child<QProgressBar>(*window, QStringLiteral("ProgressBar1"));
        return bar->maximum() == 100 && bar->value() == 100;
    }
    void expectEnd() {
        EXPECT_TRUE(bench.clock.run(*flow));
        EXPECT_TRUE(flow->result());
        EXPECT_FALSE(bench.globals.m_loadingfirmware);
        EXPECT_EQ(mainWindow.findChild<QWidget*>(QStringLiteral("LoadWindow")), nullptr);
        EXPECT_EQ(bench.clock.pendingWaits(), 0);
    }

    const QByteArray image = Image::make(20);
    LoadBench bench{Vlx720::State::Main};
    QWidget mainWindow;
    std::optional<Task<bool>> flow;
    QPointer<QWidget> window;
};

TEST_F(LoadWindowTest, ClosesByItselfAfterAGoodLoad) {
    start();
    EXPECT_EQ(window->windowTitle(), QStringLiteral("Loading VLX Firmware"));
    EXPECT_TRUE(window->isModal());
    EXPECT_NEAR(window->frameGeometry().center().x(), mainWindow.frameGeometry().center().x(), 2);
    EXPECT_EQ(window->frameGeometry().top(), mainWindow.frameGeometry().top() + 40);
    expectEnd();
    EXPECT_TRUE(bench.holds(image));
    EXPECT_EQ(bench.log.last(), QStringLiteral("VLX firmware load is complete"));
}

TEST_F(LoadWindowTest, StaysWithTraceOnAndKeepsTheTraceToItself) {
    bench.globals.m_Verbose = true;
    start();
    bench.clock.advance(1min);
    EXPECT_TRUE(isFull());
    EXPECT_TRUE(text().startsWith(QStringLiteral("Tessarin VLX Utility for OS X Version ")));
    EXPECT_TRUE(text().contains(QStringLiteral("\nResponse \"D\"   \"-5 msec\n")));
    EXPECT_TRUE(text().endsWith(QStringLiteral("\nClick \"Close\" to close this window\n")));
    EXPECT_EQ(bench.log.filter(QStringLiteral("Response")), QStringList());
    child<QPushButton>(*window, QStringLiteral("CloseIt"))->click();
    EXPECT_FALSE(bench.globals.m_cancelling);
    expectEnd();
}

TEST_F(LoadWindowTest, StaysAfterAFailure) {
    bench.amplifier.powerOff();
    start();
    bench.clock.advance(1min);
    EXPECT_TRUE(isFull());
    EXPECT_TRUE(text().endsWith(
        QStringLiteral("\nRemove power and re-try the firmware load.\nVLX firmware load failed\n")));
    window->close();
    expectEnd();
}

TEST_F(LoadWindowTest, CannotBeClosedWhileItLoads) {
    start();
    bench.clock.advance(3s);
    EXPECT_FALSE(child<QPushButton>(*window, QStringLiteral("CloseIt"))->isEnabled());
    EXPECT_FALSE(window->close());
    typeKey(*window, {}, Qt::Key_Escape);
    EXPECT_TRUE(window->isVisible());
    EXPECT_TRUE(bench.globals.m_loadingfirmware);
    expectEnd();
    EXPECT_TRUE(bench.holds(image));
}

TEST_F(LoadWindowTest, ClosedBeforeTheLoadBeginsSendsNothing) {
    start();
    EXPECT_TRUE(window->close());
    expectEnd();
    EXPECT_EQ(bench.port.written(), QByteArray());
}

// The program ends in the middle of a load.
TEST_F(LoadWindowTest, LeavesNothingBehindWhenItIsCancelled) {
    start();
    bench.clock.advance(3s);
    flow.reset();
    EXPECT_TRUE(window.isNull());
    EXPECT_FALSE(bench.line.isTaken());
    EXPECT_FALSE(bench.globals.m_loadingfirmware);
    bench.globals.SetStatusText(QStringLiteral("the log has no window any more"), false);
    bench.clock.advance(1s);
    EXPECT_EQ(bench.clock.pendingWaits(), 0);
}

TEST_F(LoadWindowTest, MayGoWithTheMainWindow) {
    bench.amplifier.powerOff();
    start();
    bench.clock.advance(1min);
    delete window;
    bench.clock.advance(1s);
    EXPECT_FALSE(flow->isDone());
    flow.reset();
    EXPECT_EQ(bench.clock.pendingWaits(), 0);
}

TEST_F(LoadWindowTest, LetsTheUserCopyFromTheLog) {
    bench.globals.m_Verbose = true;
    start();
    bench.clock.advance(1min);
    auto* const log = child<QTextEdit>(*window, QStringLiteral("ActivityLog"));
    const auto press = [log](int key) { typeKey(*log, {}, key, Qt::ControlModifier); };
    const QString before = text();
    press(Qt::Key_A);
    EXPECT_FALSE(log->textCursor().hasSelection()) << "selects all only when something is selected";
    log->moveCursor(QTextCursor::Start);
    log->moveCursor(QTextCursor::NextWord, QTextCursor::KeepAnchor);
    press(Qt::Key_X);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("Tessarin "));
    EXPECT_EQ(text(), before.mid(9));
    EXPECT_TRUE(log->textCursor().atEnd()) << "any change puts the cursor at the end";
    log->moveCursor(QTextCursor::Left, QTextCursor::KeepAnchor);
    press(Qt::Key_A);
    press(Qt::Key_C);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), text());
    child<QPushButton>(*window, QStringLiteral("CloseIt"))->click();
    expectEnd();
}

}  // namespace
