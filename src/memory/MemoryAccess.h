// Exchanges with the amplifier's memory over the serial line.
#pragma once

#include "Globals.h"
#include "Platform.h"
#include "Task.h"

// Reports nothing to the user. The caller owns the line (LineOwner) and makes sure that the main firmware
// runs. Cancelled, an exchange leaves its answer to the next Flush.
class MemoryAccess {
public:
    // While one lives, the amplifier's memory is being written, which must not end halfway.
    class [[nodiscard]] WriteSpan {
    public:
        explicit WriteSpan(MemoryAccess& memory) : m_memory(memory) { ++m_memory.m_writes; }
        WriteSpan(const WriteSpan&) = delete;
        WriteSpan& operator=(const WriteSpan&) = delete;
        ~WriteSpan() { --m_memory.m_writes; }

    private:
        MemoryAccess& m_memory;
    };

    MemoryAccess(Platform& platform, Globals& globals)
        : m_clock(platform.clock), Serial1(platform.Serial1), m_globals(globals) {}
    MemoryAccess(const MemoryAccess&) = delete;
    MemoryAccess& operator=(const MemoryAccess&) = delete;

    bool isWriting() const { return m_writes > 0; }

    // All that came up to a final ";"; empty after a good second without one. The answer to a write is
    // read to clear the line.
    Task<QString> SendCommandGetResponse(QString command);
    // Reads Globals.m_SerialNumber; 0 and false when the amplifier does not give it.
    Task<bool> GetSerialNumber();

    // Sets the two line modes back, with no answer awaited.
    void LeaveHiddenCommandMode();
    // Restarts the amplifier's processor, with no answer awaited.
    void ResetMcu();

private:
    Clock& m_clock;
    SerialPort& Serial1;
    Globals& m_globals;
    int m_writes = 0;
    // What to go back to; filled at the first use.
    QString m_strOriginalM7;
    QString m_strOriginalAutoInfo;
};
