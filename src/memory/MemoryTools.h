// The four buttons of the configuration tab.
#pragma once

#include "ConfigurationPanel.h"
#include "Globals.h"
#include "LineOwner.h"
#include "MemoryAccess.h"
#include "MemoryFileWriter.h"
#include "MemoryWindows.h"
#include "Platform.h"
#include "ProgressView.h"
#include "SaveRestoreM7Config.h"
#include "Task.h"

// Each takes the line while it runs. An action that is started while another flow has the line ends at once,
// so no tool runs twice, or beside another. All that is handed in outlives the object, and the object its
// flows.
class MemoryTools {
public:
    MemoryTools(Platform& platform, Globals& globals, LineOwner& line, ProgressView& progress,
                ConfigurationPanel& panel, MemoryWindows& windows);
    MemoryTools(const MemoryTools&) = delete;
    MemoryTools& operator=(const MemoryTools&) = delete;

    Task<> SaveConfig_Action();
    Task<> RestoreConfig_Action();
    Task<> DisplayFaultTable_Action();
    Task<> EditBannerButton_Action();

private:
    Platform& m_platform;
    Globals& m_globals;
    LineOwner& m_line;
    ConfigurationPanel& m_panel;
    MemoryWindows& m_windows;
    MemoryAccess m_memory;
    MemoryFileWriter m_file;
    SaveRestoreM7Config m_configuration;
};
