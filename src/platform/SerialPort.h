// The one serial line: 8 data bits, no parity, 1 stop bit, no flow control, all 256 byte values pass.
#pragma once

#include <array>
#include <functional>

#include <QByteArray>
#include <QString>
#include <QStringList>

#include "Task.h"

// Speed codes of the port's `Baud` property that the program uses.
namespace Baud {
constexpr int Code38400 = 12;
constexpr int Code19200 = 10;
constexpr int Code9600 = 8;
constexpr int Code4800 = 6;

struct Speed {
    int code;
    int bitsPerSecond;
};

// All speeds of the amplifier, in the order in which they are tried.
constexpr std::array<Speed, 4> Speeds{{
    {Code38400, 38400},
    {Code19200, 19200},
    {Code9600, 9600},
    {Code4800, 4800},
}};

// Bits per second of a speed code; 0 for a code that the program does not use.
int bitsPerSecond(int code);
// Speed code of a bit rate; 0 for a rate that the program does not use.
int codeOf(int bitsPerSecond);
}  // namespace Baud

// A port that could be opened: the name that the user sees, and what the system opens.
struct PortInfo {
    QString Name;
    QString path;
    // Vendor, product and serial number of a USB adapter, "0403:6001:A50285BI"; empty for other ports.
    QString identity = {};

    bool operator==(const PortInfo&) const = default;
};

class PortList {
public:
    PortList() = default;
    PortList(const PortList&) = delete;
    PortList& operator=(const PortList&) = delete;
    virtual ~PortList() = default;

    // Asks the system anew.
    virtual int SerialPortCount() = 0;
    // Precondition: 0 <= index < SerialPortCount().
    virtual PortInfo SerialPort(int index) = 0;
    // A port by its device path, whether it exists or not: opening it will tell.
    virtual PortInfo SerialPort(const QString& name) = 0;

    // Called from the event loop when ports may have come or gone, mostly several times in a row. Never where
    // the system does not tell.
    std::function<void()> Changed;
};

class SerialPort {
public:
    // What the port keeps for a reader that does not come; beyond it the oldest bytes are dropped.
    static constexpr qsizetype ReceiveLimit = 1 << 20;

    SerialPort() = default;
    SerialPort(const SerialPort&) = delete;
    SerialPort& operator=(const SerialPort&) = delete;
    virtual ~SerialPort() = default;

    // The port that the next Open opens.
    void setSerialPort(PortInfo port) { m_port = std::move(port); }
    const PortInfo& serialPort() const { return m_port; }

    // Opens the port exclusively, at the current speed, with DTR and RTS down. False when it could not;
    // then openFailure() says why, in words for the log.
    virtual bool Open() = 0;
    virtual QString openFailure() const { return {}; }
    // Harmless when closed.
    virtual void Close() = 0;
    virtual bool isOpen() const = 0;

    // Speed code; a change takes effect at Reset or Open.
    int Baud() const { return m_baud; }
    void setBaud(int code) { m_baud = code; }
    // Puts the open port in effect again with its current settings.
    virtual void Reset() = 0;
    virtual void setRequestToSend(bool raised) = 0;

    // Queues bytes for sending and returns at once. On a closed port they go nowhere.
    virtual void Write(const QByteArray& bytes) = 0;
    // Ends when all written bytes have left the machine, or when they cannot: port closed or lost, or the
    // driver holds them for a second longer than the line needs.
    virtual Task<> XmitWait() = 0;

    // All received bytes, possibly none, which are then gone.
    QByteArray ReadAll() { return std::exchange(m_received, {}); }
    // At most `count` bytes, possibly none, which are then gone.
    QByteArray Read(qsizetype count);
    // All received bytes, which stay.
    const QByteArray& LookAhead() const { return m_received; }
    // Discards what was received, here and in the system, and nothing that waits to be sent.
    virtual void Flush() { m_received.clear(); }

    // Called from the event loop when bytes have come.
    std::function<void()> DataAvailable;
    // Called from the event loop when an open port has gone: the port is closed by then. The text is the
    // system's reason.
    std::function<void(const QString& reason)> Lost;

protected:
    // Takes bytes from the line; the caller then calls DataAvailable from the event loop.
    void receive(const QByteArray& bytes);

private:
    PortInfo m_port;
    int m_baud = Baud::Code38400;
    QByteArray m_received;
};
