// What the status poll has shown in the last hour: five values a second, and what happened beside them.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <limits>
#include <optional>

#include <QString>

#include "Clock.h"
#include "Ring.h"

class Trends {
public:
    // In the order of the strips and of the columns of a saved table.
    enum class Series { PAVoltage, PACurrent, Temperature, Power, SWR };
    static constexpr std::size_t SeriesCount = 5;

    using Milliseconds = Clock::Milliseconds;
    static constexpr Milliseconds Span = std::chrono::hours(1);
    // One sample a second for an hour.
    static constexpr std::size_t SampleLimit = 3600;
    static constexpr std::size_t MarkLimit = 1000;
    // Values that come within this time of the first one belong to the same poll.
    static constexpr Milliseconds SampleLength{500};
    // Samples further apart than this have a gap between them: nothing was polled.
    static constexpr Milliseconds LongestStep{3000};

    static constexpr float NoValue = std::numeric_limits<float>::quiet_NaN();

    struct Sample {
        Milliseconds at{0};      // on the clock, which never goes back
        std::int64_t shown = 0;  // the user's clock, in milliseconds since 1970
        std::array<float, SeriesCount> values{NoValue, NoValue, NoValue, NoValue, NoValue};

        float value(Series series) const { return values[static_cast<std::size_t>(series)]; }
    };

    struct Mark {
        enum class Kind { Fault, Mode, Band };

        Milliseconds at{0};
        std::int64_t shown = 0;
        Kind kind = Kind::Fault;
        QString text = {};
    };

    struct Limits {
        float lowest;
        float highest;
    };

    explicit Trends(Clock& clock) : m_clock(clock) {}
    Trends(const Trends&) = delete;
    Trends& operator=(const Trends&) = delete;

    void note(Series series, double value);
    // What stands now, at every poll; a change becomes a mark. A fault that goes leaves none, and what is
    // noted first is no change.
    void noteFault(const QString& name) { noteState(Mark::Kind::Fault, name); }
    void noteMode(const QString& name) { noteState(Mark::Kind::Mode, name); }
    void noteBand(const QString& name) { noteState(Mark::Kind::Band, name); }

    Milliseconds now() const { return std::chrono::duration_cast<Milliseconds>(m_clock.now()); }
    const Ring<Sample, SampleLimit>& samples() const { return m_samples; }
    const Ring<Mark, MarkLimit>& marks() const { return m_marks; }
    // Index of the first sample at or after that time; size() when there is none.
    std::size_t firstAtOrAfter(Milliseconds time) const;
    // The sample nearest to that time, if one is near enough to be no gap.
    const Sample* nearest(Milliseconds time) const;
    // None when nothing was seen between these times.
    std::optional<Limits> limits(Series series, Milliseconds from, Milliseconds to) const;

    // Called after each value and each mark.
    std::function<void()> Changed;

private:
    void noteState(Mark::Kind kind, const QString& name);
    Sample& presentSample(Series series);
    void changed() const {
        if (Changed)
            Changed();
    }

    Clock& m_clock;
    Ring<Sample, SampleLimit> m_samples;
    Ring<Mark, MarkLimit> m_marks;
    std::array<std::optional<QString>, 3> m_states;  // of each kind of mark
};
