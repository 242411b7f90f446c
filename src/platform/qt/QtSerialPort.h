// The real serial line.
#pragma once

#include <optional>

#include <QSerialPort>

#include "Clock.h"
#include "SerialPort.h"

// Lives on the main thread. Received bytes are taken from the system whenever the event loop turns, so a
// reader that sleeps between looks misses none.
class QtSerialPort final : public SerialPort {
public:
    explicit QtSerialPort(Clock& clock);
    QtSerialPort(const QtSerialPort&) = delete;
    QtSerialPort& operator=(const QtSerialPort&) = delete;
    ~QtSerialPort() override;

    bool Open() override;
    QString openFailure() const override { return m_openFailure; }
    void Close() override;
    bool isOpen() const override { return m_port.isOpen() && !m_loss; }

    void Reset() override;
    void setRequestToSend(bool raised) override;

    void Write(const QByteArray& bytes) override;
    Task<> XmitWait() override;
    void Flush() override;

private:
    void applySpeed();
    void putLinesDown();
    void takeReceived();
    void takeError(QSerialPort::SerialPortError error);
    void lose(const QString& reason);
    bool hasSent() const;
    void dropWhatWouldDelayClosing();

    Clock& m_clock;
    QSerialPort m_port;
    QString m_openFailure;
    // When the line will have carried all that was written, if it carries it without a pause.
    Clock::Microseconds m_lineFree{0};
    std::optional<Clock::WaitKey> m_announcement;
    std::optional<Clock::WaitKey> m_loss;
};
