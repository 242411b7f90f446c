// Turning the real event loop from a test.
#pragma once

#include <chrono>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>

// Turns the loop until the condition holds; false when it does not within `limit`.
template <typename Condition>
bool turnUntil(Condition condition, std::chrono::milliseconds limit = std::chrono::seconds(20)) {
    QElapsedTimer elapsed;
    elapsed.start();
    while (!condition()) {
        if (elapsed.hasExpired(limit.count()))
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
    }
    return true;
}

inline void turnFor(std::chrono::milliseconds duration) {
    turnUntil([] { return false; }, duration);
}
