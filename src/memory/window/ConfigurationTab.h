// The tab with the tools for the amplifier's memory.
#pragma once

#include <QWidget>

class QPushButton;

// The buttons are disabled at first.
class ConfigurationTab : public QWidget {
    Q_OBJECT

public:
    explicit ConfigurationTab(QWidget* parent = nullptr);

    // All four buttons.
    void enableTools(bool enabled);
    void setEditBannerButtonEnabled(bool enabled);

Q_SIGNALS:
    void SaveConfig_Action();
    void RestoreConfig_Action();
    void DisplayFaultTable_Action();
    void EditBannerButton_Action();

private:
    QPushButton* SaveConfig;
    QPushButton* RestoreConfig;
    QPushButton* DisplayFaultTable;
    QPushButton* EditBannerButton;
};
