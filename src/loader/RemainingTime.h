// How long the rest of a job takes, if it goes on as it has gone so far.
#pragma once

#include <QString>

#include "Clock.h"

class RemainingTime {
public:
    // " 0:21 left" once a tenth is done, else nothing. It is counted from the first value above 0, for what
    // comes before is not of the same kind.
    QString text(Clock::Microseconds now, int value, int maximum) {
        if (m_value == 0) {
            m_begin = now;
            m_beginValue = value;
        }
        m_value = value;
        const int done = value - m_beginValue;
        if (done <= 0 || done * 10 < maximum || value >= maximum)
            return {};
        const auto left = std::chrono::ceil<std::chrono::seconds>((now - m_begin) * (maximum - value) / done);
        return QStringLiteral(" %1:%2 left")
            .arg(left.count() / 60)
            .arg(left.count() % 60, 2, 10, QLatin1Char('0'));
    }

private:
    Clock::Microseconds m_begin{0};
    int m_beginValue = 0;
    int m_value = 0;
};
