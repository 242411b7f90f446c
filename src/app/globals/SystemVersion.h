// The line of the log that tells on which system the program runs.
#pragma once

#include "Globals.h"

// "<system> Version <version> (<name>)" from what the system tells of itself: its full name, and the short
// names of system and version.
QString systemVersionLine(const QString& prettyName, const QString& type, const QString& version);

// Logs that line, not as trace.
void GetOSVersion(Globals& globals);

// Logs the program's version, then the system's, as at the head of every log.
void logVersions(Globals& globals);
