// Chooses and opens the one serial port.
#pragma once

#include <vector>

#include "Globals.h"
#include "Platform.h"
#include "PortPanel.h"
#include "WindowState.h"

class PortSelection {
public:
    PortSelection(Platform& platform, Globals& globals, WindowState& window, PortPanel& panel)
        : m_ports(platform.ports),
          m_dialogs(platform.dialogs),
          Serial1(platform.Serial1),
          m_globals(globals),
          m_window(window),
          m_panel(panel) {}

    // Fills the list with the system's ports.
    void SerialPortMenu_Open();
    // Opens the port of index m_Port at start-up.
    Task<> openAtStart();

    Task<> SerialPortMenu_Change(int index);
    // The present row once more: another try, if its port is not open.
    Task<> serialPortMenuChosenAgain(int index);
    void SerialPortMenu_Close(int index) { m_window.m_Port = index; }
    // Fills the list anew. A port that is open stays so; one that had gone is opened again if it is back.
    Task<> RefreshPortsButton_Action();
    // Brings the list up to date with the port in use still chosen. True when the adapter that was lost is
    // there again, known by its identity.
    bool followList();
    // Opens that adapter's port, if it is still wanted. True when it is open. No box tells of a failure:
    // nobody has pressed anything.
    bool openReturnedPort();
    // Shows the controls of the port by its name although the system lists ports.
    void ViewPortByName_Action(bool isWanted);
    Task<> PortCheck_Action(bool checked);
    void PortField_TextChange(QString text);
    Task<> PortField_LostFocus();

    // The open port has gone: says so once.
    Task<> Serial1_Lost(QString reason);

private:
    Task<> reopen(PortInfo port);
    bool open(const PortInfo& port);
    Task<> openByName();
    void logOpenFailure();
    void closeOnPurpose();
    std::vector<PortInfo> listedPorts();
    void showRows();
    void fillMenu();
    void showByNamePort();
    std::int32_t rowOf(const QString& path) const;
    void findChosenPort();
    void showPortInUse();
    bool chooseLostPort();
    bool findReturnedPort(const std::vector<PortInfo>& before);
    Task<> reopenLostPort();

    PortList& m_ports;
    Dialogs& m_dialogs;
    SerialPort& Serial1;
    Globals& m_globals;
    WindowState& m_window;
    PortPanel& m_panel;
    std::vector<PortInfo> m_rows;  // the ports of the list, as it was filled
    bool m_isListEmpty = false;
    bool m_isLost = false;
    PortInfo m_lostPort;  // where it was, or has come back
};
