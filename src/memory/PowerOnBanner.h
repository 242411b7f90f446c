// The text of up to eight characters that the amplifier shows at power-on.
#pragma once

#include <optional>

#include "Globals.h"
#include "MemoryAccess.h"
#include "Task.h"

// The caller owns the line.
class PowerOnBanner {
public:
    static constexpr int MaximumLength = 8;

    PowerOnBanner(Globals& globals, MemoryAccess& memory) : m_globals(globals), m_memory(memory) {}

    // The text, each byte as the Latin 1 character that it is; none when the read failed. Ends at a byte
    // that is 0 or 255.
    Task<std::optional<QString>> ReadPowerOnBanner();
    // False, with nothing sent, when the text is too long or the main firmware does not run, and when the
    // port closes. What the amplifier answers is not looked at. Not to be cancelled (it holds
    // Globals::mustEnd).
    Task<bool> WritePowerOnBanner(QString text);

private:
    Globals& m_globals;
    MemoryAccess& m_memory;
};
