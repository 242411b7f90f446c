// Tells the user of new firmware.
#pragma once

#include "NewFirmwareNotice.h"
#include "ReleaseNotes.h"

class NewFirmwareMessage final : public NewFirmwareNotice {
public:
    NewFirmwareMessage(ReleaseNotes& notes, QWidget& mainWindow) : m_notes(notes), m_mainWindow(mainWindow) {}

    Task<> show() override { return m_notes.showMessageWindow(m_mainWindow); }

private:
    ReleaseNotes& m_notes;
    QWidget& m_mainWindow;
};
