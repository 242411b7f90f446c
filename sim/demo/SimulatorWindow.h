// The controls of the simulated amplifier: what one would do at its front, its cable and its mains plug.
#pragma once

#include <QWidget>

class QComboBox;
class QLabel;
class QPushButton;
class SimulatedPort;
class Vlx720;

class SimulatorWindow final : public QWidget {
    Q_OBJECT

public:
    SimulatorWindow(Vlx720& amplifier, SimulatedPort& port);

private:
    void showState();
    void raiseFault();
    void togglePower();
    void toggleCable();

    Vlx720& m_amplifier;
    SimulatedPort& m_port;
    QLabel* m_state;
    QPushButton* m_power;
    QPushButton* m_cable;
    QComboBox* m_speed;
    QComboBox* m_fault;
    bool m_isPlugged = true;
};
