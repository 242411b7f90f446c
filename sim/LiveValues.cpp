#include "LiveValues.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double AmbientCelsius = 25;
constexpr double OperatingCelsius = 48;  // where the temperature ends when driven on and on
constexpr double WarmingSeconds = 150;

constexpr double CycleSeconds = 8;
constexpr double DrivenSeconds = 5;
constexpr double NominalWatts = 480;
constexpr double WattsOfSpeech = 60;

constexpr double IdleVolts = 53.2;
constexpr double VoltsPerWatt = 0.007;
constexpr double BiasAmperes = 1.1;
constexpr double Efficiency = 0.55;

double seconds(Clock::Microseconds time) {
    return std::chrono::duration<double>(time).count();
}

int tenths(double value) {
    return static_cast<int>(std::lround(value * 10));
}

}  // namespace

LiveValues::LiveValues(const Clock& clock)
    : m_clock(clock), m_since(clock.now()), m_temperatureThen(AmbientCelsius) {}

void LiveValues::setOperating(bool isOperating) {
    m_temperatureThen = temperature();
    m_since = m_clock.now();
    m_isOperating = isOperating;
}

double LiveValues::temperature() const {
    const double target = m_isOperating ? OperatingCelsius : AmbientCelsius;
    const double passed = seconds(m_clock.now() - m_since);
    return target + (m_temperatureThen - target) * std::exp(-passed / WarmingSeconds);
}

Readings LiveValues::read() const {
    if (m_held)
        return *m_held;
    const double time = seconds(m_clock.now() - m_since);
    const double inCycle = std::fmod(time, CycleSeconds);
    const bool isDriven = m_isOperating && inCycle >= CycleSeconds - DrivenSeconds;
    const double watts = isDriven ? NominalWatts + WattsOfSpeech * std::sin(5 * time) : 0;
    const double volts = IdleVolts - watts * VoltsPerWatt;
    const double bias = m_isOperating ? BiasAmperes : 0;
    const double swr = isDriven ? 1.3 + 0.1 * std::sin(0.7 * time) : 1;
    return {tenths(volts), tenths(bias + watts / (Efficiency * volts)), static_cast<int>(std::lround(watts)),
            tenths(swr), static_cast<int>(std::lround(temperature()))};
}
