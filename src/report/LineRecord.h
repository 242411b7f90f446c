// The last of what passed on the line, kept small, to be told as a transcript when it is asked for.
#pragma once

#include <deque>
#include <vector>

#include "Transcript.h"

class LineRecord {
public:
    // Bytes of the line that are kept. An event counts for LeastCost at least, so that a run of single bytes
    // cannot grow without bound: with all that belongs to the events it is less than 1 MiB.
    static constexpr qsizetype Limit = 256 * 1024;
    static constexpr qsizetype LeastCost = 4;
    // Events kept from the last opening on, beside those: sensing stands there, and a replay begins with it.
    static constexpr std::size_t HeadLimit = 100;

    explicit LineRecord(Clock& clock) : m_clock(clock), m_start(clock.now()) {}
    LineRecord(const LineRecord&) = delete;
    LineRecord& operator=(const LineRecord&) = delete;

    // At the present time.
    void add(TranscriptEvent event);
    // Times are since the construction. Where events were let go a comment says so.
    QByteArray transcript() const;

private:
    struct Header {
        quint32 sinceLast;  // microseconds, at most about an hour
        quint32 kind : 4;
        quint32 length : 28;
    };

    void keep(const TranscriptEvent& event);
    void keepHead(const TranscriptEvent& event);
    void dropFirst();
    Header headerAt(qsizetype offset) const;
    QByteArray payloadAt(qsizetype offset, quint32 length) const;

    Clock& m_clock;
    Clock::Microseconds m_start;
    std::deque<char> m_bytes;
    qsizetype m_cost = 0;
    Clock::Microseconds m_beforeFirst{0};  // the time from which the first kept event counts
    Clock::Microseconds m_last{0};
    std::size_t m_added = 0;
    std::size_t m_dropped = 0;
    std::vector<TranscriptEvent> m_head;
    std::size_t m_headBegin = 0;  // number of its first event
};
