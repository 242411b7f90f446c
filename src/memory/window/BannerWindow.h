// The window in which the user edits the power-on banner.
#pragma once

#include <QDialog>

#include "BannerValidator.h"
#include "Dialogs.h"
#include "Flows.h"
#include "Gate.h"
#include "PowerOnBanner.h"
#include "Task.h"

class ProgressWheel;
class QLineEdit;
class QPushButton;

// Modal. Reads the banner as it opens; nothing can be saved before that, nor the window closed while the
// banner is being written.
class BannerWindow : public QDialog {
    Q_OBJECT

public:
    BannerWindow(Clock& clock, Dialogs& dialogs, Flows::ErrorHandler onError, PowerOnBanner& banner,
                 QWidget& mainWindow);

    // Shows the window and ends when the user has closed it.
    Task<> Run();

    void done(int result) override;

private:
    void layOut();
    Task<> read();
    Task<> write();
    void setWriting(bool isWriting);
    void BevelButton1_Action();
    void BevelButton2_Action();

    Dialogs& m_dialogs;
    PowerOnBanner& m_banner;
    Gate m_closed;
    bool m_isWriting = false;
    // As read. An unchanged text is written all the same.
    QString strOriginalText;
    BannerValidator m_validator;

    QLineEdit* EditField1;
    ProgressWheel* ProgressWheel1;
    QPushButton* BevelButton1;
    QPushButton* BevelButton2;
    Flows m_flows;
};
