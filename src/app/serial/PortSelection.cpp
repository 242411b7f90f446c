#include "PortSelection.h"

#include <algorithm>

#include "Text.h"

std::vector<PortInfo> PortSelection::listedPorts() {
    const int count = m_ports.SerialPortCount();
    std::vector<PortInfo> ports;
    ports.reserve(static_cast<std::size_t>(count));
    for (int index = 0; index < count; ++index)
        ports.push_back(m_ports.SerialPort(index));
    return ports;
}

void PortSelection::showRows() {
    QStringList names;
    for (const PortInfo& port : m_rows)
        names += port.Name;
    m_panel.setSerialPortMenuRows(names);
}

void PortSelection::fillMenu() {
    m_rows = listedPorts();
    showRows();
    // Without any port in the list a device path can still be typed.
    m_isListEmpty = m_rows.empty();
    showByNamePort();
}

void PortSelection::showByNamePort() {
    m_panel.showByNamePort(m_isListEmpty || m_globals.m_PortCheck || m_window.isPortByNameWanted);
}

void PortSelection::ViewPortByName_Action(bool isWanted) {
    m_window.isPortByNameWanted = isWanted;
    showByNamePort();
}

// Where the port of that path stands in the list; -1 when it is not there.
std::int32_t PortSelection::rowOf(const QString& path) const {
    const auto row = std::find_if(m_rows.begin(), m_rows.end(),
                                  [&path](const PortInfo& port) { return port.path == path; });
    return row == m_rows.end() ? -1 : static_cast<std::int32_t>(row - m_rows.begin());
}

// The adapter of the last run may stand at another place of the list, and another one at its place.
void PortSelection::findChosenPort() {
    const PortInfo& wanted = m_window.chosenPort;
    const auto likeness = [&wanted](const PortInfo& port) {
        const bool isSameDevice = port.identity == wanted.identity;
        const bool isSamePath = port.path == wanted.path;
        if (wanted.identity.isEmpty())
            return isSamePath ? 1 : 0;
        return isSameDevice ? 2 + (isSamePath ? 1 : 0) : 0;
    };
    const auto best = std::max_element(
        m_rows.begin(), m_rows.end(),
        [&likeness](const PortInfo& a, const PortInfo& b) { return likeness(a) < likeness(b); });
    if (best != m_rows.end() && likeness(*best) > 0)
        m_window.m_Port = static_cast<std::int32_t>(best - m_rows.begin());
}

void PortSelection::SerialPortMenu_Open() {
    fillMenu();
}

Task<> PortSelection::openAtStart() {
    const int count = m_ports.SerialPortCount();
    Serial1.setRequestToSend(false);
    if (m_window.m_Port < 0)
        m_window.m_Port = 0;
    findChosenPort();
    if (m_window.m_Port >= count) {
        m_dialogs.Beep();
        co_await m_dialogs.MsgBox(
            QStringLiteral("System has no serial ports!  No way to communicate with VLX!"));
        co_return;
    }
    const PortInfo port = m_ports.SerialPort(m_window.m_Port);
    if (Text::equal(port.Name, u"modem"))
        co_return;
    m_window.chosenPort = port;
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
    m_window.chosenPort = m_rows.at(static_cast<std::size_t>(index));
    co_await reopen(m_window.chosenPort);
}

Task<> PortSelection::serialPortMenuChosenAgain(int index) {
    if (!Serial1.isOpen())
        co_await SerialPortMenu_Change(index);
}

Task<> PortSelection::RefreshPortsButton_Action() {
    {
        const StartupSpan rebuilding(m_window);
        fillMenu();
        showPortInUse();
    }
    if (m_isLost)
        co_await reopenLostPort();
}

// The controls of the port by its name stay as they are: somebody may be typing there.
bool PortSelection::followList() {
    const std::vector<PortInfo> before = std::exchange(m_rows, listedPorts());
    if (m_rows != before) {
        const StartupSpan rebuilding(m_window);
        showRows();
        showPortInUse();
    }
    return m_isLost && findReturnedPort(before);
}

// At its old place or at one that had no port before: an adapter that was there all the time is another one,
// though many tell the same serial number.
bool PortSelection::findReturnedPort(const std::vector<PortInfo>& before) {
    if (m_lostPort.identity.isEmpty())
        return false;
    const auto returned = std::find_if(m_rows.begin(), m_rows.end(), [&](const PortInfo& port) {
        return port.identity == m_lostPort.identity &&
               (port.path == m_lostPort.path ||
                std::find(before.begin(), before.end(), port) == before.end());
    });
    if (returned == m_rows.end())
        return false;
    m_lostPort = *returned;
    return true;
}

bool PortSelection::openReturnedPort() {
    if (!m_isLost || m_globals.m_PortCheck || !chooseLostPort())
        return false;
    const bool isOpen = open(m_window.chosenPort);
    if (isOpen)
        m_globals.SetStatusText(QStringLiteral("Serial port %1 is back").arg(m_window.chosenPort.Name),
                                false);
    else
        logOpenFailure();
    return isOpen;
}

// The row of the port in use, wherever it stands now; none when it is not in the list.
void PortSelection::showPortInUse() {
    const bool isFromList = !m_globals.m_PortCheck && !Serial1.serialPort().path.isEmpty();
    const std::int32_t row = isFromList ? rowOf(Serial1.serialPort().path) : m_window.m_Port;
    if (row >= 0)
        m_window.m_Port = row;
    m_panel.setSerialPortMenuIndex(row);
}

// By its path: what now stands at its index may be another device.
bool PortSelection::chooseLostPort() {
    const std::int32_t row = rowOf(m_lostPort.path);
    if (row < 0)
        return false;
    m_window.m_Port = row;
    m_window.chosenPort = m_rows.at(static_cast<std::size_t>(row));
    const StartupSpan rebuilding(m_window);
    m_panel.setSerialPortMenuIndex(row);
    return true;
}

Task<> PortSelection::reopenLostPort() {
    if (m_globals.m_PortCheck)
        co_await openByName();
    else if (chooseLostPort())
        co_await reopen(m_window.chosenPort);
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
    m_lostPort = Serial1.serialPort();
    m_globals.showStatus(QStringLiteral("Port disconnected"));
    const QString name = Serial1.serialPort().Name;
    m_globals.SetStatusText(QStringLiteral("Serial port %1 was disconnected: %2").arg(name, reason), false);
    co_await m_dialogs.MsgBox(
        QStringLiteral(
            "Serial port %1 was disconnected.\n\nPlug the adapter in again. If it does not come back "
            "by itself, press \"Refresh Port List\" and \"Test Communications\".")
            .arg(name));
}

Task<> PortSelection::openByName() {
    const QString name = m_panel.portFieldText();
    if (!name.isEmpty())
        co_await reopen(m_ports.SerialPort(name));
}

bool PortSelection::open(const PortInfo& port) {
    Serial1.Close();
    Serial1.setSerialPort(port);
    if (!Serial1.Open())
        return false;
    m_isLost = false;
    m_globals.showStatus(QString());
    return true;
}

Task<> PortSelection::reopen(PortInfo port) {
    if (open(port))
        co_return;
    co_await m_dialogs.MsgBox(QStringLiteral("Unable to open serial port ") + port.Name);
    logOpenFailure();
}

void PortSelection::logOpenFailure() {
    const QString reason = Serial1.openFailure();
    if (!reason.isEmpty())
        m_globals.SetStatusText(reason, false);
}
