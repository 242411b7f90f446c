#include "LogField.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>

LogField::LogField(SelectAll selectAll, QWidget* parent) : QTextEdit(parent), m_selectAll(selectAll) {
    setReadOnly(true);
    setAcceptRichText(false);
    setUndoRedoEnabled(false);
    // The cursor is seen and moved by keyboard although nothing can be typed.
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setTabChangesFocus(true);
    document()->setMaximumBlockCount(LineLimit);
}

void LogField::copySelection() {
    if (hasSelection())
        copy();
}

void LogField::cutSelection() {
    copySelection();
    deleteSelection();
}

void LogField::deleteSelection() {
    textCursor().removeSelectedText();
}

void LogField::appendText(const QString& text) {
    QTextCursor end(document());
    end.movePosition(QTextCursor::End);
    end.insertText(text);
    setTextCursor(end);
    ensureCursorVisible();
}

void LogField::keyPressEvent(QKeyEvent* event) {
    const bool isShortcut =
        event->modifiers() == Qt::ControlModifier &&
        (event->key() == Qt::Key_A || event->key() == Qt::Key_C || event->key() == Qt::Key_X);
    if (!isShortcut) {
        QTextEdit::keyPressEvent(event);
        return;
    }
    shortcutKey(event->key());
    // Not handled, for the windows around; the base class would select all in any case.
    event->ignore();
}

void LogField::shortcutKey(int key) {
    if (key == Qt::Key_A && (hasSelection() || m_selectAll == SelectAll::Always))
        selectAll();
    else if (key == Qt::Key_C)
        copySelection();
    else if (key == Qt::Key_X)
        cutSelection();
}

void LogField::contextMenuEvent(QContextMenuEvent* event) {
    // Lines that come while the menu is open move the insertion point: the menu keeps the selection.
    const QTextCursor selection = textCursor();
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    const auto add = [this, menu, selection](const QString& text, void (LogField::*action)()) {
        menu->addAction(text, this, [this, selection, action] { inSelection(selection, action); })
            ->setEnabled(selection.hasSelection());
    };
    add(QStringLiteral("Copy"), &LogField::copySelection);
    add(QStringLiteral("Cut"), &LogField::cutSelection);
    add(QStringLiteral("Delete"), &LogField::deleteSelection);
    menu->popup(event->globalPos());
}

void LogField::inSelection(const QTextCursor& selection, void (LogField::*action)()) {
    setTextCursor(selection);
    (this->*action)();
}
