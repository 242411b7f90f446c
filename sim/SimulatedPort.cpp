#include "SimulatedPort.h"

SimulatedPort::SimulatedPort(Clock& clock, Vlx720& amplifier)
    : m_amplifier(amplifier),
      m_line(clock, [this](const QByteArray& bytes,
                           int bitsPerSecond) { m_amplifier.receive(bytes, bitsPerSecond); }),
      m_bitsPerSecond(Baud::bitsPerSecond(Baud())),
      m_loss(clock, Clock::Microseconds(0), [this] { lose(); }) {
    m_amplifier.transmit = [this](const QByteArray& bytes, int bitsPerSecond) {
        takeFromLine(bytes, bitsPerSecond);
    };
}

SimulatedPort::~SimulatedPort() {
    m_amplifier.transmit = nullptr;
}

bool SimulatedPort::Open() {
    Close();
    m_openFailure = m_isPlugged ? m_refusal : QStringLiteral("No such file or directory");
    if (!m_openFailure.isEmpty())
        return false;
    m_isOpen = true;
    ++m_openCount;
    m_lineStates.push_back({false, false});
    Reset();
    return true;
}

void SimulatedPort::Close() {
    m_loss.stop();
    m_line.settle();
    m_line.cut();
    m_isOpen = false;
    SerialPort::Flush();
}

void SimulatedPort::Reset() {
    const int bitsPerSecond = Baud::bitsPerSecond(Baud());
    if (!m_isOpen || bitsPerSecond == 0 || bitsPerSecond == m_bitsPerSecond)
        return;
    m_bitsPerSecond = bitsPerSecond;
    m_line.setSpeed(bitsPerSecond);
}

void SimulatedPort::setRequestToSend(bool raised) {
    if (m_isOpen)
        m_lineStates.push_back({false, raised});
}

void SimulatedPort::Write(const QByteArray& bytes) {
    if (!m_isOpen || !m_isPlugged)
        return;
    m_written += bytes;
    m_line.sendMessages(bytes, m_bitsPerSecond);
    if (Written)
        Written(bytes);
}

Task<> SimulatedPort::XmitWait() {
    return m_line.waitUntilIdle();
}

void SimulatedPort::Flush() {
    m_amplifier.discardTransmitted();
    SerialPort::Flush();
}

void SimulatedPort::unplug(const QString& reason) {
    m_isPlugged = false;
    m_line.cut();
    m_lossReason = reason;
    if (m_isOpen)
        m_loss.start(ClockTimer::Mode::Single);
}

void SimulatedPort::lose() {
    Close();
    // A copy: the program may set another one from here.
    if (const auto lost = Lost)
        lost(m_lossReason);
}

void SimulatedPort::setInstantLine(bool isInstant) {
    m_line.setInstant(isInstant);
    m_amplifier.setInstantLine(isInstant);
}

void SimulatedPort::takeFromLine(const QByteArray& bytes, int bitsPerSecond) {
    if (!m_isOpen || !m_isPlugged)
        return;
    const bool isAtOurSpeed = bitsPerSecond == m_bitsPerSecond;
    receive(isAtOurSpeed ? bytes : heardAtWrongSpeed(bytes, bitsPerSecond, m_bitsPerSecond));
    if (DataAvailable)
        DataAvailable();
}
