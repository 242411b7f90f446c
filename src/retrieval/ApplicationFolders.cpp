#include "ApplicationFolders.h"

#include <QDir>
#include <QFileInfo>

namespace {

QString child(const QString& folder, const QString& name) {
    return ApplicationFolders::withSeparator(folder) + name;
}

QString makersFolder(const SpecialFolders& folders) {
    return child(folders.applicationData, QStringLiteral("Tessarin"));
}

QString firmwareFolderIn(const QString& makersFolder) {
    return child(makersFolder, QStringLiteral("VLX Firmware"));
}

// A folder that cannot be made shows later: nothing is found in it.
void makeDataFolder(const QString& folder, QString& setting) {
    QDir().mkpath(folder);
    if (setting.isEmpty())
        setting = folder;
}

}  // namespace

QString ApplicationFolders::withSeparator(const QString& folder) {
    return folder.endsWith(u'/') || folder.endsWith(QDir::separator()) ? folder : folder + u'/';
}

QString ApplicationFolders::defaultFirmwareFolder(const SpecialFolders& folders) {
    if (folders.applicationData.isEmpty())
        return {};
    return withSeparator(firmwareFolderIn(makersFolder(folders)));
}

QString ApplicationFolders::makeFirmwareFolder(const SpecialFolders& folders) {
    if (folders.applicationData.isEmpty())
        return {};
    QString reached = makersFolder(folders);
    // No deeper when the maker's folder is new: a first run starts with that one as the firmware folder.
    if (QFileInfo::exists(reached))
        reached = firmwareFolderIn(reached);
    QDir().mkpath(reached);
    return withSeparator(reached);
}

void ApplicationFolders::makeAll(const SpecialFolders& folders, Globals& globals) {
    const QString firmwareFolder = makeFirmwareFolder(folders);
    if (firmwareFolder.isEmpty())
        return;
    if (globals.m_FolderPath.isEmpty())
        globals.m_FolderPath = firmwareFolder;
    makeDataFolder(child(makersFolder(folders), QStringLiteral("VLX Configuration")),
                   globals.m_ConfigFolderPath);
    makeDataFolder(child(makersFolder(folders), QStringLiteral("VLX Fault Tables")),
                   globals.m_FaultFolderPath);
}
