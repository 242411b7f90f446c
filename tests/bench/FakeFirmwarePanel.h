// The labels and buttons of the firmware tab without a window.
#pragma once

#include <QStringList>

#include "FirmwarePanel.h"

class FakeFirmwarePanel final : public FirmwarePanel {
public:
    QString MCUinstalledText() const override { return installed; }
    void setMCUinstalledText(const QString& text) override {
        installed = text;
        installedHistory += text;
    }
    QString MCUavailableText() const override { return available; }
    void setMCUavailableText(const QString& text) override { available = text; }
    void setFolderPath(const QString& path) override { folder = path; }
    void setSendVLXButtonEnabled(bool enabled) override { canSend = enabled; }

    QString installed = QStringLiteral("---");
    QStringList installedHistory;
    QString available = QStringLiteral("missing");
    QString folder;
    bool canSend = false;
};
