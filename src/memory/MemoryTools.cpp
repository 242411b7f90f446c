#include "MemoryTools.h"

MemoryTools::MemoryTools(Platform& platform, Globals& globals, LineOwner& line, ProgressView& progress,
                         ConfigurationPanel& panel, MemoryWindows& windows)
    : m_platform(platform),
      m_globals(globals),
      m_line(line),
      m_panel(panel),
      m_windows(windows),
      m_memory(platform, globals),
      m_file(platform.clock, globals, m_memory),
      m_configuration(platform, globals, m_memory, m_file, progress) {}

Task<> MemoryTools::SaveConfig_Action() {
    if (m_line.isTaken())
        co_return;
    const auto guard = m_line.take();
    m_platform.Serial1.Flush();
    co_await m_configuration.Save();
}

Task<> MemoryTools::RestoreConfig_Action() {
    if (m_line.isTaken())
        co_return;
    const auto guard = m_line.take();
    m_platform.Serial1.Flush();
    co_await m_configuration.Restore();
}

Task<> MemoryTools::DisplayFaultTable_Action() {
    if (m_line.isTaken())
        co_return;
    const auto guard = m_line.take();
    FaultTable table(m_platform, m_globals, m_memory, m_file);
    co_await m_windows.showFaultTableWindow(table);
}

Task<> MemoryTools::EditBannerButton_Action() {
    if (m_line.isTaken())
        co_return;
    const auto guard = m_line.take();
    PowerOnBanner banner(m_globals, m_memory);
    co_await m_windows.showBannerWindow(banner);
    m_panel.setEditBannerButtonEnabled(true);
}
