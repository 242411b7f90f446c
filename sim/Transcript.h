// A session on the serial line as plain text, recorded from any port and played back as a test.
//
// One event a line: the microseconds since the recording began, the event, and what belongs to it. Bytes
// are hexadecimal digits, two each; behind them stands what can be read of them. All from "#" on is a
// comment, and empty lines are passed over.
//
//   0 open 38400 /dev/ttyUSB0
//   1041 out 5E52564D3B  # ^RVM;
//   5208 in 5E52564D30312E32333B  # ^RVM01.23;
//   9000 speed 9600
//
//   open S P     opened at S bit/s, port P        out B     bytes to the amplifier
//   refused R    could not be opened, reason R     in B      bytes from the amplifier
//   speed S      reset to S bit/s                  flush     received bytes discarded
//   rts 0|1      request to send put down or up    close     closed
//   lost R       the port has gone, reason R
#pragma once

#include <map>
#include <optional>
#include <vector>

#include <QIODevice>

#include "SerialPort.h"
#include "Wire.h"

struct TranscriptEvent {
    enum class Kind { Open, Refused, Speed, RequestToSend, Out, In, Flush, Close, Lost };

    Clock::Microseconds time{0};
    Kind kind = Kind::Out;
    int value = 0;          // Open, Speed: bit/s; RequestToSend: 0 or 1
    QByteArray bytes = {};  // Out, In
    QString text = {};      // Open: port; Refused, Lost: reason

    bool operator==(const TranscriptEvent&) const = default;
};

using Transcript = std::vector<TranscriptEvent>;

// Reads a transcript. None if a line is no event: `error` then names the line and what is wrong with it.
std::optional<Transcript> readTranscript(QIODevice& file, QString& error);

// Writes events with the time since its construction. The file stays open and outlives it.
class TranscriptWriter {
public:
    TranscriptWriter(Clock& clock, QIODevice& file);

    // The event's own time is not used.
    void write(const TranscriptEvent& event);

private:
    Clock& m_clock;
    QIODevice& m_file;
    Clock::Microseconds m_start;
};

// Any port, with all that passes through it on record. The port and the file outlive it; the program uses
// this one in its place.
class RecordingPort final : public SerialPort {
public:
    RecordingPort(::SerialPort& port, Clock& clock, QIODevice& file);
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
    TranscriptWriter m_record;
};

// A port that plays a transcript: what the program opens and writes is compared with the record, the speed
// too, and what had been received or lost after a write comes again, as long after it as then. One write
// may be made as several or several as one. Nothing comes after the first difference.
class ReplayPort final : public SerialPort {
public:
    ReplayPort(Clock& clock, Transcript transcript);
    ~ReplayPort() override;

    bool Open() override;
    QString openFailure() const override { return m_openFailure; }
    void Close() override;
    bool isOpen() const override { return m_isOpen; }
    void Reset() override;
    void setRequestToSend(bool) override {}
    void Write(const QByteArray& bytes) override;
    Task<> XmitWait() override;

    // The first difference between the program and the record; empty when there was none.
    QString difference() const { return m_difference; }
    // Everything on record has been written and has come.
    bool isFinished() const { return m_next == m_transcript.size() && m_coming.empty(); }

private:
    // Takes the part of the bytes that belongs to one event and tells how many bytes that was.
    qsizetype compare(QByteArrayView bytes);
    static QString shown(QByteArrayView bytes);
    bool isNext(TranscriptEvent::Kind kind) const;
    void differ(const QString& how);
    void passNext();
    void comeLater(std::size_t index);
    void come(const TranscriptEvent& event);
    void forgetComing();

    Clock& m_clock;
    Transcript m_transcript;
    std::size_t m_next = 0;  // what the program is to do next
    qsizetype m_writtenOfNext = 0;
    // Recorded and present time of the event from which those that come by themselves are timed.
    Clock::Microseconds m_recordedAt{0};
    Clock::Microseconds m_playedAt{0};
    std::map<std::size_t, Clock::WaitKey> m_coming;
    bool m_isOpen = false;
    int m_bitsPerSecond = 0;
    int m_recordedSpeed = 0;
    QString m_openFailure;
    QString m_difference;
    Wire m_line;  // for the time that sending takes
};
