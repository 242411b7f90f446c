#include "VersionCheck.h"

#include "Text.h"

namespace {

const QString NotResponding = QStringLiteral("VLX is not responding.");

}  // namespace

QString VersionCheck::waitingText() const {
    return QStringLiteral("VLX waiting for power button or firmware load. RS-232 speed %1 bit/s")
        .arg(Text::Format(m_globals.m_dwBaudRate, u"#####"));
}

QString VersionCheck::portAndSpeedText() const {
    return QStringLiteral("%1 RS-232 speed %2 bit/s")
        .arg(m_portPanel.serialPortMenuText(), Text::Format(m_globals.m_dwBaudRate, u"#####"));
}

Task<bool> VersionCheck::CheckVLXVersion() {
    const bool ok = co_await m_radioState.Refresh(1);
    if (m_globals.isMain())
        m_globals.SetStatusText(
            QStringLiteral("VLX Version %1. %2").arg(m_globals.m_strMcuVersion, portAndSpeedText()), false);
    else if (m_globals.isBootloader())
        m_globals.SetStatusText(waitingText(), false);
    else
        m_globals.SetStatusText(NotResponding, false);
    if (ok) {
        m_firmwarePanel.setMCUinstalledText(m_globals.m_strMcuVersion);
        m_firmwarePanel.setSendVLXButtonEnabled(true);
    } else if (!m_window.mStartup) {
        m_firmwarePanel.setMCUinstalledText(QStringLiteral("---"));
    }
    co_return ok;
}

Task<> VersionCheck::TestCommButtton_Action(CheckNewVersion compare) {
    const bool ok = co_await m_radioState.Refresh(1);
    if (m_globals.isBootloader()) {
        co_await m_dialogs.MsgBox(waitingText());
        m_globals.SetStatusText(waitingText(), false);
    } else if (m_globals.isMain()) {
        // A small letter in the box, a capital in the log.
        co_await m_dialogs.MsgBox(
            QStringLiteral("VLX version %1. \n%2").arg(m_globals.m_strMcuVersion, portAndSpeedText()));
        m_globals.SetStatusText(
            QStringLiteral("VLX Version %1. %2").arg(m_globals.m_strMcuVersion, portAndSpeedText()), false);
    } else {
        co_await m_dialogs.MsgBox(NotResponding);
    }
    m_firmwarePanel.setMCUinstalledText(ok ? m_globals.m_strMcuVersion : QStringLiteral("---"));
    const StartupSpan silent(m_window);
    co_await compare();
}
