// The window of a load, pressed and read as the user does.
#include <QClipboard>
#include <QGuiApplication>
#include <QLabel>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>
#include <QTextEdit>

#include "Child.h"
#include "LoadBench.h"
#include "LoadWindow.h"
#include "RemainingTime.h"

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
        flow.emplace(
            LoadMcu(bench.platform, bench.globals, bench.loader, bench.versionedFilename, mainWindow));
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

TEST_F(LoadWindowTest, CountsDownWhileTheLoaderIsSilent) {
    bench.amplifier.misbehave({Misbehaviour::Kind::PowerLoss, 5 + 1 + 100});
    start();
    const auto waiting = [this] { return child<QLabel>(*window, QStringLiteral("LongWaitText"))->text(); };
    EXPECT_TRUE(bench.clock.runUntil([&] { return !waiting().isEmpty(); }));
    EXPECT_EQ(waiting(), QStringLiteral("Waiting for the boot loader: up to 0:20 left"));
    EXPECT_TRUE(bench.clock.runUntil([&] { return waiting().startsWith(QStringLiteral("No")); }));
    EXPECT_EQ(waiting(), QStringLiteral("No answer, trying again: up to 2:50 left"));
    bench.clock.advance(1s);
    EXPECT_EQ(waiting(), QStringLiteral("No answer, trying again: up to 2:49 left"));
    EXPECT_FALSE(text().contains(QStringLiteral("No answer")));
    bench.port.unplug();
    bench.clock.advance(1s);
    EXPECT_EQ(waiting(), QString());
    EXPECT_TRUE(window->close());
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
    typeKey(*log, {}, Qt::Key_A, Qt::ControlModifier);
    EXPECT_FALSE(log->textCursor().hasSelection()) << "selects all only when something is selected";
    log->moveCursor(QTextCursor::Start);
    log->moveCursor(QTextCursor::NextWord, QTextCursor::KeepAnchor);
    typeKey(*log, {}, Qt::Key_A, Qt::ControlModifier);
    typeKey(*log, {}, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), text());
    typeKey(*log, {}, Qt::Key_X, Qt::ControlModifier);
    EXPECT_EQ(text(), QString());
    child<QPushButton>(*window, QStringLiteral("CloseIt"))->click();
    expectEnd();
}

TEST(RemainingTimeTest, IsCountedFromTheFirstBlockOnOnceATenthIsDone) {
    struct Row {
        int second, value;
        const char* text;
    };
    RemainingTime remaining;
    for (const Row& row : {
             // clang-format off
             Row{0,  0,   ""},
             Row{9,  1,   ""},            // the amplifier has been made ready
             Row{18, 10,  ""},
             Row{19, 11,  " 1:29 left"},
             Row{59, 51,  " 0:49 left"},
             Row{99, 99,  " 0:01 left"},
             Row{99, 100, ""},
             Row{99, 0,   ""},            // another load
             Row{100, 2,  ""},
             Row{110, 22, " 0:39 left"},
             // clang-format on
         })
        EXPECT_EQ(remaining.text(std::chrono::seconds(row.second), row.value, 100).toStdString(), row.text)
            << row.second;
}

}  // namespace
