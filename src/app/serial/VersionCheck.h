// Tells the user what sensing has found.
#pragma once

#include <functional>

#include "FirmwarePanel.h"
#include "PortPanel.h"
#include "RadioState.h"
#include "WindowState.h"

class VersionCheck {
public:
    using CheckNewVersion = std::function<Task<>()>;

    VersionCheck(Platform& platform, Globals& globals, RadioState& radioState, WindowState& window,
                 const PortPanel& portPanel, FirmwarePanel& firmwarePanel)
        : m_dialogs(platform.dialogs),
          Serial1(platform.Serial1),
          m_globals(globals),
          m_radioState(radioState),
          m_window(window),
          m_portPanel(portPanel),
          m_firmwarePanel(firmwarePanel) {}

    // What is told of an amplifier that does not answer, and of one that waits in its loader.
    static QString silenceText() { return QStringLiteral("VLX is not responding."); }
    static QString waitingText(const Globals& globals);

    // Senses, logs the outcome, and shows the version on the firmware tab; true when the main firmware
    // answered.
    Task<bool> CheckVLXVersion();
    // The same with message boxes, then the comparison with the local files.
    Task<> TestCommButtton_Action(CheckNewVersion compare);

private:
    void tellSilence();
    QString versionText() const;
    QString portName() const;
    QString portAndSpeedText() const;

    Dialogs& m_dialogs;
    const SerialPort& Serial1;
    Globals& m_globals;
    RadioState& m_radioState;
    WindowState& m_window;
    const PortPanel& m_portPanel;
    FirmwarePanel& m_firmwarePanel;
};
