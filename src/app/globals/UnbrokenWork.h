// Work that must not be given up half way: it would leave the amplifier half written.
#pragma once

#include "Holders.h"

// A firmware load and a write to the amplifier's memory hold it. The program ends after them, and the system
// is kept from sleeping meanwhile.
using UnbrokenWork = Holders<struct AmplifierWrite>;
