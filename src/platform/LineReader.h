// The one way in which a flow lets time pass on the serial line and waits for bytes.
#pragma once

#include "Clock.h"
#include "SerialPort.h"
#include "Task.h"

// Every wait here ends with the port: at once when it is closed already, else within a look.
class LineReader {
public:
    enum class End { Came, TimedOut, Closed };

    LineReader(Clock& clock, SerialPort& port) : m_clock(clock), m_port(port) {}

    // Lets time pass for the amplifier. False when the port is closed.
    Task<bool> pause(Clock::Microseconds duration);

    // Looks every 5 ms, the first time after 5 ms, until `hasCome` says so or more than `limit` has passed.
    template <typename Look>
    Task<End> until(Look hasCome, Ticks limit) {
        const Ticks start = m_clock.ticks();
        return look(std::move(hasCome), [this, start, limit] { return m_clock.ticks() - start > limit; });
    }
    // The same for so many looks at most.
    template <typename Look>
    Task<End> until(Look hasCome, int looks) {
        return look(std::move(hasCome), [looks]() mutable { return --looks == 0; });
    }

private:
    static constexpr std::chrono::milliseconds LookStep{5};

    template <typename Look, typename Limit>
    Task<End> look(Look hasCome, Limit isOver) {
        while (m_port.isOpen()) {
            co_await m_clock.sleep(LookStep);
            if (hasCome())
                co_return End::Came;
            if (isOver())
                co_return End::TimedOut;
        }
        co_return End::Closed;
    }

    Clock& m_clock;
    SerialPort& m_port;
};
