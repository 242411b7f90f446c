// The button "Send Firmware to VLX720".
#pragma once

#include <functional>
#include <utility>

#include "FirmwareFolder.h"

class SendFirmware {
public:
    // Shows the window of the load and ends when it has closed.
    using LoadMcu = std::function<Task<bool>()>;

    SendFirmware(Platform& platform, Globals& globals, FirmwarePanel& panel, FirmwareFolder& folder,
                 LoadMcu loadMcu)
        : m_dialogs(platform.dialogs),
          m_globals(globals),
          m_panel(panel),
          m_folder(folder),
          m_loadMcu(std::move(loadMcu)) {}

    // Loads the newest local image, or tells that there is none. The button is disabled meanwhile.
    Task<> SendVLXButton_Action();
    // Offers the images of the folder.
    Task<> ImagesButton_Action();
    // Loads the image that was chosen there; asks first when it is not the newest.
    Task<> sendImage(QString name);

private:
    Task<bool> isWantedInPlaceOf(QString newest, QString name);
    Task<> send();

    Dialogs& m_dialogs;
    Globals& m_globals;
    FirmwarePanel& m_panel;
    FirmwareFolder& m_folder;
    LoadMcu m_loadMcu;
};
