// The controls of the simulated amplifier: what one would do at its front, its cable and its mains plug.
#pragma once

#include <vector>

#include <QWidget>

#include "SerialPort.h"

class FtpServer;
class QComboBox;
class QLabel;
class QPushButton;
class SimulatedPort;
class SimulatedPortList;
class Vlx720;

class SimulatorWindow final : public QWidget {
    Q_OBJECT

public:
    // `server` may be null: then there is nothing to choose for it.
    SimulatorWindow(Vlx720& amplifier, SimulatedPort& port, SimulatedPortList& ports, FtpServer* server);

private:
    void showState();
    void raiseFault();
    QComboBox* serverBehaviours(FtpServer* server);
    void togglePower();
    void toggleCable();

    Vlx720& m_amplifier;
    SimulatedPort& m_port;
    SimulatedPortList& m_ports;
    std::vector<PortInfo> m_plugged;  // the list with the cable in its place
    QLabel* m_state;
    QPushButton* m_power;
    QPushButton* m_cable;
    QComboBox* m_speed;
    QComboBox* m_fault;
    QComboBox* m_server;
    bool m_isPlugged = true;
};
