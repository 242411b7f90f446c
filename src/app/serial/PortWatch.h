// Follows plugging and unplugging: the list of ports keeps up, and an adapter that was lost and comes back is
// opened again and sensed.
#pragma once

#include "Flows.h"
#include "LineOwner.h"
#include "Platform.h"
#include "PortSelection.h"
#include "WindowState.h"

// Never while a flow has the line: what has come back then waits for its end.
class PortWatch {
public:
    using Sense = std::function<Task<>()>;

    PortWatch(Platform& platform, const LineOwner& line, const WindowState& window, Flows& flows,
              PortSelection& selection, Sense sense);
    PortWatch(const PortWatch&) = delete;
    PortWatch& operator=(const PortWatch&) = delete;
    ~PortWatch() { m_list.Changed = {}; }

private:
    void look();
    Task<> bringBack();

    Clock& m_clock;
    PortList& m_list;
    const LineOwner& m_line;
    const WindowState& m_window;
    Flows& m_flows;
    PortSelection& m_selection;
    Sense m_sense;
    ClockTimer m_settling;
    bool m_isBringingBack = false;
};
