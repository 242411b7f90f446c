// The window that tells of new firmware and offers its release notes.
#pragma once

#include <functional>

#include <QDialog>

#include "Flows.h"
#include "Gate.h"
#include "Globals.h"

// Modal to the main window; the release notes open beside it.
class MessageWindow final : public QDialog {
    Q_OBJECT

public:
    using Notes = std::function<Task<>()>;

    // `showNotes` is what "View Release Notes" does.
    MessageWindow(Clock& clock, Globals& globals, Flows::ErrorHandler onError, Notes showNotes,
                  QWidget& mainWindow);

    // Shows the window and ends when the user has closed it.
    Task<> Run();

    void done(int result) override;

private:
    void BevelButton1_Action();
    void BevelButton2_Action();

    Globals& m_globals;
    Notes m_showNotes;
    Gate m_closed;
    Flows m_flows;
};
