#include "LineReader.h"

#include <algorithm>

namespace {

// How late a long pause may see that its port has gone.
constexpr std::chrono::milliseconds PauseStep{100};

}  // namespace

Task<bool> LineReader::pause(Clock::Microseconds duration) {
    const Clock::Microseconds end = m_clock.now() + duration;
    while (m_port.isOpen() && m_clock.now() < end)
        co_await m_clock.sleep(std::min<Clock::Microseconds>(end - m_clock.now(), PauseStep));
    co_return m_port.isOpen();
}
