// A port with a simulated amplifier behind it, on a clock that moves only when told.
#pragma once

#include <gtest/gtest.h>

#include "SimClock.h"
#include "SimulatedPort.h"

using namespace std::chrono_literals;

class SimBench : public testing::Test {
protected:
    explicit SimBench(const Vlx720::Settings& settings = {})
        : amplifier(clock, settings), port(clock, amplifier) {
        EXPECT_TRUE(port.Open());
    }

    // What has come within `wait` of writing the bytes.
    QByteArray ask(const QByteArray& bytes, Clock::Microseconds wait = 200ms) {
        port.Write(bytes);
        clock.advance(wait);
        return port.ReadAll();
    }

    void setPortSpeed(int bitsPerSecond) {
        port.setBaud(Baud::codeOf(bitsPerSecond));
        port.Reset();
    }

    SimClock clock;
    Vlx720 amplifier;
    SimulatedPort port;
};
