#include "TimeAxis.h"

#include <algorithm>

void TimeAxis::setPaused(bool paused) {
    if (paused)
        m_end = m_trends.now();
    else
        m_end.reset();
}

void TimeAxis::zoom(double factor, Milliseconds anchor) {
    const auto ms = static_cast<Milliseconds::rep>(static_cast<double>(m_span.count()) * factor);
    const Milliseconds span = std::clamp(Milliseconds(ms), ShortestSpan, Trends::Span);
    const double share = static_cast<double>((to() - anchor).count()) / static_cast<double>(m_span.count());
    m_span = span;
    if (isPaused())
        hold(anchor +
             Milliseconds(static_cast<Milliseconds::rep>(share * static_cast<double>(span.count()))));
}

void TimeAxis::bringIntoView(Milliseconds time) {
    if (!isPaused())
        return;
    if (time < from())
        hold(time + m_span);
    else if (time > to())
        hold(time);
}

// Within the recorded hour, if it can be.
void TimeAxis::hold(Milliseconds end) {
    const Milliseconds now = m_trends.now();
    m_end = std::clamp(end, std::min(now, now - Trends::Span + m_span), now);
}

void TimeAxis::setPlace(double left, double right) {
    m_left = left;
    m_right = std::max(right, left + 1);
}

double TimeAxis::x(Milliseconds time) const {
    return m_left + (m_right - m_left) * static_cast<double>((time - from()).count()) /
                        static_cast<double>(m_span.count());
}

TimeAxis::Milliseconds TimeAxis::time(double x) const {
    const double share = (x - m_left) / (m_right - m_left);
    return from() + Milliseconds(static_cast<Milliseconds::rep>(share * static_cast<double>(m_span.count())));
}
