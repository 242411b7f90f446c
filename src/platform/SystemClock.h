// Real time, on the event loop of the main thread.
#pragma once

#include <QElapsedTimer>
#include <QTimer>

#include "Clock.h"

class SystemClock final : public Clock {
public:
    SystemClock();

    Microseconds now() const override { return Microseconds(m_elapsed.nsecsElapsed() / 1000); }
    QDateTime wallClock() const override { return QDateTime::currentDateTime(); }
    qint64 wallSeconds() const override { return QDateTime::currentSecsSinceEpoch(); }

protected:
    void wakeAt(std::optional<Microseconds> due) override;

private:
    QElapsedTimer m_elapsed;
    QTimer m_timer;
};
