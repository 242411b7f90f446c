#include "QtDialogs.h"

#include <QAbstractButton>
#include <QApplication>
#include <QFile>
#include <QFileDialog>
#include <QKeyEvent>
#include <QLineEdit>
#include <QTemporaryDir>

#include <algorithm>
#include <memory>
#include <stdexcept>

#include "Child.h"
#include "Errors.h"
#include "EventLoop.h"
#include "SystemClock.h"

namespace {

// The one visible window of that name, once the event loop has shown it.
template <typename W>
W* shown(const char* name) {
    W* found = nullptr;
    const auto isShown = [&] {
        for (QWidget* window : QApplication::topLevelWidgets()) {
            if (window->isVisible() && window->objectName() == QLatin1String(name))
                found = qobject_cast<W*>(window);
        }
        return found != nullptr;
    };
    if (!turnUntil(isShown, std::chrono::seconds(5)))
        throw std::runtime_error(name);
    return found;
}

bool isAnyDialogVisible() {
    const QWidgetList windows = QApplication::topLevelWidgets();
    return std::any_of(windows.begin(), windows.end(), [](const QWidget* window) {
        return window->isVisible() && qobject_cast<const QDialog*>(window) != nullptr;
    });
}

void pressEscape(QWidget* widget) {
    QKeyEvent press(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    QApplication::sendEvent(widget, &press);
}

const MessageRequest Question{.message = QStringLiteral("It does not match."),
                              .explanation = QStringLiteral("Press No to abandon."),
                              .actionButton = QStringLiteral("No"),
                              .alternateButton = QStringLiteral("Yes")};

class DialogsTest : public testing::Test {
protected:
    DialogsTest() {
        window->setObjectName(QStringLiteral("Window1"));
        window->show();
        dialogs.setMainWindow(window.get());
    }
    ~DialogsTest() override {
        turnFor(std::chrono::milliseconds(1));
        EXPECT_FALSE(isAnyDialogVisible());
        EXPECT_EQ(clock.pendingWaits(), 0);
    }

    template <typename T>
    bool ends(const Task<T>& task) {
        return turnUntil([&task] { return task.isDone(); }, std::chrono::seconds(5));
    }

    SystemClock clock;
    QtDialogs dialogs{clock};
    std::unique_ptr<QWidget> window = std::make_unique<QWidget>();
};

TEST_F(DialogsTest, AMessageBoxIsAwaitedAndTheFlowGoesOnFromTheLoop) {
    for (const auto& [kind, sign] :
         {std::pair{BoxKind::Failure, QMessageBox::Warning}, {BoxKind::Notice, QMessageBox::Information}}) {
        const Task<> task = dialogs.MsgBox(QStringLiteral("<b>not markup</b>"), kind);
        EXPECT_FALSE(task.isDone());
        auto* box = shown<QMessageBox>("MsgBox");
        EXPECT_EQ(box->windowTitle(), QStringLiteral("VLX Utility"));
        EXPECT_EQ(box->icon(), sign);
        EXPECT_EQ(box->text(), QStringLiteral("<b>not markup</b>"));
        EXPECT_EQ(box->textFormat(), Qt::PlainText);
        EXPECT_EQ(box->parentWidget(), window.get());
        box->button(QMessageBox::Ok)->click();
        EXPECT_FALSE(task.isDone());
        EXPECT_TRUE(ends(task));
    }
}

TEST_F(DialogsTest, TheCautionDialogAnswersByItsButtons) {
    for (const auto& [name, isAction] : {std::pair{"ActionButton", true}, {"AlternateActionButton", false}}) {
        Task<bool> task = dialogs.askCaution(Question);
        auto* box = shown<QMessageBox>("MessageDialog");
        child<QAbstractButton>(*box, QLatin1String(name))->click();
        ASSERT_TRUE(ends(task));
        EXPECT_EQ(task.result(), isAction) << name;
    }

    Task<bool> escaped = dialogs.askCaution(Question);
    pressEscape(shown<QMessageBox>("MessageDialog"));
    ASSERT_TRUE(ends(escaped));
    EXPECT_TRUE(escaped.result());
}

TEST_F(DialogsTest, ADialogThatGoesWithItsWindowCancelsItsFlow) {
    Task<> message = dialogs.MsgBox(QStringLiteral("Error opening serial port"));
    Task<bool> question = dialogs.askCaution(Question);
    shown<QMessageBox>("MsgBox");
    shown<QMessageBox>("MessageDialog");
    window.reset();
    EXPECT_TRUE(ends(message) && ends(question));
    EXPECT_THROW(message.result(), FlowCancelled);
    EXPECT_THROW(question.result(), FlowCancelled);
}

// The flow shows its second box in the very turn in which the first one was pressed: the first is still
// there, hidden, and for some window managers still the active window.
Task<> twoBoxes(QtDialogs& dialogs, int& read) {
    co_await dialogs.MsgBox(QStringLiteral("first"));
    ++read;
    co_await dialogs.MsgBox(QStringLiteral("second"));
    ++read;
}

TEST_F(DialogsTest, TheSecondOfTwoBoxesStaysUntilItIsRead) {
    int read = 0;
    const Task<> task = twoBoxes(dialogs, read);
    shown<QMessageBox>("MsgBox")->button(QMessageBox::Ok)->click();
    ASSERT_TRUE(turnUntil([&read] { return read == 1; }, std::chrono::seconds(5)));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    turnFor(std::chrono::milliseconds(20));
    auto* second = shown<QMessageBox>("MsgBox");
    EXPECT_EQ(second->text(), QStringLiteral("second"));
    EXPECT_EQ(second->parentWidget(), window.get());
    EXPECT_EQ(read, 1);
    second->button(QMessageBox::Ok)->click();
    EXPECT_TRUE(ends(task));
    EXPECT_EQ(read, 2);
}

TEST_F(DialogsTest, ABoxIsNoParentOfAnother) {
    auto first = std::make_unique<Task<>>(dialogs.MsgBox(QStringLiteral("first")));
    shown<QMessageBox>("MsgBox")->activateWindow();
    turnFor(std::chrono::milliseconds(20));
    const Task<bool> question = dialogs.askCaution(Question);
    auto* box = shown<QMessageBox>("MessageDialog");
    EXPECT_EQ(box->parentWidget(), window.get());
    first.reset();  // its flow is cancelled, and its box goes
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(box->isVisible());
    box->findChild<QAbstractButton*>(QStringLiteral("ActionButton"))->click();
    EXPECT_TRUE(ends(question));
}

TEST_F(DialogsTest, CancellingATaskClosesItsDialog) {
    {
        const Task<> task = dialogs.MsgBox(QStringLiteral("gone soon"));
        shown<QMessageBox>("MsgBox");
    }
    EXPECT_FALSE(isAnyDialogVisible());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(window->findChild<QMessageBox*>(), nullptr);

    {  // pressed already, and not yet gone on
        const Task<> task = dialogs.MsgBox(QStringLiteral("pressed"));
        shown<QMessageBox>("MsgBox")->button(QMessageBox::Ok)->click();
    }
}

TEST_F(DialogsTest, ASavedFileGetsItsExtensionBesideTheOneThatIsRemembered) {
    const QTemporaryDir folder;
    QFile existing(folder.filePath(QStringLiteral("old.VLXConfig")));
    ASSERT_TRUE(existing.open(QIODevice::WriteOnly));
    for (const QString& begin : {folder.path(), existing.fileName()}) {
        Task<QString> task = dialogs.saveFile(
            {.title = QStringLiteral("Save As"),
             .prompt = QString(),
             .initialFolder = begin,
             .suggestedName = QStringLiteral("SN00123.20110302T040506"),
             .type = {QStringLiteral("VLX Configuration File"), QStringLiteral(".VLXConfig")}});
        auto* dialog = shown<QFileDialog>("SaveDialog");
        EXPECT_EQ(dialog->windowTitle(), QStringLiteral("Save As"));
        static_cast<QDialog*>(dialog)->accept();
        ASSERT_TRUE(ends(task));
        EXPECT_EQ(task.result(), folder.filePath(QStringLiteral("SN00123.20110302T040506.VLXConfig")));
    }
}

TEST_F(DialogsTest, AFileIsReplacedOnlyWhenTheUserSaysSo) {
    const QTemporaryDir folder;
    QFile existing(folder.filePath(QStringLiteral("old.VLXConfig")));
    ASSERT_TRUE(existing.open(QIODevice::WriteOnly));
    const SaveFileRequest request{.title = QStringLiteral("Save As"),
                                  .prompt = QString(),
                                  .initialFolder = folder.path(),
                                  .suggestedName = QStringLiteral("old"),
                                  .type = {QStringLiteral("Configuration"), QStringLiteral(".VLXConfig")}};
    Task<QString> task = dialogs.saveFile(request);
    for (const char* answer : {"AlternateActionButton", "ActionButton"}) {
        auto* dialog = shown<QFileDialog>("SaveDialog");
        static_cast<QDialog*>(dialog)->accept();
        auto* question = shown<QMessageBox>("MessageDialog");
        EXPECT_TRUE(question->text().contains(QStringLiteral("old.VLXConfig")));
        question->findChild<QAbstractButton*>(QLatin1String(answer))->click();
    }
    ASSERT_TRUE(ends(task));
    EXPECT_EQ(task.result(), existing.fileName());

    Task<QString> cancelled = dialogs.saveFile(request);
    pressEscape(shown<QFileDialog>("SaveDialog"));
    ASSERT_TRUE(ends(cancelled));
    EXPECT_EQ(cancelled.result(), QString());
}

TEST_F(DialogsTest, FilesAndFoldersAreChosenByAbsolutePath) {
    const QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("a.VLXConfig")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    Task<QString> opened = dialogs.openFile(
        {QStringLiteral("Open"), folder.path(), {QStringLiteral("Files"), QStringLiteral(".VLXConfig")}});
    auto* openDialog = shown<QFileDialog>("OpenDialog");
    openDialog->findChild<QLineEdit*>()->setText(QStringLiteral("a.VLXConfig"));
    static_cast<QDialog*>(openDialog)->accept();
    ASSERT_TRUE(ends(opened));
    EXPECT_EQ(opened.result(), file.fileName());

    Task<QString> chosen = dialogs.selectFolder({folder.path(), QStringLiteral("Choose Folder")});
    auto* folderDialog = shown<QFileDialog>("SelectFolderDialog");
    EXPECT_EQ(folderDialog->labelText(QFileDialog::Accept), QStringLiteral("Choose Folder"));
    folderDialog->findChild<QLineEdit*>()->setText(folder.path());
    static_cast<QDialog*>(folderDialog)->accept();
    ASSERT_TRUE(ends(chosen));
    EXPECT_EQ(chosen.result(), folder.path());
}

}  // namespace
