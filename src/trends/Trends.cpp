#include "Trends.h"

#include <algorithm>
#include <cmath>

Trends::Sample& Trends::presentSample(Series series) {
    const bool isNext = m_samples.isEmpty() || now() - m_samples.last().at > SampleLength ||
                        !std::isnan(m_samples.last().value(series));
    if (isNext)
        m_samples.add({.at = now(), .shown = m_clock.wallClock().toMSecsSinceEpoch()});
    return m_samples.last();
}

void Trends::note(Series series, double value) {
    presentSample(series).values[static_cast<std::size_t>(series)] = static_cast<float>(value);
    changed();
}

void Trends::noteState(Mark::Kind kind, const QString& name) {
    std::optional<QString>& state = m_states[static_cast<std::size_t>(kind)];
    const bool isChange = state ? *state != name : kind == Mark::Kind::Fault;
    state = name;
    if (!isChange || name.isEmpty())
        return;
    m_marks.add({.at = now(), .shown = m_clock.wallClock().toMSecsSinceEpoch(), .kind = kind, .text = name});
    changed();
}

std::size_t Trends::firstAtOrAfter(Milliseconds time) const {
    std::size_t begin = 0;
    for (std::size_t end = m_samples.size(); begin < end;) {
        const std::size_t middle = begin + (end - begin) / 2;
        if (m_samples[middle].at < time)
            begin = middle + 1;
        else
            end = middle;
    }
    return begin;
}

const Trends::Sample* Trends::nearest(Milliseconds time) const {
    const std::size_t after = firstAtOrAfter(time);
    const Sample* best = nullptr;
    for (std::size_t index = after - std::min<std::size_t>(after, 1);
         index < std::min(after + 1, m_samples.size()); ++index) {
        const Sample& sample = m_samples[index];
        const auto distance = std::chrono::abs(sample.at - time);
        if (distance <= LongestStep && (!best || distance < std::chrono::abs(best->at - time)))
            best = &sample;
    }
    return best;
}

std::optional<Trends::Limits> Trends::limits(Series series, Milliseconds from, Milliseconds to) const {
    std::optional<Limits> limits;
    for (std::size_t index = firstAtOrAfter(from); index < m_samples.size(); ++index) {
        const Sample& sample = m_samples[index];
        if (sample.at > to)
            break;
        const float value = sample.value(series);
        if (std::isnan(value))
            continue;
        if (!limits)
            limits = {value, value};
        limits->lowest = std::min(limits->lowest, value);
        limits->highest = std::max(limits->highest, value);
    }
    return limits;
}
