#include "AmplifierQuery.h"

#include "Text.h"
#include "VersionCheck.h"

namespace {

constexpr std::chrono::milliseconds LineLookStep{50};
constexpr std::int32_t Retries = 2;

}  // namespace

Task<bool> AmplifierQuery::Refresh() {
    while (m_line.isTaken())
        co_await m_clock.sleep(LineLookStep);
    const bool ok = co_await m_radioState.Refresh(Retries);
    if (m_globals.isBootloader())
        m_globals.SetStatusText(VersionCheck::waitingText(m_globals), false);
    else if (m_globals.isUnknown())
        m_globals.SetStatusText(VersionCheck::silenceText(), false);
    co_return ok;
}

QString AmplifierQuery::mainText() const {
    return QStringLiteral("VLX Version %1. %2 RS232 speed is %3 bps")
        .arg(m_globals.m_strMcuVersion, m_portPanel.serialPortMenuText(),
             Text::Format(m_globals.m_dwBaudRate, u"#####"));
}
