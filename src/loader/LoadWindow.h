// The window of a firmware load: its progress and its log.
#pragma once

#include <optional>

#include <QDialog>

#include "Gate.h"
#include "Globals.h"
#include "LoadView.h"
#include "MCULoader.h"
#include "RemainingTime.h"
#include "Task.h"
#include "VersionedFilename.h"

class LogField;
class QLabel;
class QProgressBar;
class QPushButton;

// Opens and runs the load at once; modal. It cannot be closed while the load runs. While it is open,
// Globals.m_loadingfirmware is true and every message of the log appears here too.
class LoadWindow : public QDialog, public LoadView {
    Q_OBJECT

public:
    LoadWindow(Platform& platform, Globals& globals, MCULoader& loader, VersionedFilename& versionedFilename,
               QWidget& mainWindow);
    ~LoadWindow() override;

    // Shows the window, loads, and ends when the window has closed: by itself after a good load with
    // trace off, otherwise by the user.
    Task<> Run();

    void setProgressBar1Maximum(int maximum) override;
    void setProgressBar1Value(int value) override;
    void showLongWait(const QString& what, std::chrono::seconds left) override;

    void done(int result) override;

private:
    void Event_Open();
    Task<> BeginLoad();
    void CloseIt_Action();
    void offerToClose();
    void takeLogLine(const QString& line);
    void showLog();
    void tellLongWait();
    void saveActivityLog();

    Clock& m_clock;
    Dialogs& m_dialogs;
    Globals& m_globals;
    MCULoader& m_loader;
    VersionedFilename& m_versionedFilename;
    QWidget& m_mainWindow;
    Gate m_closed;
    bool m_isLoading = false;
    // Lines that wait to be shown together with those that follow.
    QString m_unshownLog;
    ClockTimer m_logPause;
    // The long wait that is shown, and when it ends.
    QString m_longWait;
    Clock::Microseconds m_longWaitEnd{0};
    ClockTimer m_countDown;

    LogField* ActivityLog;
    QProgressBar* ProgressBar1;
    QLabel* LongWaitText;
    RemainingTime m_remaining;
    std::optional<Task<>> m_saving;
    QPushButton* CloseIt;
};

// Shows the window of a load and ends, always with true, when it has closed. How the load went is told by
// the log alone.
Task<bool> LoadMcu(Platform& platform, Globals& globals, MCULoader& loader,
                   VersionedFilename& versionedFilename, QWidget& mainWindow);
