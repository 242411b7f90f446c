// The system's wish that the program ends: SIGTERM, SIGINT and SIGHUP.
#pragma once

#include <functional>
#include <memory>

class QSocketNotifier;

// Calls `onQuit` from the event loop at each of them. One object at a time; where a system has no such
// signals nothing happens. The handlers of before come back with its end.
class QuitSignals {
public:
    explicit QuitSignals(std::function<void()> onQuit);
    QuitSignals(const QuitSignals&) = delete;
    QuitSignals& operator=(const QuitSignals&) = delete;
    ~QuitSignals();

private:
    std::unique_ptr<QSocketNotifier> m_notifier;
};
