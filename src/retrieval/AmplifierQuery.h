// Asks the amplifier for its version when new files have come.
#pragma once

#include <QString>

#include "LineOwner.h"
#include "PortPanel.h"
#include "RadioState.h"

class AmplifierQuery {
public:
    AmplifierQuery(Clock& clock, Globals& globals, LineOwner& line, RadioState& radioState,
                   const PortPanel& portPanel)
        : m_clock(clock),
          m_globals(globals),
          m_line(line),
          m_radioState(radioState),
          m_portPanel(portPanel) {}

    // Senses as soon as no other flow owns the line, a firmware load above all; logs an amplifier that does
    // not run its main firmware. True when the main firmware has told its version.
    Task<bool> Refresh();
    // The version, the port and the speed.
    QString mainText() const;

private:
    Clock& m_clock;
    Globals& m_globals;
    LineOwner& m_line;
    RadioState& m_radioState;
    const PortPanel& m_portPanel;
};
