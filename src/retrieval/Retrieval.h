// The button "Copy New Files from Tessarin" and its menu: two routes to the maker's server, one run at a
// time.
#pragma once

#include "cURLdownload.h"
#include "FTPDownload.h"

class Retrieval {
public:
    Retrieval(Platform& platform, Globals& globals, FirmwarePanel& panel, FirmwareFolder& folder,
              AmplifierQuery& amplifier, const FirmwareServer& server)
        : FTPDownload1(platform, globals, panel, folder, amplifier, server),
          cURLdownload1(platform, globals, panel, folder, amplifier, server),
          m_globals(globals),
          m_panel(panel),
          m_folder(folder) {}

    // Each looks at the folder and then runs to its end. During a run it says so and does nothing more.
    Task<> GetRevButton1_Action();
    Task<> CopyWithCurl_Action();
    // Breaks off the run under way; without one, or when all is copied, it does nothing.
    void giveUp();

    FTPDownload FTPDownload1;
    cURLdownload cURLdownload1;

private:
    struct Running;

    bool mayStart();
    Task<> lookAtFolder();

    Globals& m_globals;
    FirmwarePanel& m_panel;
    FirmwareFolder& m_folder;
    bool m_isRunning = false;
};
