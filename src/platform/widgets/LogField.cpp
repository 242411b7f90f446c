#include "LogField.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QRegularExpression>

#include "Keys.h"

namespace {

// Of "14:05:07 " before a message; 0 when there is none.
qsizetype lengthOfTime(const QString& line) {
    static const QRegularExpression time(QStringLiteral("^\\d\\d:\\d\\d:\\d\\d "));
    return time.match(line).capturedLength();
}

}  // namespace

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
    insertAtEnd(text);
}

void LogField::insertAtEnd(const QString& text, const QTextCharFormat& format) {
    QTextCursor held = textCursor();
    const int anchor = held.anchor();
    const int position = held.position();
    QTextCursor end(document());
    end.movePosition(QTextCursor::End);
    end.insertText(text, format);
    if (isSelecting()) {
        // A selection that reached the end has grown with the text.
        held.setPosition(anchor);
        held.setPosition(position, QTextCursor::KeepAnchor);
        setTextCursor(held);
        return;
    }
    setTextCursor(end);
    ensureCursorVisible();
}

void LogField::appendMessage(const QString& line) {
    const qsizetype timeLength = lengthOfTime(line);
    const QString message = line.mid(timeLength);
    if (message != m_lastMessage) {
        m_lastMessage = message;
        m_times = 1;
        m_shownCount.clear();
        appendText(line);
        return;
    }
    ++m_times;
    replaceCount(line.left(timeLength) + QStringLiteral("... %1 times").arg(m_times));
}

// The last line but the empty one is the count of before, unless the user has cut it.
void LogField::replaceCount(const QString& count) {
    QTextCursor last(document());
    last.movePosition(QTextCursor::End);
    last.movePosition(QTextCursor::PreviousBlock);
    last.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
    if (!m_shownCount.isEmpty() && last.selectedText() == m_shownCount)
        last.insertText(count);
    else
        appendText(count + u'\n');
    m_shownCount = count;
}

void LogField::keyPressEvent(QKeyEvent* event) {
    m_isShiftHeld = event->key() == Qt::Key_Shift || event->modifiers().testFlag(Qt::ShiftModifier);
    const bool isOwn = event->key() == Qt::Key_A || event->key() == Qt::Key_C || event->key() == Qt::Key_X;
    if (!isOwn || !isShortcut(*event)) {
        QTextEdit::keyPressEvent(event);
        return;
    }
    shortcutKey(event->key());
    // Not handled, for the windows around; the base class would select all in any case.
    event->ignore();
}

void LogField::keyReleaseEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Shift)
        m_isShiftHeld = false;
    QTextEdit::keyReleaseEvent(event);
}

void LogField::mousePressEvent(QMouseEvent* event) {
    m_isMouseHeld = event->button() == Qt::LeftButton;
    QTextEdit::mousePressEvent(event);
}

void LogField::mouseReleaseEvent(QMouseEvent* event) {
    m_isMouseHeld = false;
    QTextEdit::mouseReleaseEvent(event);
}

void LogField::focusOutEvent(QFocusEvent* event) {
    m_isMouseHeld = false;
    m_isShiftHeld = false;
    QTextEdit::focusOutEvent(event);
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
    if (m_offersSaving) {
        menu->addSeparator();
        menu->addAction(QStringLiteral("Save Log..."), this, &LogField::saveLogChosen);
    }
    menu->popup(event->globalPos());
}

void LogField::inSelection(const QTextCursor& selection, void (LogField::*action)()) {
    setTextCursor(selection);
    (this->*action)();
}
