#include "PseudoTerminal.h"

#include <QFile>

#include <gtest/gtest.h>

#include <fcntl.h>
#include <pty.h>
#include <termios.h>
#include <unistd.h>
#include <utility>

#include "SerialPort.h"

PseudoTerminal::PseudoTerminal() {
    int slave = -1;
    char name[64] = "";
    EXPECT_EQ(::openpty(&m_master, &slave, name, nullptr, nullptr), 0);
    ::close(slave);
    ::fcntl(m_master, F_SETFL, O_NONBLOCK);
    m_path = QFile::decodeName(name);
}

PseudoTerminal::~PseudoTerminal() {
    hangUp();
}

QByteArray PseudoTerminal::take() {
    QByteArray taken;
    char chunk[4096];
    for (ssize_t count = 0; (count = ::read(m_master, chunk, sizeof chunk)) > 0;)
        taken.append(chunk, count);
    return taken;
}

void PseudoTerminal::send(const QByteArray& bytes) {
    EXPECT_EQ(::write(m_master, bytes.constData(), static_cast<std::size_t>(bytes.size())), bytes.size());
}

int PseudoTerminal::speed() const {
    termios settings{};
    EXPECT_EQ(::tcgetattr(m_master, &settings), 0);
    constexpr std::pair<speed_t, int> Speeds[] = {
        {B38400, 38400}, {B19200, 19200}, {B9600, 9600}, {B4800, 4800}};
    for (const auto& [code, bitsPerSecond] : Speeds) {
        if (::cfgetospeed(&settings) == code && ::cfgetispeed(&settings) == code)
            return bitsPerSecond;
    }
    return 0;
}

void PseudoTerminal::hangUp() {
    if (m_master >= 0)
        ::close(std::exchange(m_master, -1));
}
