#include "SendFirmware.h"

Task<> SendFirmware::SendVLXButton_Action() {
    m_panel.setSendVLXButtonEnabled(false);
    co_await m_folder.Checklocalfiles();
    if (m_folder.HasRequiredFiles()) {
        m_panel.moveStatusFieldToEnd();
        m_globals.SetStatusText(QStringLiteral("Loading firmware from ") + m_globals.m_FolderPath, false);
        co_await m_loadMcu();
    } else {
        co_await m_dialogs.MsgBox(
            QStringLiteral("A required firmware file is missing.\n\nCopy new files from Tessarin server."));
    }
    m_globals.SetStatusText(QStringLiteral("Ready"), false);
    m_panel.setSendVLXButtonEnabled(true);
}
