// The labels and buttons of the firmware tab that sensing, the firmware folder and the load session drive.
#pragma once

#include <QString>

class FirmwarePanel {
public:
    FirmwarePanel() = default;
    FirmwarePanel(const FirmwarePanel&) = delete;
    FirmwarePanel& operator=(const FirmwarePanel&) = delete;
    virtual ~FirmwarePanel() = default;

    virtual QString MCUinstalledText() const = 0;
    virtual void setMCUinstalledText(const QString& text) = 0;
    virtual QString MCUavailableText() const = 0;
    virtual void setMCUavailableText(const QString& text) = 0;
    virtual void setFolderPath(const QString& path) = 0;
    virtual void setSendVLXButtonEnabled(bool enabled) = 0;
};
