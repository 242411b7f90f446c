// One direction of the line: carries bytes at ten bits each and hands them over when they have passed.
#pragma once

#include <deque>
#include <functional>
#include <map>
#include <optional>

#include <QByteArray>

#include "Clock.h"
#include "Task.h"

// What a receiver hears of bytes that were sent at another speed than its own: as many bytes, always the
// same ones, and never a ";".
QByteArray heardAtWrongSpeed(const QByteArray& bytes, int sentAt, int heardAt);

// Bytes that are sent together are handed over together, at the microsecond at which the last bit of the
// last of them has passed; those behind wait for their turn.
class Wire {
public:
    // Called from the event loop, or from settle(), setSpeed().
    using Receiver = std::function<void(const QByteArray& bytes, int bitsPerSecond)>;

    Wire(Clock& clock, Receiver receiver) : m_clock(clock), m_receiver(std::move(receiver)) {}
    Wire(const Wire&) = delete;
    Wire& operator=(const Wire&) = delete;
    ~Wire() { cut(); }

    void send(const QByteArray& bytes, int bitsPerSecond);
    // The same, handed over message by message: a piece ends after each ";", as a device acts on that.
    void sendMessages(const QByteArray& bytes, int bitsPerSecond);
    void sendLater(Clock::Microseconds delay, const QByteArray& bytes, int bitsPerSecond);
    // Joins what is sent this way within `window` of the first of it into one piece.
    void gather(Clock::Microseconds window, const QByteArray& bytes, int bitsPerSecond);
    // Sends byte by byte, one each `gap`, after all that is sent this way already.
    void spread(Clock::Microseconds gap, const QByteArray& bytes, int bitsPerSecond);

    // What has not passed yet goes on at another speed; the byte that is half way starts anew.
    void setSpeed(int bitsPerSecond);
    // Hands over, or drops, those bytes that have passed as part of a piece that has not.
    void settle();
    void discardPassed();
    // Forgets all that has not been handed over.
    void cut();

    bool isIdle() const { return m_pieces.empty(); }
    // Ends when all that was sent has passed, or was cut.
    Task<> waitUntilIdle();
    // A line without a speed of its own: bytes pass at the next turn of the event loop.
    void setInstant(bool isInstant) { m_isInstant = isInstant; }

private:
    // Bytes that follow each other without a gap are a run. They are timed from its start, so that nothing
    // is lost by rounding.
    struct Piece {
        QByteArray bytes;
        int bitsPerSecond;
        Clock::Microseconds runStart;
        std::int64_t runBytes;  // up to the end of this piece
        Clock::Microseconds end;
    };

    void later(Clock::Microseconds delay, Clock::Callback callback);
    QByteArray takePassed();
    void arm();
    void handOver();

    Clock& m_clock;
    Receiver m_receiver;
    bool m_isInstant = false;
    std::deque<Piece> m_pieces;
    std::optional<Clock::WaitKey> m_due;

    int m_lastDelayed = 0;
    std::map<int, Clock::WaitKey> m_delayed;
    QByteArray m_gathered;
    Clock::Microseconds m_spreadEnd{0};
};
