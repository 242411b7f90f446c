// The local folder of firmware images: where it is, which image in it is the newest, and how that one
// compares with the firmware installed in the amplifier.
#pragma once

#include <cstdint>
#include <functional>
#include <utility>

#include <QString>
#include <QStringList>

#include "FirmwarePanel.h"
#include "Globals.h"
#include "NewFirmwareNotice.h"
#include "Platform.h"
#include "Task.h"
#include "VersionedFilename.h"
#include "WindowState.h"

// The handlers and checks may be cancelled at any time; what they have set until then stays.
class FirmwareFolder {
public:
    // Asks the amplifier for its version; true when the main firmware answered.
    using VersionQuery = std::function<Task<bool>()>;

    FirmwareFolder(Platform& platform, Globals& globals, FirmwarePanel& panel, const WindowState& window,
                   NewFirmwareNotice& notice, VersionQuery CheckVLXVersion)
        : m_platform(platform),
          m_globals(globals),
          m_panel(panel),
          m_window(window),
          m_notice(notice),
          m_CheckVLXVersion(std::move(CheckVLXVersion)) {}
    FirmwareFolder(const FirmwareFolder&) = delete;
    FirmwareFolder& operator=(const FirmwareFolder&) = delete;

    // Looks for the newest image and shows its version. An invalid folder path is told and replaced by the
    // default; without even that, all stays as it was.
    Task<> Checklocalfiles();
    // As ImageNames::newest, for images.
    static QString GetNewestVersion(const QString& prefix, const QStringList& names, std::int32_t& index);
    // The images of the folder, the newest first.
    Task<QStringList> images();
    // From now on this image is the one to load, and its version the one that is shown, whatever is found
    // beside it; with an empty name the newest is again, from the next look on.
    void chooseImage(const QString& name);
    // True when Checklocalfiles has found an image, which then is the one to load.
    bool HasRequiredFiles();
    // Compares the two version labels, and tells the user when the folder has the newer one.
    Task<> CheckNewVersion();
    // Looks at the folder, asks the amplifier, and compares.
    Task<> CheckSequence();
    // The same with the button disabled.
    Task<> GetRevisions();

    Task<> DefaultButton_Action();
    Task<> BrowseButton_Action();
    Task<> GetRevButton_Action();

    // Version text of the newest image as its name has it; empty when there is none.
    QString hmcuVersion;
    bool newMCUavailable = false;
    VersionedFilename versionedFilename;

private:
    Task<bool> restoreDefaultFolder();
    Task<QStringList> itemNames();
    void setFolderPath(const QString& folder);
    void showImage(const QString& name);

    Platform& m_platform;
    Globals& m_globals;
    FirmwarePanel& m_panel;
    const WindowState& m_window;
    NewFirmwareNotice& m_notice;
    VersionQuery m_CheckVLXVersion;
    QString m_chosenImage;
};
