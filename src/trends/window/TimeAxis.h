// The stretch of time that the strips show, and its place on the screen.
#pragma once

#include <optional>

#include "Trends.h"

class TimeAxis {
public:
    using Milliseconds = Trends::Milliseconds;

    static constexpr Milliseconds ShortestSpan = std::chrono::minutes(1);

    explicit TimeAxis(const Trends& trends) : m_trends(trends) {}

    Milliseconds from() const { return to() - m_span; }
    // The present while the axis follows it.
    Milliseconds to() const { return m_end.value_or(m_trends.now()); }
    Milliseconds span() const { return m_span; }

    bool isPaused() const { return m_end.has_value(); }
    void setPaused(bool paused);
    // Shows a longer or shorter span. What stands at `anchor` stays in its place; while the axis follows the
    // present, the present does.
    void zoom(double factor, Milliseconds anchor);
    // Moves a paused axis so that it shows this time.
    void bringIntoView(Milliseconds time);

    // Where the strips begin and end, in pixels.
    void setPlace(double left, double right);
    double left() const { return m_left; }
    double right() const { return m_right; }
    double x(Milliseconds time) const;
    Milliseconds time(double x) const;

private:
    void hold(Milliseconds end);

    const Trends& m_trends;
    Milliseconds m_span = Trends::Span;
    std::optional<Milliseconds> m_end;
    double m_left = 0;
    double m_right = 1;
};
