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

#include <optional>
#include <vector>

#include <QIODevice>

#include "Clock.h"

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

// What stands at the head of a transcript.
QByteArray transcriptHeading();
// One event as a line, its end included.
QByteArray transcriptLine(const TranscriptEvent& event);

// Writes events with the time since its construction. The file stays open and outlives it.
class TranscriptWriter {
public:
    TranscriptWriter(Clock& clock, QIODevice& file);

    // The event's own time is not used.
    void write(TranscriptEvent event);

private:
    Clock& m_clock;
    QIODevice& m_file;
    Clock::Microseconds m_start;
};
