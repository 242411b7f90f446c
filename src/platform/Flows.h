// The running top-level flows of the program.
#pragma once

#include <exception>
#include <functional>
#include <list>

#include "Clock.h"
#include "Task.h"

// Owns the flows that handlers start. A flow that ends is let go from the event loop; an exception that
// escapes from one goes to the default error handling and ends that flow only. Destroying the object
// cancels all flows: not from inside one of them.
class Flows {
public:
    using ErrorHandler = std::function<void(std::exception_ptr)>;

    Flows(Clock& clock, ErrorHandler onError) : m_clock(clock), m_onError(std::move(onError)) {}
    Flows(const Flows&) = delete;
    Flows& operator=(const Flows&) = delete;
    ~Flows();

    void start(Task<> flow);
    void cancelAll();
    bool isIdle() const;

private:
    Task<> supervise(Task<> flow);
    void reap();

    Clock& m_clock;
    ErrorHandler m_onError;
    std::list<Task<>> m_running;
    std::optional<Clock::WaitKey> m_reaping;
};
