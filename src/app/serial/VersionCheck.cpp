#include "VersionCheck.h"

#include "Text.h"

namespace {

const QString WhatToTry = QStringLiteral(
    "Is the amplifier on, and its cable in the chosen port? If a firmware load was broken off: remove the "
    "amplifier's power, switch it on, and send the firmware again.");

}  // namespace

QString VersionCheck::waitingText(const Globals& globals) {
    return QStringLiteral("VLX waiting for power button or firmware load. RS-232 speed %1 bit/s")
        .arg(Text::Format(globals.m_dwBaudRate, u"#####"));
}

QString VersionCheck::versionText() const {
    return QStringLiteral("VLX Version %1. %2").arg(m_globals.m_strMcuVersion, portAndSpeedText());
}

// The port in use by its own name: the list may have changed since, or its path was typed.
QString VersionCheck::portName() const {
    const QString name = Serial1.serialPort().Name;
    return name.isEmpty() ? m_portPanel.serialPortMenuText() : name;
}

QString VersionCheck::portAndSpeedText() const {
    return QStringLiteral("%1 RS-232 speed %2 bit/s")
        .arg(portName(), Text::Format(m_globals.m_dwBaudRate, u"#####"));
}

void VersionCheck::tellSilence() {
    m_globals.SetStatusText(silenceText(), false);
    if (m_window.mStartup)
        m_globals.SetStatusText(WhatToTry, false);
}

Task<bool> VersionCheck::CheckVLXVersion() {
    const bool ok = co_await m_radioState.Refresh(1);
    if (m_globals.isMain())
        m_globals.SetStatusText(versionText(), false);
    else if (m_globals.isBootloader())
        m_globals.SetStatusText(waitingText(m_globals), false);
    else
        tellSilence();
    // A bootstrap loader too waits for firmware, as after a load that failed.
    if (!m_globals.isUnknown())
        m_firmwarePanel.setSendVLXButtonEnabled(true);
    if (ok) {
        m_firmwarePanel.setMCUinstalledText(m_globals.m_strMcuVersion);
    } else if (!m_window.mStartup) {
        m_firmwarePanel.setMCUinstalledText(QStringLiteral("---"));
    }
    co_return ok;
}

Task<> VersionCheck::TestCommButtton_Action(CheckNewVersion compare) {
    const bool ok = co_await m_radioState.Refresh(1);
    if (m_globals.isBootloader()) {
        co_await m_dialogs.MsgBox(waitingText(m_globals), BoxKind::Notice);
        m_globals.SetStatusText(waitingText(m_globals), false);
    } else if (m_globals.isMain()) {
        // A small letter in the box, a capital in the log.
        co_await m_dialogs.MsgBox(
            QStringLiteral("VLX version %1. \n%2").arg(m_globals.m_strMcuVersion, portAndSpeedText()),
            BoxKind::Notice);
        m_globals.SetStatusText(versionText(), false);
    } else {
        co_await m_dialogs.MsgBox(silenceText());
    }
    m_firmwarePanel.setMCUinstalledText(ok ? m_globals.m_strMcuVersion : QStringLiteral("---"));
    const StartupSpan silent(m_window);
    co_await compare();
}
