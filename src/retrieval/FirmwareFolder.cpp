#include "FirmwareFolder.h"

#include <QDir>

#include "ApplicationFolders.h"
#include "FolderNames.h"
#include "ImageNames.h"
#include "Text.h"

namespace {

// Whether it names an existing folder does not matter: one that does not exist holds no image.
bool isValidPath(const QString& path) {
    return QDir::isAbsolutePath(path) && !path.contains(QChar::Null);
}

}  // namespace

Task<> FirmwareFolder::Checklocalfiles() {
    QString& folderPath = m_globals.m_FolderPath;
    if (!isValidPath(folderPath)) {
        m_platform.dialogs.Beep();
        co_await m_platform.dialogs.MsgBox(
            QStringLiteral("The firmware folder path is invalid.  It will be set to the default."));
        const bool isRestored = co_await restoreDefaultFolder();
        if (!isRestored)
            co_return;
    }
    // A path from the preferences may lack its separator.
    setFolderPath(folderPath);

    const QStringList names = co_await itemNames();
    std::int32_t index = 0;
    hmcuVersion = GetNewestVersion(ImageNames::Prefix, names, index);
    if (!m_chosenImage.isEmpty()) {
        showImage(m_chosenImage);
    } else if (hmcuVersion.isEmpty()) {
        m_panel.setMCUavailableText(QStringLiteral("Missing"));
        versionedFilename.m_mstrPath = QStringLiteral("-");
    } else {
        showImage(names[index]);
    }
}

void FirmwareFolder::showImage(const QString& name) {
    m_panel.setMCUavailableText(ImageNames::shownVersion(name));
    versionedFilename.m_mstrPath = name;
}

void FirmwareFolder::chooseImage(const QString& name) {
    m_chosenImage = name;
    if (!name.isEmpty())
        showImage(name);
}

Task<QStringList> FirmwareFolder::images() {
    const QStringList names = co_await itemNames();
    co_return ImageNames::newestFirst(ImageNames::Prefix, ImageNames::Extension, names);
}

Task<bool> FirmwareFolder::restoreDefaultFolder() {
    const QString folder = ApplicationFolders::makeFirmwareFolder(m_platform.folders);
    if (isValidPath(folder)) {
        m_globals.m_FolderPath = folder;
        co_return true;
    }
    m_platform.dialogs.Beep();
    co_await m_platform.dialogs.MsgBox(QStringLiteral(
        "Unable to create default folder.. Something appears to wrong with your hard drive!! You may "
        "be out of disk space."));
    co_return false;
}

// In the folder's own order, whatever they are; a folder that does not exist has none.
Task<QStringList> FirmwareFolder::itemNames() {
    QStringList names;
    FolderNames items(m_globals.m_FolderPath);
    while (const auto name = items.next()) {
        if (FolderNames::isText(*name))
            names += *name;
        co_await m_platform.clock.breathe();
    }
    co_return names;
}

QString FirmwareFolder::GetNewestVersion(const QString& prefix, const QStringList& names,
                                         std::int32_t& index) {
    return ImageNames::newest(prefix, ImageNames::Extension, names, index);
}

bool FirmwareFolder::HasRequiredFiles() {
    versionedFilename.m_strpath = versionedFilename.m_mstrPath;
    return versionedFilename.m_mstrPath != QStringLiteral("-");
}

Task<> FirmwareFolder::CheckNewVersion() {
    const QString installed = m_panel.MCUinstalledText();
    const bool isKnown = !Text::equal(installed, u"N/A") && !Text::equal(installed, u"---");
    const bool isNewer = isKnown && Text::Val(installed) < Text::Val(m_panel.MCUavailableText());
    newMCUavailable = isNewer || m_globals.isBootloader();
    if (!isNewer || m_globals.isUnknown())
        co_return;
    if (m_globals.isMain() && !m_window.mStartup) {
        m_platform.dialogs.Beep();
        co_await m_notice.show();
    }
    m_globals.SetStatusText(QStringLiteral("New firmware is available for your VLX720"), false);
}

Task<> FirmwareFolder::CheckSequence() {
    co_await Checklocalfiles();
    co_await m_CheckVLXVersion();
    co_await CheckNewVersion();
}

Task<> FirmwareFolder::GetRevisions() {
    m_panel.setGetRevButtonEnabled(false);
    co_await CheckSequence();
    m_panel.setGetRevButtonEnabled(true);
}

Task<> FirmwareFolder::GetRevButton_Action() {
    return GetRevisions();
}

// The folder is taken whether it exists or not, and none is made.
Task<> FirmwareFolder::DefaultButton_Action() {
    const QString folder = ApplicationFolders::defaultFirmwareFolder(m_platform.folders);
    if (!folder.isEmpty())
        setFolderPath(folder);
    co_await CheckSequence();
}

// The amplifier is not asked again.
Task<> FirmwareFolder::BrowseButton_Action() {
    SelectFolderRequest request{m_globals.m_FolderPath, QStringLiteral("Select")};
    const QString chosen = co_await m_platform.dialogs.selectFolder(std::move(request));
    if (!chosen.isEmpty())
        setFolderPath(chosen);
    co_await Checklocalfiles();
    co_await CheckNewVersion();
}

void FirmwareFolder::setFolderPath(const QString& folder) {
    m_globals.m_FolderPath = ApplicationFolders::withSeparator(folder);
    m_panel.setFolderPath(m_globals.m_FolderPath);
}
