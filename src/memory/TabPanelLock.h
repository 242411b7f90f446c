// What the memory tools do to the main window while they run.
#pragma once

class TabPanelLock {
public:
    TabPanelLock() = default;
    TabPanelLock(const TabPanelLock&) = delete;
    TabPanelLock& operator=(const TabPanelLock&) = delete;
    virtual ~TabPanelLock() = default;

    virtual void setTabPanelEnabled(bool enabled) = 0;
    virtual void setEditBannerButtonEnabled(bool enabled) = 0;
};

// Disables the tab panel for a span; it is enabled again at the end, also when the flow is cancelled.
class TabPanelSpan {
public:
    explicit TabPanelSpan(TabPanelLock& panel) : m_panel(panel) { m_panel.setTabPanelEnabled(false); }
    TabPanelSpan(const TabPanelSpan&) = delete;
    TabPanelSpan& operator=(const TabPanelSpan&) = delete;
    ~TabPanelSpan() { m_panel.setTabPanelEnabled(true); }

private:
    TabPanelLock& m_panel;
};
