// The simulated amplifier's controls as lines of text.
#pragma once

#include <QString>

#include "Vlx720.h"

// Does what a line such as "fault 9" or "power off" says, and returns what there is to tell of it: the state
// of the amplifier, or how the command is used. "help" lists all commands. An empty line does nothing.
QString runConsoleCommand(Vlx720& amplifier, const QString& line);
