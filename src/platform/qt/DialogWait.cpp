#include "DialogWait.h"

DialogWait::~DialogWait() {
    if (m_key)
        m_clock.cancel(*m_key);
}

void DialogWait::await_suspend(std::coroutine_handle<> waiting) {
    m_waiting = waiting;
    QObject::connect(m_dialog, &QDialog::finished, &m_receiver, [this](int result) {
        m_result = result;
        wake();
    });
    QObject::connect(m_dialog, &QObject::destroyed, &m_receiver, [this] { wake(); });
    m_dialog->open();
}

// The dialog is in the middle of its own work: the flow goes on, and may delete it, from the event loop.
void DialogWait::wake() {
    if (m_key)
        return;
    m_key = m_clock.schedule(Clock::Microseconds{0}, [this] {
        m_key.reset();
        m_waiting.resume();
    });
}
