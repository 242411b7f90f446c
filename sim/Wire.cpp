#include "Wire.h"

#include <algorithm>

namespace {

constexpr int BitsPerByte = 10;
constexpr std::int64_t MicrosecondsPerSecond = 1'000'000;

Clock::Microseconds timeOf(std::int64_t byteCount, int bitsPerSecond) {
    const std::int64_t scaled = byteCount * BitsPerByte * MicrosecondsPerSecond;
    return Clock::Microseconds((scaled + bitsPerSecond - 1) / bitsPerSecond);
}

std::int64_t bytesIn(Clock::Microseconds time, int bitsPerSecond) {
    return time.count() * bitsPerSecond / (BitsPerByte * MicrosecondsPerSecond);
}

}  // namespace

QByteArray heardAtWrongSpeed(const QByteArray& bytes, int sentAt, int heardAt) {
    QByteArray heard = bytes;
    // A set top bit keeps it apart from all that the protocol knows.
    for (char& byte : heard)
        byte = static_cast<char>(0x80 | ((byte + sentAt / 75 + heardAt / 300) & 0x7F));
    return heard;
}

void Wire::send(const QByteArray& bytes, int bitsPerSecond) {
    if (bytes.isEmpty())
        return;
    const bool continuesRun = !m_pieces.empty() && m_pieces.back().bitsPerSecond == bitsPerSecond;
    Piece piece{bytes, bitsPerSecond, m_clock.now(), bytes.size(), m_clock.now()};
    if (continuesRun) {
        piece.runStart = m_pieces.back().runStart;
        piece.runBytes += m_pieces.back().runBytes;
    } else if (!m_pieces.empty()) {
        piece.runStart = m_pieces.back().end;
    }
    if (!m_isInstant)
        piece.end = piece.runStart + timeOf(piece.runBytes, bitsPerSecond);
    m_pieces.push_back(std::move(piece));
    arm();
}

void Wire::sendMessages(const QByteArray& bytes, int bitsPerSecond) {
    qsizetype from = 0;
    while (from < bytes.size()) {
        const qsizetype end = bytes.indexOf(';', from);
        const qsizetype length = end < 0 ? bytes.size() - from : end + 1 - from;
        send(bytes.mid(from, length), bitsPerSecond);
        from += length;
    }
}

void Wire::sendLater(Clock::Microseconds delay, const QByteArray& bytes, int bitsPerSecond) {
    later(delay, [this, bytes, bitsPerSecond] { send(bytes, bitsPerSecond); });
}

void Wire::gather(Clock::Microseconds window, const QByteArray& bytes, int bitsPerSecond) {
    if (m_gathered.isEmpty())
        later(window, [this, bitsPerSecond] { send(std::exchange(m_gathered, {}), bitsPerSecond); });
    m_gathered += bytes;
}

void Wire::spread(Clock::Microseconds gap, const QByteArray& bytes, int bitsPerSecond) {
    m_spreadEnd = std::max(m_spreadEnd, m_clock.now());
    for (const char byte : bytes) {
        sendLater(m_spreadEnd - m_clock.now(), QByteArray(1, byte), bitsPerSecond);
        m_spreadEnd += gap;
    }
}

void Wire::later(Clock::Microseconds delay, Clock::Callback callback) {
    const int id = ++m_lastDelayed;
    m_delayed[id] = m_clock.schedule(delay, [this, id, callback = std::move(callback)] {
        m_delayed.erase(id);
        callback();
    });
}

void Wire::setSpeed(int bitsPerSecond) {
    settle();
    const auto pieces = std::exchange(m_pieces, {});
    if (m_due)
        m_clock.cancel(*std::exchange(m_due, std::nullopt));
    for (const Piece& piece : pieces)
        send(piece.bytes, bitsPerSecond);
}

void Wire::settle() {
    const QByteArray passed = takePassed();
    if (!passed.isEmpty())
        m_receiver(passed, m_pieces.front().bitsPerSecond);
}

void Wire::discardPassed() {
    takePassed();
}

// The last byte of a piece always stays: its turn comes from the event loop.
QByteArray Wire::takePassed() {
    if (m_pieces.empty() || m_isInstant)
        return {};
    Piece& piece = m_pieces.front();
    const std::int64_t runPassed = bytesIn(m_clock.now() - piece.runStart, piece.bitsPerSecond);
    const std::int64_t left = std::max<std::int64_t>(piece.runBytes - runPassed, 1);
    const qsizetype count = piece.bytes.size() - static_cast<qsizetype>(left);
    if (count <= 0)
        return {};
    const QByteArray passed = piece.bytes.left(count);
    piece.bytes.remove(0, count);
    return passed;
}

void Wire::cut() {
    m_pieces.clear();
    if (m_due)
        m_clock.cancel(*std::exchange(m_due, std::nullopt));
    for (const auto& [id, key] : m_delayed)
        m_clock.cancel(key);
    m_delayed.clear();
    m_gathered.clear();
    m_spreadEnd = Clock::Microseconds(0);
}

Task<> Wire::waitUntilIdle() {
    // A cut line has nothing to wait for, so it is looked at now and then.
    constexpr Clock::Microseconds LongestSleep{5000};
    while (!m_pieces.empty())
        co_await m_clock.sleep(
            std::clamp(m_pieces.back().end - m_clock.now(), Clock::Microseconds(0), LongestSleep));
}

void Wire::arm() {
    if (!m_due && !m_pieces.empty())
        m_due = m_clock.scheduleAt(m_pieces.front().end, [this] { handOver(); });
}

void Wire::handOver() {
    m_due.reset();
    while (!m_pieces.empty() && m_pieces.front().end <= m_clock.now()) {
        const Piece piece = std::move(m_pieces.front());
        m_pieces.pop_front();
        m_receiver(piece.bytes, piece.bitsPerSecond);
    }
    arm();
}
