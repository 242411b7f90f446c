// The real dialogs.
#pragma once

#include <QMessageBox>
#include <QPointer>
#include <QWidget>

#include "Clock.h"
#include "Dialogs.h"

// A dialog belongs to the window that the user is in, else to the main window. If that window is
// destroyed, its dialog goes with it, and the flow that waits for it is cancelled (FlowCancelled). Cancelling
// the task closes the dialog.
//
// Object names: "MsgBox"; "MessageDialog" with "ActionButton" and "AlternateActionButton" (the caution
// dialog and the question before a file is replaced); "SaveDialog", "OpenDialog", "SelectFolderDialog".
class QtDialogs final : public Dialogs {
public:
    explicit QtDialogs(Clock& clock) : m_clock(clock) {}

    void setMainWindow(QWidget* window) { m_mainWindow = window; }
    // No dialog ever belongs to this window, whether the user is in it or not.
    static void keepAwayFrom(QWidget& window);

    void Beep() override;
    using Dialogs::MsgBox;
    Task<> MsgBox(QString text, BoxKind kind) override;
    Task<bool> askCaution(MessageRequest request) override;
    // Asks before it gives the path of a file that exists.
    Task<QString> saveFile(SaveFileRequest request) override;
    Task<QString> openFile(OpenFileRequest request) override;
    Task<QString> selectFolder(SelectFolderRequest request) override;

private:
    enum class Answer { Action, Alternate };

    QWidget* parent() const;
    QMessageBox* makeBox(const QString& name, QMessageBox::Icon icon, const QString& text) const;
    Task<Answer> ask(MessageRequest request, Answer whenClosed);
    Task<bool> mayReplace(QString path);

    Clock& m_clock;
    QPointer<QWidget> m_mainWindow;
};
