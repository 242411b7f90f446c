// What the program looks at of its command line: a question about itself. All else starts it.
#pragma once

#include <span>
#include <string_view>

#include <QByteArray>

#include "ShortVersion.h"

// The answer to --version or --help, or nothing. Before the toolkit is up, and so without a display.
inline QByteArray commandLineAnswer(std::span<char* const> arguments) {
    for (const std::string_view argument : arguments) {
        if (argument == "--version")
            return "vlxutility " + ShortVersion().toLatin1() + '\n';
        if (argument == "--help")
            return "Usage: vlxutility\n"
                   "Finds the VLX720 amplifier on a serial port, shows its values, operates it, loads its\n"
                   "firmware, and saves and restores its memory.\n\n"
                   "  --help     Tells this and ends.\n"
                   "  --version  Tells the version and ends.\n";
    }
    return {};
}
