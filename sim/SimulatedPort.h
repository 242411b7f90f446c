// A serial port with a simulated amplifier at its other end, all in this process and on its clock.
#pragma once

#include <vector>

#include "SerialPort.h"
#include "Vlx720.h"
#include "Wire.h"

// Both directions take their true time on the line, ten bits a byte. An answer is received as a whole when
// its last bit has passed, unless the amplifier sends it in pieces.
class SimulatedPort final : public SerialPort {
public:
    // The amplifier outlives the port.
    SimulatedPort(Clock& clock, Vlx720& amplifier);
    ~SimulatedPort() override;

    bool Open() override;
    QString openFailure() const override { return m_openFailure; }
    void Close() override;
    bool isOpen() const override { return m_isOpen; }
    void Reset() override;
    void setRequestToSend(bool raised) override;
    void Write(const QByteArray& bytes) override;
    Task<> XmitWait() override;
    void Flush() override;

    // Each Open fails with this reason until the reason is empty.
    void refuseToOpen(const QString& reason) { m_refusal = reason; }
    // The adapter leaves the machine. An open port is closed, and Lost called, from the event loop.
    void unplug(const QString& reason = QStringLiteral("Device disappeared"));
    void replug() { m_isPlugged = true; }
    // Bytes pass without the time that they take on the line, in both directions.
    void setInstantLine(bool isInstant);

    // All bytes written while the port was open, since the last clear.
    const QByteArray& written() const { return m_written; }
    void clearWritten() { m_written.clear(); }
    // Called at each Write on the open port, for one transcript of the line and the log.
    std::function<void(const QByteArray& bytes)> Written;

    // The modem lines, each time that they were set: an open puts both down.
    struct LineStates {
        bool dataTerminalReady;
        bool requestToSend;

        bool operator==(const LineStates&) const = default;
    };
    const std::vector<LineStates>& lineStates() const { return m_lineStates; }
    int openCount() const { return m_openCount; }
    // The speed in effect, bit/s.
    int bitsPerSecond() const { return m_bitsPerSecond; }

private:
    void takeFromLine(const QByteArray& bytes, int bitsPerSecond);
    void lose();

    Vlx720& m_amplifier;
    Wire m_line;
    bool m_isOpen = false;
    bool m_isPlugged = true;
    int m_bitsPerSecond;
    QString m_refusal;
    QString m_openFailure;
    QString m_lossReason;
    ClockTimer m_loss;
    QByteArray m_written;
    std::vector<LineStates> m_lineStates;
    int m_openCount = 0;
};

// A list of ports that a test sets.
class SimulatedPortList final : public PortList {
public:
    explicit SimulatedPortList(std::vector<PortInfo> list = {}) : ports(std::move(list)) {}

    int SerialPortCount() override { return static_cast<int>(ports.size()); }
    PortInfo SerialPort(int index) override { return ports.at(static_cast<std::size_t>(index)); }
    PortInfo SerialPort(const QString& name) override { return {name, name}; }

    // As the system does when an adapter is plugged in or out.
    void change(std::vector<PortInfo> list) {
        ports = std::move(list);
        if (Changed)
            Changed();
    }

    std::vector<PortInfo> ports;
};
