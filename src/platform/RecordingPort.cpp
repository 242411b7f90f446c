#include "RecordingPort.h"

using Kind = TranscriptEvent::Kind;

RecordingPort::RecordingPort(::SerialPort& port, Record record) : m_port(port), m_record(std::move(record)) {
    m_port.DataAvailable = [this] { take(); };
    m_port.Lost = [this](const QString& reason) { lose(reason); };
}

RecordingPort::~RecordingPort() {
    m_port.DataAvailable = nullptr;
    m_port.Lost = nullptr;
}

bool RecordingPort::Open() {
    m_port.setSerialPort(serialPort());
    m_port.setBaud(Baud());
    const bool isOpened = m_port.Open();
    if (isOpened)
        m_record({.kind = Kind::Open, .value = Baud::bitsPerSecond(Baud()), .text = serialPort().path});
    else
        m_record({.kind = Kind::Refused, .text = m_port.openFailure()});
    return isOpened;
}

void RecordingPort::Close() {
    if (m_port.isOpen())
        m_record({.kind = Kind::Close});
    m_port.Close();
    SerialPort::Flush();
}

void RecordingPort::Reset() {
    m_port.setBaud(Baud());
    m_port.Reset();
    if (m_port.isOpen())
        m_record({.kind = Kind::Speed, .value = Baud::bitsPerSecond(Baud())});
}

void RecordingPort::setRequestToSend(bool raised) {
    if (m_port.isOpen())
        m_record({.kind = Kind::RequestToSend, .value = raised ? 1 : 0});
    m_port.setRequestToSend(raised);
}

void RecordingPort::Write(const QByteArray& bytes) {
    if (m_port.isOpen() && !bytes.isEmpty())
        m_record({.kind = Kind::Out, .bytes = bytes});
    m_port.Write(bytes);
}

void RecordingPort::Flush() {
    if (m_port.isOpen())
        m_record({.kind = Kind::Flush});
    m_port.Flush();
    SerialPort::Flush();
}

void RecordingPort::take() {
    const QByteArray bytes = m_port.ReadAll();
    if (bytes.isEmpty())
        return;
    m_record({.kind = Kind::In, .bytes = bytes});
    receive(bytes);
    if (DataAvailable)
        DataAvailable();
}

void RecordingPort::lose(const QString& reason) {
    m_record({.kind = Kind::Lost, .text = reason});
    SerialPort::Flush();
    // A copy: the program may set another one from here.
    if (const auto lost = Lost)
        lost(reason);
}
