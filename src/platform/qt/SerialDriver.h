// What is asked of the driver of an open port beyond what the toolkit offers. Where the system or the
// driver does not know it, nothing happens.
#pragma once

#include <QSerialPort>

namespace SerialDriver {

// What has become of the bytes that were handed to the driver. Unknown: the driver's queue is empty, but
// whether the last bytes have left the hardware, it cannot tell.
enum class Transmitter { Busy, Empty, Unknown };

Transmitter transmitter(const QSerialPort& port);

// Asks for received bytes at once. Common USB adapters hold them back for 16 ms otherwise.
void askLowLatency(const QSerialPort& port);

}  // namespace SerialDriver
