#include "LineRecord.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>

namespace {

using Kind = TranscriptEvent::Kind;

bool hasBytes(Kind kind) {
    return kind == Kind::Out || kind == Kind::In;
}

QByteArray packed(const TranscriptEvent& event) {
    return hasBytes(event.kind) ? event.bytes : QByteArray::number(event.value) + ' ' + event.text.toUtf8();
}

TranscriptEvent unpacked(Clock::Microseconds time, Kind kind, const QByteArray& payload) {
    if (hasBytes(kind))
        return {.time = time, .kind = kind, .bytes = payload};
    const qsizetype blank = payload.indexOf(' ');
    return {.time = time,
            .kind = kind,
            .value = payload.left(blank).toInt(),
            .text = QString::fromUtf8(payload.mid(blank + 1))};
}

qsizetype costOf(qsizetype length) {
    return std::max(length, LineRecord::LeastCost);
}

}  // namespace

void LineRecord::add(TranscriptEvent event) {
    event.time = m_clock.now() - m_start;
    keepHead(event);
    keep(event);
    while (m_cost > Limit)
        dropFirst();
}

void LineRecord::keepHead(const TranscriptEvent& event) {
    if (event.kind == Kind::Open) {
        m_head.clear();
        m_headBegin = m_added;
    }
    const bool isOpened = !m_head.empty() || event.kind == Kind::Open;
    if (isOpened && m_head.size() < HeadLimit)
        m_head.push_back(event);
}

void LineRecord::keep(const TranscriptEvent& event) {
    const QByteArray payload = packed(event);
    const auto pause = std::min<qint64>((event.time - m_last).count(), std::numeric_limits<quint32>::max());
    const Header header{static_cast<quint32>(pause), static_cast<quint32>(event.kind),
                        static_cast<quint32>(payload.size())};
    const char* bytes = reinterpret_cast<const char*>(&header);
    m_bytes.insert(m_bytes.end(), bytes, bytes + sizeof header);
    m_bytes.insert(m_bytes.end(), payload.begin(), payload.end());
    m_cost += costOf(payload.size());
    // Counted in what is kept, so that times add up.
    m_last += Clock::Microseconds(pause);
    ++m_added;
}

LineRecord::Header LineRecord::headerAt(qsizetype offset) const {
    std::array<char, sizeof(Header)> bytes{};
    std::copy_n(m_bytes.begin() + offset, bytes.size(), bytes.begin());
    Header header{};
    std::memcpy(&header, bytes.data(), sizeof header);
    return header;
}

QByteArray LineRecord::payloadAt(qsizetype offset, quint32 length) const {
    QByteArray payload(static_cast<qsizetype>(length), Qt::Uninitialized);
    std::copy_n(m_bytes.begin() + offset, length, payload.begin());
    return payload;
}

void LineRecord::dropFirst() {
    const Header header = headerAt(0);
    m_bytes.erase(m_bytes.begin(), m_bytes.begin() + static_cast<qsizetype>(sizeof header + header.length));
    m_cost -= costOf(static_cast<qsizetype>(header.length));
    m_beforeFirst += Clock::Microseconds(header.sinceLast);
    ++m_dropped;
}

QByteArray LineRecord::transcript() const {
    QByteArray text = transcriptHeading();
    // What of the head is no longer among the rest.
    for (std::size_t index = 0; index < m_head.size() && m_headBegin + index < m_dropped; ++index)
        text += transcriptLine(m_head[index]);
    if (m_dropped > 0)
        text += "# Older events were let go: " + QByteArray::number(static_cast<qulonglong>(m_dropped)) +
                " in all.\n";
    Clock::Microseconds time = m_beforeFirst;
    for (qsizetype offset = 0; offset < static_cast<qsizetype>(m_bytes.size());) {
        const Header header = headerAt(offset);
        offset += static_cast<qsizetype>(sizeof header);
        time += Clock::Microseconds(header.sinceLast);
        text +=
            transcriptLine(unpacked(time, static_cast<Kind>(header.kind), payloadAt(offset, header.length)));
        offset += static_cast<qsizetype>(header.length);
    }
    return text;
}
