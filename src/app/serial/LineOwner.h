// Who reads the serial line.
#pragma once

#include "Holders.h"

// A flow that writes commands and reads their answers itself takes the line for its span: the status poll
// and the data handler keep out, and what would start another flow is locked (Window1::lock).
using LineOwner = Holders<struct SerialLine>;
