#include "Retrieval.h"

// Also ends with a run that is cancelled.
struct Retrieval::Running {
    explicit Running(Retrieval& of) : owner(of) { set(true); }
    Running(const Running&) = delete;
    Running& operator=(const Running&) = delete;
    ~Running() {
        owner.m_panel.setGetRevButton1Enabled(true);
        set(false);
    }
    void set(bool isRunning) const {
        owner.m_isRunning = isRunning;
        owner.m_panel.setCanGiveUp(isRunning);
    }

    Retrieval& owner;
};

Task<> Retrieval::GetRevButton1_Action() {
    if (!mayStart())
        co_return;
    const Running running(*this);
    co_await lookAtFolder();
    m_globals.mRETR = false;
    // Enabled from the start of the run, unlike on the other route.
    m_panel.setGetRevButton1Enabled(true);
    co_await FTPDownload1.FTPDownload1_Run();
}

Task<> Retrieval::CopyWithCurl_Action() {
    if (!mayStart())
        co_return;
    const Running running(*this);
    co_await lookAtFolder();
    co_await cURLdownload1.cURLdownload1_Run();
}

void Retrieval::giveUp() {
    if (!FTPDownload1.giveUp())
        cURLdownload1.giveUp();
}

bool Retrieval::mayStart() {
    if (m_isRunning)
        m_globals.SetStatusText(QStringLiteral("Files are being copied from Tessarin already."), false);
    return !m_isRunning;
}

// So that the version of the newest local image is current.
Task<> Retrieval::lookAtFolder() {
    m_panel.setGetRevButton1Enabled(false);
    co_await m_folder.Checklocalfiles();
    m_panel.moveStatusFieldToEnd();
}
