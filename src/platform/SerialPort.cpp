#include "SerialPort.h"

#include <algorithm>

int Baud::bitsPerSecond(int code) {
    const auto* speed =
        std::find_if(Speeds.begin(), Speeds.end(), [code](const Speed& s) { return s.code == code; });
    return speed == Speeds.end() ? 0 : speed->bitsPerSecond;
}

int Baud::codeOf(int bitsPerSecond) {
    const auto* speed = std::find_if(Speeds.begin(), Speeds.end(), [bitsPerSecond](const Speed& s) {
        return s.bitsPerSecond == bitsPerSecond;
    });
    return speed == Speeds.end() ? 0 : speed->code;
}

QByteArray SerialPort::Read(qsizetype count) {
    const QByteArray taken = m_received.left(count);
    m_received.remove(0, taken.size());
    return taken;
}

void SerialPort::receive(const QByteArray& bytes) {
    m_received.append(bytes);
    if (m_received.size() > ReceiveLimit)
        m_received.remove(0, m_received.size() - ReceiveLimit);
}
