// The firmware tab as the program's flows drive it: sensing, the firmware folder, the load session.
#pragma once

#include <QString>
#include <QStringList>

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
    virtual void setGetRevButtonEnabled(bool enabled) = 0;
    virtual void setGetRevButton1Enabled(bool enabled) = 0;
    // Whether files are being copied, so that this can be given up.
    virtual void setCanGiveUp(bool canGiveUp) = 0;
    virtual void moveStatusFieldToEnd() = 0;
    // A menu of images, as they stand.
    virtual void offerImages(const QStringList& names) = 0;
};
