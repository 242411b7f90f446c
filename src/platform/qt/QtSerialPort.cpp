#include "QtSerialPort.h"

#include <algorithm>

#include <QSignalBlocker>

#include "OpenFailure.h"
#include "SerialDriver.h"

using namespace std::chrono_literals;

namespace {

constexpr int BitsPerByte = 10;  // with start and stop bit

// Between two looks at the bytes that wait to be sent.
constexpr auto SentCheck = 1ms;
// How much longer than the line needs a driver may hold bytes before the wait for them ends.
constexpr auto DriverPatience = 1s;
// How late an adapter that cannot tell may begin to send.
constexpr auto AdapterLag = 2ms;
// What the system may wait for the last bytes of a port that is closed: the main thread stands meanwhile.
constexpr auto ClosingPatience = 200ms;

// What the toolkit keeps between two turns of the event loop.
constexpr qint64 ReadBufferSize = 64 * 1024;
// What waits to be sent on a line that takes nothing; beyond it bytes go nowhere.
constexpr qint64 SendLimit = 1 << 20;

bool meansLoss(QSerialPort::SerialPortError error) {
    switch (error) {
        case QSerialPort::ResourceError:
        case QSerialPort::DeviceNotFoundError:
        case QSerialPort::PermissionError:
        case QSerialPort::ReadError:
        case QSerialPort::WriteError:
            return true;
        default:
            return false;
    }
}

}  // namespace

QtSerialPort::QtSerialPort(Clock& clock) : m_clock(clock) {
    m_port.setReadBufferSize(ReadBufferSize);
    QObject::connect(&m_port, &QSerialPort::readyRead, &m_port, [this] { takeReceived(); });
    QObject::connect(&m_port, &QSerialPort::errorOccurred, &m_port,
                     [this](QSerialPort::SerialPortError error) { takeError(error); });
}

QtSerialPort::~QtSerialPort() {
    QtSerialPort::Close();
}

bool QtSerialPort::Open() {
    Close();
    SerialPort::Flush();
    m_openFailure.clear();
    m_port.setPortName(serialPort().path);
    applySpeed();
    if (!m_port.open(QIODevice::ReadWrite)) {
        m_openFailure = openFailureLine(serialPort(), m_port.error(), m_port.errorString());
        return false;
    }
    putLinesDown();
    SerialDriver::askLowLatency(m_port);
    m_lineFree = m_clock.now();
    return true;
}

void QtSerialPort::Close() {
    if (m_announcement)
        m_clock.cancel(*std::exchange(m_announcement, std::nullopt));
    if (m_loss)
        m_clock.cancel(*std::exchange(m_loss, std::nullopt));
    if (!m_port.isOpen())
        return;
    const QSignalBlocker quiet(&m_port);  // a port that has gone fails here once more
    m_port.flush();
    dropWhatWouldDelayClosing();
    m_port.close();
}

void QtSerialPort::Reset() {
    if (isOpen())
        applySpeed();
}

void QtSerialPort::setRequestToSend(bool raised) {
    if (!isOpen())
        return;
    const QSignalBlocker quiet(&m_port);  // a refusal is no loss of the port
    m_port.setRequestToSend(raised);
}

void QtSerialPort::Write(const QByteArray& bytes) {
    if (!isOpen() || m_port.bytesToWrite() + bytes.size() > SendLimit)
        return;
    const Clock::Microseconds lineTime{std::chrono::microseconds::period::den * BitsPerByte * bytes.size() /
                                       m_port.baudRate()};
    m_lineFree = std::max(m_lineFree, m_clock.now()) + lineTime;
    m_port.write(bytes);
}

Task<> QtSerialPort::XmitWait() {
    while (isOpen() && !hasSent() && m_clock.now() < m_lineFree + DriverPatience)
        co_await m_clock.sleep(SentCheck);
}

void QtSerialPort::Flush() {
    SerialPort::Flush();
    if (isOpen())
        m_port.clear(QSerialPort::Input);
}

// On an open port this changes the speed and nothing else: the modem lines stay as they are.
void QtSerialPort::applySpeed() {
    if (const int bitsPerSecond = Baud::bitsPerSecond(Baud()))
        m_port.setBaudRate(bitsPerSecond);
}

// The system raises both lines as it opens a port, and a raised line can key or reset equipment. A port
// without such lines refuses, which is no failure.
void QtSerialPort::putLinesDown() {
    const QSignalBlocker quiet(&m_port);
    m_port.setDataTerminalReady(false);
    m_port.setRequestToSend(false);
}

void QtSerialPort::takeReceived() {
    receive(m_port.readAll());
    if (m_announcement)
        return;
    m_announcement = m_clock.schedule(0us, [this] {
        m_announcement.reset();
        if (DataAvailable && !LookAhead().isEmpty())
            DataAvailable();
    });
}

void QtSerialPort::takeError(QSerialPort::SerialPortError error) {
    if (!isOpen() || !meansLoss(error))
        return;
    // Not from here: the toolkit's port is in the middle of its own work.
    m_loss = m_clock.schedule(0us, [this, reason = m_port.errorString()] { lose(reason); });
}

void QtSerialPort::lose(const QString& reason) {
    Close();
    if (Lost)
        Lost(reason);
}

bool QtSerialPort::hasSent() const {
    if (m_port.bytesToWrite() > 0)
        return false;
    switch (SerialDriver::transmitter(m_port)) {
        case SerialDriver::Transmitter::Busy:
            return false;
        case SerialDriver::Transmitter::Empty:
            return true;
        case SerialDriver::Transmitter::Unknown:
            break;
    }
    return m_clock.now() >= m_lineFree + AdapterLag;
}

// Closing a device waits in the system until its bytes have left, half a minute if they cannot.
void QtSerialPort::dropWhatWouldDelayClosing() {
    const Clock::Microseconds now = m_clock.now();
    const bool isSlow = m_lineFree > now + ClosingPatience;
    const bool isStuck = now > m_lineFree && !hasSent();
    if (isSlow || isStuck)
        m_port.clear(QSerialPort::Output);
}
