#pragma once

#include <coroutine>
#include <optional>

#include <QDialog>
#include <QObject>
#include <QPointer>

#include "Clock.h"
#include "Errors.h"

// co_await DialogWait(clock, dialog): opens the dialog and ends, from the event loop, when the user has
// closed it; true when it was accepted. A dialog that goes away unanswered, with its parent window, cancels
// the flow that waits (FlowCancelled). Destroying the wait leaves the dialog as it is.
class [[nodiscard]] DialogWait {
public:
    DialogWait(Clock& clock, QDialog* dialog) : m_clock(clock), m_dialog(dialog) {}
    DialogWait(const DialogWait&) = delete;
    DialogWait& operator=(const DialogWait&) = delete;
    ~DialogWait();

    bool await_ready() const noexcept { return m_dialog.isNull(); }
    void await_suspend(std::coroutine_handle<> waiting);
    bool await_resume() const {
        if (!m_result)
            throw FlowCancelled();
        return m_result == QDialog::Accepted;
    }

private:
    void wake();

    Clock& m_clock;
    QPointer<QDialog> m_dialog;
    QObject m_receiver;
    std::coroutine_handle<> m_waiting;
    std::optional<Clock::WaitKey> m_key;
    std::optional<int> m_result;
};
