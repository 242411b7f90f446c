// The "Firmware" tab.
#pragma once

#include <QWidget>

#include "FirmwarePanel.h"
#include "RetrievalView.h"

class LogField;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;

class FirmwareTab final : public QWidget, public FirmwarePanel, public RetrievalView {
    Q_OBJECT

public:
    FirmwareTab();

    QString MCUinstalledText() const override;
    void setMCUinstalledText(const QString& text) override;
    QString MCUavailableText() const override;
    void setMCUavailableText(const QString& text) override;
    void setFolderPath(const QString& path) override;
    void setSendVLXButtonEnabled(bool enabled) override;
    void setGetRevButtonEnabled(bool enabled) override;
    void moveStatusFieldToEnd() override;

    LogField& statusField() { return *StatusField; }

Q_SIGNALS:
    void DefaultButton_Action();
    void BrowseButton_Action();
    void GetRevButton_Action();
    void SendVLXButton_Action();

protected:
    // Select all, copy and cut of the log answer from wherever the focus is on this tab.
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    QWidget* folderGroup();
    QWidget* checkGroup();
    QWidget* versionGroup();
    QWidget* logGroup();
    void statusFieldShortcut(const QKeyEvent& event);

    QLineEdit* FolderPath;
    QPushButton* DefaultButton;
    QPushButton* BrowseButton;
    QPushButton* GetRevButton;
    QPushButton* GetRevButton1;
    QLabel* MCUinstalled;
    QLabel* MCUavailable;
    QPushButton* SendVLXButton;
    LogField* StatusField;
};
