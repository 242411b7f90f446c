// A text area that the program fills and that the user may only copy, cut and delete from: StatusField,
// TesterTermField and ActivityLog.
#pragma once

#include <QTextEdit>

class LogField : public QTextEdit {
    Q_OBJECT

public:
    // When the shortcut key with "a" selects all: only with a selection there already, or always.
    enum class SelectAll { NeedsSelection, Always };

    // More lines than a long evening writes; beyond it the oldest go.
    static constexpr int LineLimit = 100000;

    explicit LogField(SelectAll selectAll, QWidget* parent = nullptr);

    bool hasSelection() const { return textCursor().hasSelection(); }
    void copySelection();
    void cutSelection();
    void deleteSelection();
    // Appends at the end and scrolls along. A selection that the user is just making stays.
    void appendText(const QString& text);
    // The same with one message, its line end included. One that says the same again, at whatever time of
    // day stands before it, is counted in a line of its own: "... 12 times".
    void appendMessage(const QString& line);

    // Offers "Save Log..." in the context menu.
    void offerSaving() { m_offersSaving = true; }
    // The mouse or the Shift key holds the selection.
    bool isSelecting() const { return m_isMouseHeld || m_isShiftHeld; }

Q_SIGNALS:
    void saveLogChosen();

protected:
    void insertAtEnd(const QString& text, const QTextCharFormat& format = {});
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    // StatusField_MouseDown, TesterTermField_MouseDown: a contextual click.
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    // StatusField_KeyDown, TesterTermField_KeyDown.
    void shortcutKey(int key);
    void inSelection(const QTextCursor& selection, void (LogField::*action)());

    void replaceCount(const QString& count);

    SelectAll m_selectAll;
    bool m_offersSaving = false;
    QString m_lastMessage;
    QString m_shownCount;
    int m_times = 0;
    bool m_isMouseHeld = false;
    bool m_isShiftHeld = false;
};
