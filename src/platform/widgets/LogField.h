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
    // Appends at the end and scrolls along.
    void appendText(const QString& text);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    // StatusField_MouseDown, TesterTermField_MouseDown: a contextual click.
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    // StatusField_KeyDown, TesterTermField_KeyDown.
    void shortcutKey(int key);
    void inSelection(const QTextCursor& selection, void (LogField::*action)());

    SelectAll m_selectAll;
};
