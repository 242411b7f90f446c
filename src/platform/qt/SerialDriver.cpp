#include "SerialDriver.h"

#include <QtGlobal>

#ifdef Q_OS_LINUX

#include <linux/serial.h>
#include <sys/ioctl.h>

SerialDriver::Transmitter SerialDriver::transmitter(const QSerialPort& port) {
    int queued = 0;
    if (::ioctl(port.handle(), TIOCOUTQ, &queued) == 0 && queued > 0)
        return Transmitter::Busy;
    unsigned int lineStatus = 0;
    if (::ioctl(port.handle(), TIOCSERGETLSR, &lineStatus) != 0)
        return Transmitter::Unknown;
    return (lineStatus & TIOCSER_TEMT) != 0 ? Transmitter::Empty : Transmitter::Busy;
}

void SerialDriver::askLowLatency(const QSerialPort& port) {
    serial_struct settings{};
    if (::ioctl(port.handle(), TIOCGSERIAL, &settings) != 0)
        return;
    settings.flags |= ASYNC_LOW_LATENCY;
    // A driver may refuse: then its bytes come as they did.
    (void)::ioctl(port.handle(), TIOCSSERIAL, &settings);
}

#else

SerialDriver::Transmitter SerialDriver::transmitter(const QSerialPort&) {
    return Transmitter::Unknown;
}

void SerialDriver::askLowLatency(const QSerialPort&) {}

#endif
