#include "Flows.h"

#include <algorithm>

#include "Errors.h"

Flows::~Flows() {
    cancelAll();
}

void Flows::start(Task<> flow) {
    Task<> supervised = supervise(std::move(flow));
    if (!supervised.isDone())
        m_running.push_back(std::move(supervised));
}

void Flows::cancelAll() {
    m_running.clear();
    if (m_reaping)
        m_clock.cancel(*std::exchange(m_reaping, std::nullopt));
}

bool Flows::isIdle() const {
    return std::all_of(m_running.begin(), m_running.end(), [](const Task<>& task) { return task.isDone(); });
}

Task<> Flows::supervise(Task<> flow) {
    try {
        co_await flow;
    } catch (const FlowCancelled&) {  // NOLINT(bugprone-empty-catch)
    } catch (...) {
        m_onError(std::current_exception());
    }
    // A flow that ends before its first wait was never among the running ones.
    if (!m_reaping && !m_running.empty())
        m_reaping = m_clock.schedule(Clock::Microseconds{0}, [this] { reap(); });
}

void Flows::reap() {
    m_reaping.reset();
    m_running.remove_if([](const Task<>& task) { return task.isDone(); });
}
