// The window that lists the amplifier's faults.
#pragma once

#include <functional>
#include <optional>

#include <QDialog>

#include "FaultTable.h"
#include "Flows.h"
#include "Gate.h"
#include "Task.h"

class QPushButton;
class QTreeWidget;

// Modal to the main window. Reads the table as it opens; closing it stops the reading. It cannot be closed
// while a file is being saved.
class FaultTableWindow : public QDialog, public FaultTableView {
    Q_OBJECT

public:
    // Errors of the reading, such as an unknown fault code, go to `onError`; the window stays.
    FaultTableWindow(Clock& clock, Flows::ErrorHandler onError, FaultTable& table, QWidget& mainWindow);

    // Shows the window and ends when the user has closed it.
    Task<> Run();

    void showWaitCursor(bool isShown) override;
    void addRow(const FaultTableRow& row) override;
    void enableSaveToFileButton() override;

    void done(int result) override;

    // The user asks what a fault is, or about the table when no row is marked.
    std::function<void(std::optional<int> code)> helpWanted;

private:
    void layOut();
    void offerHelp();
    void askForHelp();
    void widenColumns();
    void SaveToFileButton_Action();
    Task<> saveToFile();
    void setSaving(bool isSaving);

    FaultTable& m_table;
    QWidget& m_mainWindow;
    Gate m_closed;
    bool m_isSaving = false;

    QTreeWidget* Listbox1;
    QPushButton* SaveToFileButton;
    QPushButton* CloseButton;
    Flows m_flows;
};
