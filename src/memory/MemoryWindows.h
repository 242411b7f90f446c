// The modal windows of the memory tools.
#pragma once

#include "FaultTable.h"
#include "PowerOnBanner.h"
#include "Task.h"

// Each task ends when the user has closed the window; cancelled, it takes the window away.
class MemoryWindows {
public:
    MemoryWindows() = default;
    MemoryWindows(const MemoryWindows&) = delete;
    MemoryWindows& operator=(const MemoryWindows&) = delete;
    virtual ~MemoryWindows() = default;

    // The model lives until the task has ended or was cancelled.
    virtual Task<> showFaultTableWindow(FaultTable& table) = 0;
    virtual Task<> showBannerWindow(PowerOnBanner& banner) = 0;
};
