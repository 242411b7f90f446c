// Makes the real windows of the memory tools.
#pragma once

#include <functional>
#include <optional>

#include <QWidget>

#include "Flows.h"
#include "MemoryWindows.h"
#include "Platform.h"

class MemoryToolWindows : public MemoryWindows {
public:
    // Errors that escape inside a window go to `onError`.
    MemoryToolWindows(Platform& platform, Flows::ErrorHandler onError, QWidget& mainWindow)
        : m_platform(platform), m_onError(std::move(onError)), m_mainWindow(mainWindow) {}

    Task<> showFaultTableWindow(FaultTable& table) override;
    Task<> showBannerWindow(PowerOnBanner& banner) override;

    // Opens the manual at a fault, or at the page of the table.
    std::function<void(std::optional<int> code)> showFaultHelp;

private:
    Platform& m_platform;
    Flows::ErrorHandler m_onError;
    QWidget& m_mainWindow;
};
