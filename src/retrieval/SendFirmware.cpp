#include "SendFirmware.h"

#include <QScopeGuard>

Task<> SendFirmware::SendVLXButton_Action() {
    m_panel.setSendVLXButtonEnabled(false);
    co_await m_folder.Checklocalfiles();
    co_await send();
    m_panel.setSendVLXButtonEnabled(true);
}

Task<> SendFirmware::send() {
    if (m_folder.HasRequiredFiles()) {
        m_panel.moveStatusFieldToEnd();
        m_globals.SetStatusText(QStringLiteral("Loading firmware from ") + m_globals.m_FolderPath, false);
        co_await m_loadMcu();
    } else {
        co_await m_dialogs.MsgBox(
            QStringLiteral("A required firmware file is missing.\n\nCopy new files from Tessarin server."));
    }
    m_globals.SetStatusText(QStringLiteral("Ready"), false);
}

Task<> SendFirmware::ImagesButton_Action() {
    const QStringList names = co_await m_folder.images();
    m_panel.offerImages(names);
}

Task<> SendFirmware::sendImage(QString name) {
    m_panel.setSendVLXButtonEnabled(false);
    co_await m_folder.Checklocalfiles();
    const bool isWanted = co_await isWantedInPlaceOf(m_folder.versionedFilename.m_mstrPath, name);
    if (isWanted) {
        const auto newestAgain = qScopeGuard([this] { m_folder.chooseImage(QString()); });
        m_folder.chooseImage(name);
        co_await send();
    }
    co_await m_folder.Checklocalfiles();
    m_panel.setSendVLXButtonEnabled(true);
}

Task<bool> SendFirmware::isWantedInPlaceOf(QString newest, QString name) {
    if (name == newest)
        co_return true;
    const MessageRequest request{
        .message = QStringLiteral("%1 is not the newest image in the folder: that is %2.").arg(name, newest),
        .explanation = QStringLiteral("Send it anyway?"),
        .actionButton = QStringLiteral("No"),
        .alternateButton = QStringLiteral("Yes")};
    const bool isRefused = co_await m_dialogs.askCaution(request);
    co_return !isRefused;
}
