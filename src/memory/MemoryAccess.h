// Exchanges with the amplifier's memory over the serial line.
#pragma once

#include "CommandSet.h"
#include "Globals.h"
#include "LineReader.h"
#include "Platform.h"
#include "Task.h"

// Reports nothing to the user. The caller owns the line (LineOwner) and makes sure that the main firmware
// runs. Cancelled, an exchange leaves its answer to the next Flush.
class MemoryAccess {
public:
    MemoryAccess(Platform& platform, Globals& globals)
        : Serial1(platform.Serial1), m_reader(platform.clock, platform.Serial1), m_globals(globals) {}
    MemoryAccess(const MemoryAccess&) = delete;
    MemoryAccess& operator=(const MemoryAccess&) = delete;

    // All that came up to a final ";"; empty after a good second without one, or at once when the port
    // closes. The answer to a write is read to clear the line.
    Task<QString> SendCommandGetResponse(QString command);
    // Reads Globals.m_SerialNumber; 0 and false when the amplifier does not give it.
    Task<bool> GetSerialNumber();

    // Sets the two line modes back, with no answer awaited.
    void LeaveHiddenCommandMode();
    // Restarts the amplifier's processor and clears the line; no answer is awaited. False when the port is
    // closed.
    Task<bool> ResetMcu();
    bool isPortOpen() const { return Serial1.isOpen(); }

private:
    SerialPort& Serial1;
    LineReader m_reader;
    Globals& m_globals;
    // What to go back to: nothing changes them.
    QByteArray m_strOriginalM7 = Command::LeaveHiddenMode;
    QByteArray m_strOriginalAutoInfo = Command::AutomaticInfoOff;
};
