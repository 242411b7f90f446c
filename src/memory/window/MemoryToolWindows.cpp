#include "MemoryToolWindows.h"

#include <QPointer>

#include "BannerWindow.h"
#include "FaultTableWindow.h"

namespace {

// The main window may be gone, and its children with it, before the flow that showed one is let go.
template <typename Window>
struct Owner {
    explicit Owner(Window* shown) : window(shown) {}
    Owner(const Owner&) = delete;
    Owner& operator=(const Owner&) = delete;
    ~Owner() { delete window; }

    QPointer<Window> window;
};

}  // namespace

Task<> MemoryToolWindows::showFaultTableWindow(FaultTable& table) {
    const Owner owner(new FaultTableWindow(m_platform.clock, m_onError, table, m_mainWindow));
    owner.window->helpWanted = showFaultHelp;
    co_await owner.window->Run();
}

Task<> MemoryToolWindows::showBannerWindow(PowerOnBanner& banner) {
    const Owner owner(
        new BannerWindow(m_platform.clock, m_platform.dialogs, m_onError, banner, m_mainWindow));
    co_await owner.window->Run();
}
