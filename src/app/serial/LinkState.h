// The state of the link in a few words, to be seen at a glance.
#pragma once

#include <chrono>
#include <optional>

#include "Globals.h"
#include "SerialPort.h"

struct LinkState {
    enum class Health { Good, Waiting, Bad };

    Health health;
    QString text;

    bool operator==(const LinkState&) const = default;
};

// `isBusy`: a flow has the line; `silence` is how long the poll has had no answer, once that counts.
LinkState linkState(const SerialPort& port, const Globals& globals, bool isBusy,
                    std::optional<std::chrono::seconds> silence);
