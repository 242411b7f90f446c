// A port that keeps a record of what passes through another.
#pragma once

#include <functional>

#include "SerialPort.h"
#include "Transcript.h"

// Any port, with all that passes through it on record. The port outlives it; the program uses this one
// in its place.
class RecordingPort final : public SerialPort {
public:
    // Gets each event, without its time.
    using Record = std::function<void(const TranscriptEvent&)>;

    RecordingPort(::SerialPort& port, Record record);
    ~RecordingPort() override;

    bool Open() override;
    QString openFailure() const override { return m_port.openFailure(); }
    void Close() override;
    bool isOpen() const override { return m_port.isOpen(); }
    void Reset() override;
    void setRequestToSend(bool raised) override;
    void Write(const QByteArray& bytes) override;
    Task<> XmitWait() override { return m_port.XmitWait(); }
    void Flush() override;

private:
    void take();
    void lose(const QString& reason);

    ::SerialPort& m_port;
    Record m_record;
};
