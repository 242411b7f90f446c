// The trees of a session: its local folders, and the directories of the server that a walk goes through.
#include <algorithm>

#include <QDir>
#include <QFile>

#include "FolderNames.h"
#include "FTPParsedDirListLineClass.h"
#include "FTPPaths.h"
#include "FTPSessionState.h"
#include "Text.h"

namespace {

QString fileNameWithoutSlash(QString path) {
    while (path.endsWith(u'/'))
        path.chop(1);
    return QFileInfo(path).fileName();
}

}  // namespace

QString FTPSessionState::GetDirFromPath(const QString& path) const {
    const qsizetype found = path.lastIndexOf(FileDelimiter);
    return found < 0 ? QString() : path.first(found + FileDelimiter.size());
}

QString FTPSessionState::UpOneLocalDirectory(const QString& path) const {
    return path.isEmpty() ? QString() : GetDirFromPath(path.chopped(1));
}

QString FTPSessionState::GetFileFromPath(const QString& path) const {
    return path.section(u'/', -1);
}

void FTPSessionState::DeleteLocalFile(const QString& path) const {
    QFile::remove(path);
}

std::int32_t FTPSessionState::GetCurrentDirectoryIndex(const QString& path) const {
    // Two directories may differ in letter case alone; a server may also tell a path in a case of its own.
    auto found = std::ranges::find_if(
        DirList, [&](const FTPDirectoryClass& entry) { return entry.GetName() == path; });
    if (found == DirList.end())
        found = std::ranges::find_if(
            DirList, [&](const FTPDirectoryClass& entry) { return Text::equal(entry.GetName(), path); });
    return found == DirList.end() ? -1 : static_cast<std::int32_t>(found - DirList.begin());
}

bool FTPSessionState::AddListingLine(const QString& line) {
    const FTPParsedDirListLineClass entry = ParseDirListLine(line);
    const bool isItself = entry.Name == u"." || entry.Name == u"..";
    if (CurrentDirectoryIndex < 0 || entry.Name.isEmpty() || isItself)
        return true;
    // The name becomes part of a local path and of commands.
    if (!FTPPaths::isPlainFileName(entry.Name)) {
        Skipped += QStringLiteral("Skipped a name that cannot be used here: ") + entry.Name;
        return true;
    }
    const auto current = static_cast<std::size_t>(CurrentDirectoryIndex);
    if (entry.IsDir) {
        if (DirList.size() >= MaxDirectories)
            return false;
        const QString path = FTPPaths::child(CurrentWorkingDirectory, entry.Name);
        DirList[current].AddSubDirectory(path);
        DirList.emplace_back(path, DirList[current].GetName());
    } else if (entry.IsFile) {
        DirList[current].AddFile(entry.Name);
    }
    return true;
}

bool FTPSessionState::GetFiles(const QString& prefix, const QString& path) {
    const QFileInfo item(path);
    if (!item.exists())
        return false;
    if (!item.isDir()) {
        addFile(item);
        return true;
    }
    const QString name = fileNameWithoutSlash(item.absoluteFilePath());
    const bool looksLikeUp = Text::equal(name, u"UP");
    Files += u'*' + name + (looksLikeUp ? QStringLiteral("/") : QString());
    Paths += QStringLiteral("Ignore");
    for (const QString& child : FolderNames::sorted(path))
        if (const QFileInfo place(QDir(path), child); !isSkipped(place))
            GetFiles(prefix + name + FileDelimiter, place.absoluteFilePath());
    Files += QStringLiteral("*UP");
    Paths += QStringLiteral("Ignore");
    return true;
}

void FTPSessionState::addFile(const QFileInfo& item) {
    if (item.size() == 0)
        return;
    Files += item.fileName();
    Paths += item.filePath();
}

bool FTPSessionState::isSkipped(const QFileInfo& item) {
    // A link to a folder may lead back up.
    const QString reason =
        !FolderNames::isText(item.fileName()) ? QStringLiteral("Skipped a name that is no text: ")
        : item.isSymLink() && item.isDir()    ? QStringLiteral("Skipped a link to a folder: ")
        : item.isSymLink() && !item.exists()  ? QStringLiteral("Skipped a broken link: ")
        : !item.isDir() && !item.isFile() ? QStringLiteral("Skipped what is neither a file nor a folder: ")
                                          : QString();
    if (!reason.isEmpty())
        Skipped += reason + item.filePath();
    return !reason.isEmpty();
}

bool FTPSessionState::MakeTopFolder() {
    m_walkRoot.clear();
    // The top of the server has no name: what it holds goes into LocalDirectory itself.
    if (ServerDirectory != u"/" && !MakeLocalFolder(ServerDirectory))
        return false;
    m_walkRoot = LocalDirectory;
    return true;
}

bool FTPSessionState::MakeLocalFolder(const QString& serverPath) {
    const QString name = GetFileFromPath(serverPath);
    const QString path = LocalDirectory + name;
    const QString folder = GetDirFromPath(path + u'/');
    const bool isInside = !folder.isEmpty() && folder.startsWith(m_walkRoot);
    if (!FTPPaths::isPlainFileName(name) || !isInside || (!QFileInfo(path).isDir() && !QDir().mkdir(path)))
        return false;
    LocalDirectory = folder;
    return true;
}

bool FTPSessionState::LeaveLocalFolder() {
    const QString folder = UpOneLocalDirectory(LocalDirectory);
    if (!folder.startsWith(m_walkRoot))
        return false;
    LocalDirectory = folder;
    return true;
}
