#include "FirmwareFolder.h"

#include <algorithm>

#include <QDir>
#include <QDirIterator>

#include "ApplicationFolders.h"
#include "Text.h"

namespace {

const QString ImagePrefix = QStringLiteral("VLX720FP");
const QString ImageExtension = QStringLiteral(".hex");

// Whether it names an existing folder does not matter: one that does not exist holds no image.
bool isValidPath(const QString& path) {
    return QDir::isAbsolutePath(path) && !path.contains(QChar::Null);
}

bool isImageName(const QString& name, const QString& prefix) {
    return Text::equal(QStringView(name).left(prefix.size()), prefix) &&
           Text::equal(QStringView(name).right(ImageExtension.size()), ImageExtension);
}

QString versionIn(const QString& name, const QString& prefix) {
    const qsizetype length = name.size() - prefix.size() - ImageExtension.size();
    return Text::Mid(Text::Trim(name), prefix.size() + 1, std::max<qsizetype>(length, 0));
}

}  // namespace

Task<> FirmwareFolder::Checklocalfiles() {
    QString& folderPath = m_parts.globals.m_FolderPath;
    if (!isValidPath(folderPath)) {
        m_parts.platform.dialogs.Beep();
        co_await m_parts.platform.dialogs.MsgBox(
            QStringLiteral("The firmware folder path is invalid.  It will be set to the default."));
        const bool isRestored = co_await restoreDefaultFolder();
        if (!isRestored)
            co_return;
    }
    // A path from the preferences may lack its separator.
    setFolderPath(folderPath);

    const QStringList names = co_await itemNames();
    std::int32_t index = 0;
    hmcuVersion = GetNewestVersion(ImagePrefix, names, index);
    if (hmcuVersion.isEmpty()) {
        m_parts.panel.setMCUavailableText(QStringLiteral("Missing"));
        m_parts.versionedFilename.m_mstrPath = QStringLiteral("-");
    } else {
        m_parts.panel.setMCUavailableText(Text::Format(Text::Val(hmcuVersion), u"00\\.00"));
        m_parts.versionedFilename.m_mstrPath = names[index];
    }
}

Task<bool> FirmwareFolder::restoreDefaultFolder() {
    const QString folder = ApplicationFolders::makeFirmwareFolder(m_parts.platform.folders);
    if (isValidPath(folder)) {
        m_parts.globals.m_FolderPath = folder;
        co_return true;
    }
    m_parts.platform.dialogs.Beep();
    co_await m_parts.platform.dialogs.MsgBox(QStringLiteral(
        "Unable to create default folder.. Something appears to wrong with your hard drive!! You may "
        "be out of disk space."));
    co_return false;
}

// In the folder's own order, whatever they are; a folder that does not exist has none.
Task<QStringList> FirmwareFolder::itemNames() {
    QStringList names;
    QDirIterator items(m_parts.globals.m_FolderPath,
                       QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    while (items.hasNext()) {
        items.next();
        names += items.fileName();
        co_await m_parts.platform.clock.breathe();
    }
    co_return names;
}

QString FirmwareFolder::GetNewestVersion(const QString& prefix, const QStringList& names,
                                         std::int32_t& index) {
    QString best;
    for (qsizetype i = 0; i < names.size(); ++i) {
        if (!isImageName(names[i], prefix))
            continue;
        const QString candidate = versionIn(names[i], prefix);
        if (Text::Val(best) < Text::Val(candidate)) {
            best = candidate;
            index = static_cast<std::int32_t>(i);
        }
    }
    return best;
}

bool FirmwareFolder::HasRequiredFiles() {
    m_parts.versionedFilename.m_strpath = m_parts.versionedFilename.m_mstrPath;
    return m_parts.versionedFilename.m_mstrPath != QStringLiteral("-");
}

Task<> FirmwareFolder::CheckNewVersion() {
    Globals& globals = m_parts.globals;
    const QString installed = m_parts.panel.MCUinstalledText();
    const bool isKnown = !Text::equal(installed, u"N/A") && !Text::equal(installed, u"---");
    const bool isNewer = isKnown && Text::Val(installed) < Text::Val(m_parts.panel.MCUavailableText());
    newMCUavailable = isNewer || globals.isBootloader();
    if (!isNewer || globals.isUnknown())
        co_return;
    if (globals.isMain() && !m_parts.window.mStartup) {
        m_parts.platform.dialogs.Beep();
        co_await m_parts.notice.show();
    }
    globals.SetStatusText(QStringLiteral("New firmware is available for your VLX720"), false);
}

Task<> FirmwareFolder::CheckSequence() {
    co_await Checklocalfiles();
    co_await m_parts.CheckVLXVersion();
    co_await CheckNewVersion();
}

Task<> FirmwareFolder::GetRevisions() {
    m_parts.view.setGetRevButtonEnabled(false);
    co_await CheckSequence();
    m_parts.view.setGetRevButtonEnabled(true);
}

Task<> FirmwareFolder::GetRevButton_Action() {
    return GetRevisions();
}

// The folder is taken whether it exists or not, and none is made.
Task<> FirmwareFolder::DefaultButton_Action() {
    const QString folder = ApplicationFolders::defaultFirmwareFolder(m_parts.platform.folders);
    if (!folder.isEmpty())
        setFolderPath(folder);
    co_await CheckSequence();
}

// The amplifier is not asked again.
Task<> FirmwareFolder::BrowseButton_Action() {
    SelectFolderRequest request{m_parts.globals.m_FolderPath, QStringLiteral("Select")};
    const QString chosen = co_await m_parts.platform.dialogs.selectFolder(std::move(request));
    if (!chosen.isEmpty())
        setFolderPath(chosen);
    co_await Checklocalfiles();
    co_await CheckNewVersion();
}

void FirmwareFolder::setFolderPath(const QString& folder) {
    m_parts.globals.m_FolderPath = ApplicationFolders::withSeparator(folder);
    m_parts.panel.setFolderPath(m_parts.globals.m_FolderPath);
}
