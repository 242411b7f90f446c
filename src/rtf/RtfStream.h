// The bytes of an RTF file under the reader.
#pragma once

#include <cstdint>
#include <utility>

#include <QByteArray>

#include "Clock.h"

class RtfStream {
public:
    // Larger files are not read.
    static constexpr qint64 LargestFile = 64 << 20;

    RtfStream(QByteArray bytes, Clock& clock) : m_bytes(std::move(bytes)), m_clock(clock) {}
    RtfStream(const RtfStream&) = delete;
    RtfStream& operator=(const RtfStream&) = delete;

    qsizetype length() const { return m_bytes.size(); }
    qsizetype position() const { return m_position; }
    bool isAtEnd() const { return m_position == m_bytes.size(); }

    // The next byte. Not at the end.
    char read() { return m_bytes.constData()[m_position++]; }
    // So that the last byte is read again. Not at the start.
    void stepBack() { --m_position; }
    // Moves on. Beyond the end, or a negative count, is the end.
    void skip(std::int32_t count) {
        m_position = count < 0 || count > length() - m_position ? length() : m_position + count;
    }
    // Moves on to the first byte that does not fit, and gives those that did.
    template <typename Fits>
    QByteArrayView readWhile(Fits fits) {
        const qsizetype begin = m_position;
        while (!isAtEnd() && fits(m_bytes.constData()[m_position]))
            ++m_position;
        return QByteArrayView(m_bytes).sliced(begin, m_position - begin);
    }

    // co_await stream.breathe(), once for each element that is read: lets the window live.
    Clock::Breath breathe() {
        return ++m_elements % ElementsPerLook == 0 ? m_clock.breathe() : Clock::Breath(m_clock, false);
    }

private:
    // Looking at the clock for each byte would take longer than reading it.
    static constexpr unsigned ElementsPerLook = 256;

    QByteArray m_bytes;
    Clock& m_clock;
    qsizetype m_position = 0;
    unsigned m_elements = 0;
};
