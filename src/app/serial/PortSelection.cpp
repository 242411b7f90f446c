#include "PortSelection.h"

#include <algorithm>

#include "Text.h"

void PortSelection::fillMenu() {
    const int count = m_ports.SerialPortCount();
    QStringList names;
    m_rows.clear();
    for (int index = 0; index < count; ++index) {
        m_rows.push_back(m_ports.SerialPort(index));
        names += m_rows.back().Name;
    }
    m_panel.setSerialPortMenuRows(names);
    // Without any port in the list a device path can still be typed.
    m_panel.showByNamePort(count == 0 || m_globals.m_PortCheck);
}

void PortSelection::SerialPortMenu_Open() {
    fillMenu();
}

Task<> PortSelection::openAtStart() {
    const int count = m_ports.SerialPortCount();
    Serial1.setRequestToSend(false);
    if (m_window.m_Port < 0)
        m_window.m_Port = 0;
    if (m_window.m_Port >= count) {
        m_dialogs.Beep();
        co_await m_dialogs.MsgBox(
            QStringLiteral("System has no serial ports!  No way to communicate with VLX!"));
        co_return;
    }
    const PortInfo port = m_ports.SerialPort(m_window.m_Port);
    if (Text::equal(port.Name, u"modem"))
        co_return;
    Serial1.setSerialPort(port);
    if (!Serial1.Open()) {
        m_dialogs.Beep();
        co_await m_dialogs.MsgBox(QStringLiteral("Error opening serial port"));
        logOpenFailure();
    }
}

Task<> PortSelection::SerialPortMenu_Change(int index) {
    if (m_window.mStartup || index < 0)
        co_return;
    m_window.m_Port = index;
    co_await reopen(m_rows.at(static_cast<std::size_t>(index)));
}

Task<> PortSelection::serialPortMenuChosenAgain(int index) {
    if (!Serial1.isOpen())
        co_await SerialPortMenu_Change(index);
}

Task<> PortSelection::RefreshPortsButton_Action() {
    {
        const StartupSpan rebuilding(m_window);
        fillMenu();
        m_panel.setSerialPortMenuIndex(m_window.m_Port);
    }
    if (m_isLost)
        co_await reopenLostPort();
}

// The very port that had gone: what now stands at its index may be another device.
Task<> PortSelection::reopenLostPort() {
    if (m_globals.m_PortCheck) {
        co_await openByName();
        co_return;
    }
    const QString lostPath = Serial1.serialPort().path;
    const auto row = std::find_if(m_rows.begin(), m_rows.end(),
                                  [&lostPath](const PortInfo& port) { return port.path == lostPath; });
    if (row == m_rows.end())
        co_return;
    m_window.m_Port = static_cast<std::int32_t>(row - m_rows.begin());
    {
        const StartupSpan rebuilding(m_window);
        m_panel.setSerialPortMenuIndex(m_window.m_Port);
    }
    co_await reopen(*row);
}

Task<> PortSelection::PortCheck_Action(bool checked) {
    m_globals.m_PortCheck = checked;
    if (checked && !m_window.mStartup)
        co_await openByName();
    else
        closeOnPurpose();
}

void PortSelection::closeOnPurpose() {
    m_isLost = false;
    Serial1.Close();
}

void PortSelection::PortField_TextChange(QString text) {
    m_window.bPortFieldChange = true;
    m_globals.m_PortField = std::move(text);
}

Task<> PortSelection::PortField_LostFocus() {
    if (!m_window.bPortFieldChange)
        co_return;
    if (m_globals.m_PortCheck && !m_window.mStartup) {
        // bPortFieldChange stays set on purpose: the next loss of focus tries again.
        if (m_panel.portFieldText().isEmpty())
            co_return;
        m_window.bPortFieldChange = false;
        co_await openByName();
    } else {
        m_window.bPortFieldChange = false;
        closeOnPurpose();
    }
}

Task<> PortSelection::Serial1_Lost(QString reason) {
    m_isLost = true;
    const QString name = Serial1.serialPort().Name;
    m_globals.SetStatusText(QStringLiteral("Serial port %1 was disconnected: %2").arg(name, reason), false);
    co_await m_dialogs.MsgBox(
        QStringLiteral("Serial port %1 was disconnected.\n\nPlug the adapter in again, then press "
                       "\"Refresh Port List\" and \"Test Communications\".")
            .arg(name));
}

Task<> PortSelection::openByName() {
    const QString name = m_panel.portFieldText();
    if (!name.isEmpty())
        co_await reopen(m_ports.SerialPort(name));
}

Task<> PortSelection::reopen(PortInfo port) {
    Serial1.Close();
    Serial1.setSerialPort(port);
    m_isLost = !Serial1.Open() && m_isLost;
    if (Serial1.isOpen())
        co_return;
    co_await m_dialogs.MsgBox(QStringLiteral("Unable to open serial port ") + port.Name);
    logOpenFailure();
}

void PortSelection::logOpenFailure() {
    const QString reason = Serial1.openFailure();
    if (!reason.isEmpty())
        m_globals.SetStatusText(reason, false);
}
