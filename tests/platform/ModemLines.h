// The modem lines as the kernel would have them: in this program every ioctl passes here first.
// A pseudo-terminal has no lines, so they are played; all other requests go on to the system.
#pragma once

#include <sys/ioctl.h>

struct ModemLines {
    // The system has just opened a port: it has raised DTR and RTS.
    int state = TIOCM_DTR | TIOCM_RTS;
    int timesRaised = 0;            // how often one was set while it was to stay down
    bool refused = false;           // requests for the lines fail as on an adapter without them
    int heldByDriver = 0;           // bytes; 0 asks the system
    bool knowsTransmitter = false;  // the driver can tell that its transmitter is empty, and says that it is
    bool isLowLatency = false;      // the driver was asked for it
};

extern ModemLines modemLines;
