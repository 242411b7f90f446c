#include "Scale.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <initializer_list>

namespace {

Scale roundedTo(double step, double lowest, double highest) {
    const double from = std::floor(lowest / step) * step;
    const double to = std::ceil(highest / step) * step;
    // A level line needs a scale, too.
    return {from, to > from ? to : from + step, step};
}

}  // namespace

Scale scaleFor(double lowest, double highest, int steps, double finest) {
    const double least = std::fmax(finest, (highest - lowest) / steps);
    double power = std::pow(10, std::floor(std::log10(least)));
    while (true) {
        for (const double factor : {1.0, 2.0, 5.0}) {
            const double step = factor * power;
            const Scale scale = roundedTo(step, lowest, highest);
            if (step >= finest * 0.999 && scale.to - scale.from <= (steps + 0.001) * step)
                return scale;
        }
        power *= 10;
    }
}

int timeStepFor(double secondsAPixel, double room) {
    constexpr std::array<int, 9> Steps{5, 10, 15, 30, 60, 120, 300, 600, 900};
    const auto fits = [&](int step) { return step / secondsAPixel > room; };
    const auto found = std::ranges::find_if(Steps, fits);
    return found == Steps.end() ? Steps.back() : *found;
}
