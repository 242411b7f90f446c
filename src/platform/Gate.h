// Something that a flow waits for and an event brings about: a window closes, a user decides.
#pragma once

#include <coroutine>
#include <optional>
#include <utility>

#include "Clock.h"

// Closed at first; once open it stays open. One flow at a time waits, and goes on from the event loop,
// never from inside open(): the flow may destroy whoever opened the gate. A flow that waits at a gate that
// is destroyed never goes on; it is cancelled with its task.
class Gate {
public:
    class [[nodiscard]] Wait {
    public:
        explicit Wait(Gate& gate) : m_gate(&gate) {}
        Wait(const Wait&) = delete;
        Wait& operator=(const Wait&) = delete;
        ~Wait() {
            if (m_gate && m_gate->m_wait == this)
                m_gate->leave();
        }

        bool await_ready() const noexcept { return m_gate->m_isOpen; }
        void await_suspend(std::coroutine_handle<> waiting) {
            m_waiting = waiting;
            m_gate->m_wait = this;
        }
        void await_resume() const noexcept {}

    private:
        friend class Gate;

        Gate* m_gate;
        std::coroutine_handle<> m_waiting;
    };

    explicit Gate(Clock& clock) : m_clock(clock) {}
    Gate(const Gate&) = delete;
    Gate& operator=(const Gate&) = delete;
    ~Gate() {
        if (m_wait)
            m_wait->m_gate = nullptr;
        leave();
    }

    void open() {
        m_isOpen = true;
        if (m_wait && !m_resuming)
            m_resuming = m_clock.schedule(Clock::Microseconds{0}, [this] {
                m_resuming.reset();
                std::exchange(m_wait, nullptr)->m_waiting.resume();
            });
    }
    bool isOpen() const { return m_isOpen; }

    // co_await gate.wait()
    Wait wait() { return Wait(*this); }

private:
    void leave() {
        m_wait = nullptr;
        if (m_resuming)
            m_clock.cancel(*std::exchange(m_resuming, std::nullopt));
    }

    Clock& m_clock;
    bool m_isOpen = false;
    Wait* m_wait = nullptr;
    std::optional<Clock::WaitKey> m_resuming;
};
