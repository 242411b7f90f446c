// Tells the user of new firmware.
#pragma once

#include "Dialogs.h"
#include "NewFirmwareNotice.h"

class NewFirmwareBox final : public NewFirmwareNotice {
public:
    explicit NewFirmwareBox(Dialogs& dialogs) : m_dialogs(dialogs) {}

    Task<> show() override {
        return m_dialogs.MsgBox(QStringLiteral("New firmware is available for your VLX720."));
    }

private:
    Dialogs& m_dialogs;
};
