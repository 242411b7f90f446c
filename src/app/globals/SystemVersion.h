// The line of the log that tells on which system the program runs.
#pragma once

#include "Globals.h"

// Logs "<system> Version <version> (<name>)", not as trace.
void GetOSVersion(Globals& globals);
