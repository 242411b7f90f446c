#include "SimulatorWindow.h"

#include <array>

#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QPushButton>

#include "FtpServer.h"
#include "Naming.h"
#include "SimulatedPort.h"

namespace {

struct Fault {
    int code;
    const char* name;
};

constexpr std::array<Fault, 6> Faults{{
    {2, "Excessive current"},
    {4, "Temperature over limit"},
    {6, "Excessive driving power"},
    {9, "High SWR"},
    {12, "Excessive power output"},
    {13, "60 V supply failure"},
}};

struct ServerBehaviour {
    FtpServer::Behaviour behaviour;
    const char* name;
};

constexpr std::array<ServerBehaviour, 5> ServerBehaviours{{
    {FtpServer::Behaviour::Works, "works"},
    {FtpServer::Behaviour::Refuses, "refuses the logon"},
    {FtpServer::Behaviour::Stalls, "does not answer"},
    {FtpServer::Behaviour::CutsTransfers, "cuts transfers"},
    {FtpServer::Behaviour::DamagesImages, "sends damaged images"},
}};

constexpr std::array<int, 4> Speeds{38400, 19200, 9600, 4800};

QString stateName(Vlx720::State state) {
    switch (state) {
        case Vlx720::State::Off:
            return QStringLiteral("no mains power");
        case Vlx720::State::Waiting:
            return QStringLiteral("waits for power button or firmware");
        case Vlx720::State::Main:
            return QStringLiteral("on");
        case Vlx720::State::Restarting:
            return QStringLiteral("starting");
    }
    return {};
}

}  // namespace

SimulatorWindow::SimulatorWindow(Vlx720& amplifier, SimulatedPort& port, SimulatedPortList& ports,
                                 FtpServer* server)
    : m_amplifier(amplifier),
      m_port(port),
      m_ports(ports),
      m_plugged(ports.ports),
      m_state(named(new QLabel, QStringLiteral("simulatorState"), tr("State of the amplifier"))),
      m_power(named(new QPushButton, QStringLiteral("mainsPower"), tr("Mains power"))),
      m_cable(named(new QPushButton, QStringLiteral("cable"), tr("Serial cable"))),
      m_speed(named(new QComboBox, QStringLiteral("speed"), tr("RS-232 speed"))),
      m_fault(named(new QComboBox, QStringLiteral("fault"), tr("Fault"))),
      m_server(serverBehaviours(server)) {
    setWindowTitle(QStringLiteral("Simulated VLX720"));
    setAttribute(Qt::WA_QuitOnClose, false);
    for (const int speed : Speeds)
        m_speed->addItem(QStringLiteral("%1 bit/s").arg(speed), speed);
    m_speed->setCurrentIndex(m_speed->findData(amplifier.speed()));
    for (const Fault& fault : Faults)
        m_fault->addItem(QString::fromLatin1(fault.name), fault.code);
    auto* button = named(new QPushButton(tr("Press")), QStringLiteral("powerButton"), tr("Power button"));
    auto* raise = named(new QPushButton(tr("Raise")), QStringLiteral("raiseFault"), tr("Raise the fault"));

    auto* hint = new QLabel(tr("Pull the cable, cut the power in the middle of a load, raise a fault."));
    auto* rows = new QFormLayout(this);
    rows->addRow(hint);
    rows->addRow(tr("Amplifier:"), m_state);
    rows->addRow(tr("Mains:"), m_power);
    rows->addRow(tr("Power button:"), button);
    rows->addRow(tr("Cable:"), m_cable);
    rows->addRow(tr("Speed:"), m_speed);
    rows->addRow(tr("Fault:"), m_fault);
    rows->addRow(QString(), raise);
    rows->addRow(tr("Firmware server:"), m_server);

    connect(m_power, &QPushButton::clicked, this, &SimulatorWindow::togglePower);
    connect(m_cable, &QPushButton::clicked, this, &SimulatorWindow::toggleCable);
    connect(button, &QPushButton::clicked, this, [this] { m_amplifier.pressPowerButton(); });
    connect(raise, &QPushButton::clicked, this, &SimulatorWindow::raiseFault);
    connect(m_speed, &QComboBox::currentIndexChanged, this,
            [this] { m_amplifier.setSpeed(m_speed->currentData().toInt()); });
    m_amplifier.Changed = [this] { showState(); };
    showState();
}

QComboBox* SimulatorWindow::serverBehaviours(FtpServer* server) {
    auto* choice = named(new QComboBox, QStringLiteral("firmwareServer"), tr("Firmware server"));
    choice->setEnabled(server);
    for (const ServerBehaviour& entry : ServerBehaviours)
        choice->addItem(QString::fromLatin1(entry.name), static_cast<int>(entry.behaviour));
    connect(choice, &QComboBox::currentIndexChanged, this, [choice, server] {
        server->behaviour = static_cast<FtpServer::Behaviour>(choice->currentData().toInt());
    });
    return choice;
}

void SimulatorWindow::showState() {
    const bool isOff = m_amplifier.state() == Vlx720::State::Off;
    m_state->setText(stateName(m_amplifier.state()));
    m_power->setText(isOff ? tr("Switch on") : tr("Cut the power"));
    m_cable->setText(m_isPlugged ? tr("Unplug") : tr("Plug in"));
}

void SimulatorWindow::raiseFault() {
    m_amplifier.raiseFault(m_fault->currentData().toInt());
}

void SimulatorWindow::togglePower() {
    if (m_amplifier.state() == Vlx720::State::Off)
        m_amplifier.powerOn();
    else
        m_amplifier.powerOff();
}

void SimulatorWindow::toggleCable() {
    if (m_isPlugged)
        m_port.unplug();
    else
        m_port.replug();
    m_isPlugged = !m_isPlugged;
    m_ports.change(m_isPlugged ? m_plugged : std::vector<PortInfo>());
    showState();
}
