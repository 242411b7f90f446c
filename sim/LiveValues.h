// What the amplifier measures of itself.
#pragma once

#include <optional>

#include "Clock.h"

struct Readings {
    int decivolts = 0;
    int deciamperes = 0;
    int watts = 0;
    int deciSwr = 10;
    int celsius = 25;
};

// Values that move as those of an amplifier at work: while it operates, it is driven for some seconds in
// every eight; the voltage sags with the power and the temperature creeps up. They depend on nothing but the
// clock and the times at which operation began and ended.
class LiveValues {
public:
    explicit LiveValues(const Clock& clock);

    void setOperating(bool isOperating);
    Readings read() const;

    // Stands still at these values until release().
    void hold(const Readings& readings) { m_held = readings; }
    void release() { m_held.reset(); }

private:
    double temperature() const;

    const Clock& m_clock;
    bool m_isOperating = false;
    Clock::Microseconds m_since;
    double m_temperatureThen;
    std::optional<Readings> m_held;
};
