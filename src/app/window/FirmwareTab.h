// The "Firmware" tab.
#pragma once

#include <QWidget>

#include "FirmwarePanel.h"
#include "RetrievalView.h"

class LogField;
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

    // With the shortcut key "a", "c" and "x" act on the log, wherever the focus is on this tab. True when
    // the log has taken the key.
    bool Event_KeyDown(const QKeyEvent& event);

Q_SIGNALS:
    void DefaultButton_Action();
    void BrowseButton_Action();
    void GetRevButton_Action();
    void SendVLXButton_Action();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget* folderGroup();
    QWidget* checkGroup();
    QWidget* versionGroup();
    QWidget* logGroup();
    void StatusField_TextChange();

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
