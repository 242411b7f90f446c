#include <QClipboard>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QLineEdit>
#include <QMenu>
#include <QPointer>
#include <QTest>

#include "AppBench.h"
#include "TesterTermField.h"

using namespace std::chrono_literals;

namespace {

struct TesterBench : AppBench {
    TesterBench() {
        start();
        chooseTab(Tab::CommandTester);
        clock().advance(100ms);
        port().clearWritten();
    }

    QLineEdit* field() { return control<QLineEdit>(QStringLiteral("TesterField")); }
    TesterTermField* terminal() { return control<TesterTermField>(QStringLiteral("TesterTermField")); }
    QDialog* openEditor() {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        press(QStringLiteral("EditMacrosButton"));
        return child<QDialog>(window(), QStringLiteral("CommandMacroWin"));
    }
    QString firstCaption() { return control<QPushButton>(QStringLiteral("CommandMacroButton0"))->text(); }
    QColor colourAt(int position) {
        QTextCursor cursor(terminal()->document());
        cursor.setPosition(position);
        return cursor.charFormat().foreground().color();
    }
};

TEST(TesterTest, SemicolonSendsAndTheAnswerFollowsInBlack) {
    TesterBench bench;
    typeText(*bench.field(), QStringLiteral("^RVM;"));
    EXPECT_EQ(bench.port().written(), "^RVM;");
    EXPECT_EQ(bench.field()->text(), QString());
    bench.clock().advance(100ms);
    EXPECT_EQ(bench.terminal()->toPlainText(), QStringLiteral("\n^RVM;^RVM01.23;"));
    EXPECT_EQ(bench.colourAt(3), QColor(0, 0x88, 0));
    EXPECT_EQ(bench.colourAt(9), QColor(Qt::black));
}

TEST(TesterTest, ReturnSendsWithoutTerminator) {
    TesterBench bench;
    typeText(*bench.field(), QStringLiteral(" ^TM"));
    typeKey(*bench.field(), QStringLiteral("\r"), Qt::Key_Return);
    EXPECT_EQ(bench.port().written(), "^TM");
    bench.port().clearWritten();
    typeKey(*bench.field(), QStringLiteral("\r"), Qt::Key_Enter);
    EXPECT_EQ(bench.port().written(), QByteArray());
    typeKey(*bench.field(), QStringLiteral(";"));
    EXPECT_EQ(bench.port().written(), ";");
}

TEST(TesterTest, BytesThatDoNotPrintAreSpelledOut) {
    TesterBench bench;
    bench.amplifier().emitNoise(QByteArray("ok\r\x01\x7f\x80\xff~ ", 9));
    bench.clock().advance(100ms);
    EXPECT_EQ(bench.terminal()->toPlainText(), QStringLiteral("ok\\xD\\x1\\x7F\\x80\\xFF~ "));
}

TEST(TesterTest, MacroIsSentAsItStandsBehindTheLastText) {
    AppBench bench;
    bench.givePreferences("Macro2Button\nA & B\nMacro2Command\n^BN05;^BN; \n");
    bench.start();
    bench.chooseTab(Tab::CommandTester);
    bench.port().clearWritten();
    EXPECT_EQ(bench.control<QPushButton>(QStringLiteral("CommandMacroButton1"))->text(),
              QStringLiteral("A && B"));
    EXPECT_EQ(bench.control<QPushButton>(QStringLiteral("CommandMacroButton14"))->text(),
              QStringLiteral("Macro 15"));
    bench.press(QStringLiteral("CommandMacroButton1"));
    bench.press(QStringLiteral("CommandMacroButton0"));
    EXPECT_EQ(bench.port().written(), "^BN05;^BN; ");
    EXPECT_EQ(bench.control<QTextEdit>(QStringLiteral("TesterTermField"))->toPlainText(),
              QStringLiteral("^BN05;^BN; "));
    EXPECT_EQ(bench.amplifier().band(), 0);
    bench.clock().advance(200ms);
    EXPECT_EQ(bench.amplifier().band(), 5);
}

TEST(TesterTest, ClipTakesTheNewestText) {
    TesterBench bench;
    bench.terminal()->setPlainText(QString(31990, u'a') + QString(20, u'b'));
    bench.terminal()->moveCursor(QTextCursor::End);
    bench.terminal()->appendReceived(QStringLiteral("c"));
    EXPECT_EQ(bench.terminal()->toPlainText(), QString(16010, u'a') + u'c');
    // At the limit itself nothing goes.
    bench.terminal()->setPlainText(QString(32000, u'a'));
    bench.terminal()->moveCursor(QTextCursor::End);
    bench.terminal()->appendReceived(QStringLiteral("c"));
    EXPECT_EQ(bench.terminal()->toPlainText().size(), 32001);
}

TEST(TesterTest, ShortcutsOfTheTerminal) {
    TesterBench bench;
    bench.terminal()->setPlainText(QStringLiteral("abcdef"));
    typeKey(*bench.terminal(), {}, Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(bench.terminal()->textCursor().selectedText(), QStringLiteral("abcdef"));
    typeKey(*bench.terminal(), {}, Qt::Key_X, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("abcdef"));
    EXPECT_EQ(bench.terminal()->toPlainText(), QString());
    typeText(*bench.terminal(), QStringLiteral("typed"));
    EXPECT_EQ(bench.terminal()->toPlainText(), QString()) << "the field is read-only";
}

TEST(TesterTest, EditorSavesAndCancels) {
    TesterBench bench;
    QDialog* editor = bench.openEditor();
    child<QLineEdit>(*editor, QStringLiteral("MacroField0"))->setText(QStringLiteral("Band\n5"));
    child<QLineEdit>(*editor, QStringLiteral("MacroCommand0"))->setText(QStringLiteral("^BN05;"));
    child<QPushButton>(*editor, QStringLiteral("BevelButton1"))->click();
    EXPECT_EQ(bench.firstCaption(), QStringLiteral("Band 5"));
    bench.press(QStringLiteral("CommandMacroButton0"));
    EXPECT_EQ(bench.port().written(), "^BN05;");

    editor = bench.openEditor();
    EXPECT_EQ(child<QLineEdit>(*editor, QStringLiteral("MacroCommand0"))->text(), QStringLiteral("^BN05;"));
    child<QLineEdit>(*editor, QStringLiteral("MacroField0"))->setText(QStringLiteral("other"));
    child<QPushButton>(*editor, QStringLiteral("BevelButton2"))->click();
    EXPECT_EQ(bench.firstCaption(), QStringLiteral("Band 5"));
    bench.quit();
    bench.start();
    EXPECT_EQ(bench.firstCaption(), QStringLiteral("Band 5"));
}

TEST(TesterTest, KeysOfAnyKeyboardSendOnceAndShortcutsDoNot) {
    TesterBench bench;
    const Qt::KeyboardModifiers ways[] = {Qt::GroupSwitchModifier, Qt::AltModifier, Qt::ShiftModifier,
                                          Qt::ControlModifier | Qt::AltModifier};
    for (const auto modifiers : ways)
        typeKey(*bench.field(), QStringLiteral(";"), Qt::Key_Comma, modifiers);
    QKeyEvent held(QEvent::KeyPress, Qt::Key_Semicolon, Qt::NoModifier, QStringLiteral(";"), true);
    QApplication::sendEvent(bench.field(), &held);
    typeText(*bench.field(), QStringLiteral("abc"));
    typeKey(*bench.field(), QStringLiteral("\x03"), Qt::Key_C, Qt::ControlModifier);
    typeKey(*bench.field(), QStringLiteral("\r"), Qt::Key_M, Qt::ControlModifier);
    typeKey(*bench.field(), QStringLiteral(";"), Qt::Key_Semicolon, Qt::ControlModifier);
    EXPECT_EQ(bench.port().written(), ";;;;");
    EXPECT_EQ(bench.field()->text(), QStringLiteral("abc"));
}

TEST(TesterTest, CharacterThatTheLineCannotCarryIsRefused) {
    TesterBench bench;
    bench.field()->setText(QStringLiteral("^BN\u20ac"));
    typeKey(*bench.field(), QStringLiteral(";"));
    EXPECT_EQ(bench.port().written(), QByteArray());
    EXPECT_EQ(bench.field()->text(), QStringLiteral("^BN\u20ac"));
    EXPECT_TRUE(bench.label(QStringLiteral("DisplayStatus")).contains(QStringLiteral("\u20ac")));
    bench.field()->setText(QStringLiteral("\u00ff"));
    typeKey(*bench.field(), QStringLiteral(";"));
    EXPECT_EQ(bench.port().written(), "\xff;");
    EXPECT_EQ(bench.label(QStringLiteral("DisplayStatus")), QStringLiteral("Ready"));
}

TEST(TesterTest, SelectionThatIsHeldSurvivesArrivals) {
    TesterBench bench;
    bench.terminal()->setPlainText(QStringLiteral("first second"));
    const auto arrive = [&bench](const char* bytes) {
        bench.amplifier().emitNoise(bytes);
        bench.clock().advance(100ms);
        return bench.terminal()->textCursor().selectedText();
    };
    QTextCursor all(bench.terminal()->document());
    all.select(QTextCursor::Document);
    typeKey(*bench.terminal(), {}, Qt::Key_Home, Qt::ShiftModifier);
    bench.terminal()->setTextCursor(all);
    QKeyEvent shift(QEvent::KeyPress, Qt::Key_Shift, Qt::ShiftModifier);
    QApplication::sendEvent(bench.terminal(), &shift);
    EXPECT_EQ(arrive("!"), QStringLiteral("first second"));
    typeKey(*bench.terminal(), {}, Qt::Key_Shift, Qt::ShiftModifier);
    EXPECT_EQ(arrive("?"), QString());
    EXPECT_EQ(bench.terminal()->toPlainText(), QStringLiteral("first second!?"));

    QTest::mousePress(bench.terminal()->viewport(), Qt::LeftButton);
    bench.terminal()->setTextCursor(all);
    bench.terminal()->setPlainText(QString(60000, u'a'));
    bench.terminal()->selectAll();
    arrive("x");
    EXPECT_LE(bench.terminal()->document()->characterCount(), 48000) << "a held selection still clips";
    QTest::mouseRelease(bench.terminal()->viewport(), Qt::LeftButton);
}

TEST(TesterTest, LongCaptionIsElidedAndToldWhole) {
    AppBench bench;
    const QByteArray longCaption = QByteArray("Antenna ").repeated(20).trimmed();
    bench.givePreferences("Macro1Button\n" + longCaption + "\nMacro1Command\n^BN05;<b>\n");
    bench.start();
    bench.chooseTab(Tab::CommandTester);
    auto* button = bench.control<QPushButton>(QStringLiteral("CommandMacroButton0"));
    EXPECT_TRUE(button->text().endsWith(QChar(0x2026)));
    EXPECT_LE(button->fontMetrics().horizontalAdvance(button->text()), button->width());
    EXPECT_TRUE(button->toolTip().contains(QString::fromLatin1(longCaption)));
    EXPECT_TRUE(button->toolTip().contains(QStringLiteral("^BN05;&lt;b&gt;")));
    EXPECT_EQ(spokenName(*button), QString::fromLatin1(longCaption));
}

TEST(TesterTest, EscapeInTheEditorAsksBeforeChangesAreGivenUp) {
    TesterBench bench;
    QPointer<QDialog> editor = bench.openEditor();
    auto* command = child<QLineEdit>(*editor, QStringLiteral("MacroCommand0"));
    typeKey(*command, QStringLiteral("^"));
    typeKey(*command, QStringLiteral("\r"), Qt::Key_Return);
    EXPECT_TRUE(editor->isVisible()) << "Return closes nothing";
    bench.dialogs().cautionAnswers = {true, false};
    for (const bool stays : {true, false}) {
        typeKey(*command, {}, Qt::Key_Escape);
        bench.clock().advance(10ms);
        EXPECT_EQ(editor && editor->isVisible(), stays);
    }
    EXPECT_EQ(bench.dialogs().shown.size(), 2);

    editor = bench.openEditor();
    typeKey(*editor, {}, Qt::Key_Escape);
    EXPECT_FALSE(editor->isVisible());
    EXPECT_EQ(bench.dialogs().shown.size(), 2) << "nothing was changed";
}

TEST(TesterTest, ContextMenuKeepsItsSelectionWhileAnswersArrive) {
    TesterBench bench;
    bench.terminal()->setPlainText(QStringLiteral("first second"));
    QContextMenuEvent click(QContextMenuEvent::Keyboard, QPoint(5, 5), QPoint(5, 5));
    QApplication::sendEvent(bench.terminal()->viewport(), &click);
    auto* menu = child<QMenu>(*bench.terminal(), QString());
    EXPECT_FALSE(menu->actions().at(0)->isEnabled());
    delete menu;

    QTextCursor first(bench.terminal()->document());
    first.setPosition(5, QTextCursor::KeepAnchor);
    bench.terminal()->setTextCursor(first);
    QApplication::sendEvent(bench.terminal()->viewport(), &click);
    menu = child<QMenu>(*bench.terminal(), QString());
    QStringList captions;
    for (const QAction* action : menu->actions())
        captions += action->text();
    EXPECT_EQ(captions, (QStringList{"Copy", "Cut", "Delete"}));
    bench.amplifier().emitNoise("!");
    bench.clock().advance(100ms);
    menu->actions().at(1)->trigger();
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("first"));
    EXPECT_EQ(bench.terminal()->toPlainText(), QStringLiteral(" second!"));
}

TEST(TesterTest, MacroCommandsHaveTheirOwnShortcuts) {
    TesterBench bench;
    QDialog* editor = bench.openEditor();
    auto* command = child<QLineEdit>(*editor, QStringLiteral("MacroCommand3"));
    QGuiApplication::clipboard()->setText(QStringLiteral("^BN05;\n^BN;"));
    typeKey(*command, {}, Qt::Key_V, Qt::ControlModifier);
    typeKey(*command, {}, Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(command->selectedText().size(), command->text().size());
    typeKey(*command, {}, Qt::Key_X, Qt::ControlModifier);
    EXPECT_EQ(command->text(), QString());
    typeKey(*command, {}, Qt::Key_V, Qt::ControlModifier);
    child<QPushButton>(*editor, QStringLiteral("BevelButton1"))->click();
    bench.press(QStringLiteral("CommandMacroButton3"));
    EXPECT_EQ(bench.port().written(), "^BN05; ^BN;");
}

}  // namespace
