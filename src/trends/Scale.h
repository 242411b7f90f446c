// Round numbers along an axis.
#pragma once

struct Scale {
    double from;
    double to;
    double step;
};

// The smallest scale of steps of 1, 2 or 5 times a power of ten that holds both limits, in at most `steps`
// steps of at least `finest`. Precondition: lowest <= highest, both finite.
Scale scaleFor(double lowest, double highest, int steps, double finest);

// Seconds between two times on an axis, round ones, so that they stand more than `room` pixels apart, as far
// as a quarter of an hour goes.
int timeStepFor(double secondsAPixel, double room);
