// The modem lines as the kernel would have them: in this program every ioctl passes here first.
// A pseudo-terminal has no lines, so they are played; all other requests go on to the system.
#pragma once

namespace ModemLines {

// The system has just opened a port: it has raised DTR and RTS. Forgets what was recorded.
void opened();

bool isDtrRaised();
bool isRtsRaised();
// How often DTR or RTS was set while it was to stay down.
int timesRaised();

// From now on requests for the lines fail as on an adapter without them.
void refuse();

// Bytes that the driver says it holds from now on; 0 asks the system.
void setHeldByDriver(int count);
// Whether the driver can tell that its transmitter is empty, and says that it is.
void setTransmitterKnown(bool isKnown);
// Whether the driver was asked for low latency since opened().
bool isLowLatency();

}  // namespace ModemLines
