// What happens to an error that no flow and no handler catches.
#pragma once

#include <exception>
#include <functional>
#include <optional>

#include "Dialogs.h"
#include "Task.h"

// The one top-level handler: shows the message and logs it; the program goes on. While its box is open,
// further errors are only logged, so that an error that repeats does not bury the user under boxes. Must
// outlive whoever hands it errors.
class DefaultErrorHandler {
public:
    using Log = std::function<void(const QString& line)>;

    DefaultErrorHandler(Dialogs& dialogs, Log log) : m_dialogs(dialogs), m_log(std::move(log)) {}
    DefaultErrorHandler(const DefaultErrorHandler&) = delete;
    DefaultErrorHandler& operator=(const DefaultErrorHandler&) = delete;

    // Precondition: `error` is not null.
    void handle(const std::exception_ptr& error);

private:
    Dialogs& m_dialogs;
    Log m_log;
    std::optional<Task<>> m_box;
};
