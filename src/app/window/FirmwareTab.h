// The "Firmware" tab.
#pragma once

#include <vector>

#include <QWidget>

#include "FirmwarePanel.h"

class LogField;
class QAction;
class QLineEdit;
class QMenu;
class QPushButton;
class QToolButton;
class SendButton;
class ValueLabel;

class FirmwareTab final : public QWidget, public FirmwarePanel {
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
    void setGetRevButton1Enabled(bool enabled) override;
    void setCanGiveUp(bool canGiveUp) override;
    void moveStatusFieldToEnd() override;
    void offerImages(const QStringList& names) override;

    // What starts a flow, and not the log.
    void lock(bool isLocked);
    LogField& statusField() { return *StatusField; }

    // With the shortcut key "a", "c" and "x" act on the log, wherever the focus is on this tab. True when
    // the log has taken the key.
    bool Event_KeyDown(const QKeyEvent& event);

Q_SIGNALS:
    void DefaultButton_Action();
    void BrowseButton_Action();
    void GetRevButton_Action();
    void GetRevButton1_Action();
    void CopyWithCurl_Action();
    void GiveUpCopying_Action();
    void SendVLXButton_Action();
    void ImagesButton_Action();
    void imageChosen(const QString& name);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    QWidget* lockable(std::initializer_list<QWidget*> buttons, Qt::Orientation direction);
    QWidget* folderGroup();
    QWidget* checkGroup();
    QWidget* versionGroup();
    QWidget* logGroup();
    void makeCopyMenu();
    void makeImagesButton();
    void StatusField_TextChange();

    // The buttons by their groups, to be locked apart from their own enabled states.
    std::vector<QWidget*> m_lockable;
    QLineEdit* FolderPath;
    QPushButton* DefaultButton;
    QPushButton* BrowseButton;
    QPushButton* GetRevButton;
    QPushButton* GetRevButton1;
    // The context menu of GetRevButton1.
    QMenu* m_copyMenu;
    QAction* CopyWithCurl;
    QAction* GiveUpCopying;
    ValueLabel* MCUinstalled;
    ValueLabel* MCUavailable;
    // The images of the folder, for one that is not the newest.
    QToolButton* ImagesButton;
    QMenu* m_imagesMenu;
    SendButton* SendVLXButton;
    LogField* StatusField;
};
