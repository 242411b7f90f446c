#include "PortWatch.h"

#include <QScopedValueRollback>

using namespace std::chrono_literals;

namespace {

// A new port is there some moments before the system has given it its group.
constexpr auto SettlingTime = 500ms;
constexpr auto LineLookStep = 50ms;

}  // namespace

PortWatch::PortWatch(Platform& platform, const LineOwner& line, const WindowState& window, Flows& flows,
                     PortSelection& selection, Sense sense)
    : m_clock(platform.clock),
      m_list(platform.ports),
      m_line(line),
      m_window(window),
      m_flows(flows),
      m_selection(selection),
      m_sense(std::move(sense)),
      m_settling(platform.clock, SettlingTime, [this] { look(); }) {
    m_list.Changed = [this] { m_settling.start(ClockTimer::Mode::Single); };
}

void PortWatch::look() {
    if (m_selection.followList() && !m_isBringingBack)
        m_flows.start(bringBack());
}

Task<> PortWatch::bringBack() {
    const QScopedValueRollback<bool> bringing(m_isBringingBack, true);
    while (m_line.isTaken() || m_window.mStartup > 0)
        co_await m_clock.sleep(LineLookStep);
    if (m_selection.openReturnedPort())
        co_await m_sense();
}
