// Paths, passive ports and the directory tree of a session.
#include <algorithm>

#include <QDir>
#include <QFile>

#include "FTPPaths.h"
#include "FTPSessionClass.h"
#include "Text.h"

namespace {

// The numbers of a 227 reply: the text between the first "(" and the next ")".
QString passiveFields(const QString& reply) {
    return Text::NthField(Text::NthField(reply, u"(", 2), u")", 1);
}

// One of them: 0 to 255, or -1.
int passiveField(const QString& fields, qsizetype number) {
    bool isNumber = false;
    const int value = Text::NthField(fields, u",", number).trimmed().toInt(&isNumber);
    return isNumber && value >= 0 && value <= 255 ? value : -1;
}

// Where the first line ends, with whatever line end it has.
qsizetype lineEnd(QStringView text) {
    const auto found = std::ranges::find_if(text, [](QChar c) { return c == u'\r' || c == u'\n'; });
    return found - text.begin();
}

QString fileNameWithoutSlash(QString path) {
    while (path.endsWith(u'/'))
        path.chop(1);
    return QFileInfo(path).fileName();
}

}  // namespace

QString FTPSessionClass::GetDirFromPath(const QString& path) const {
    const qsizetype found = path.lastIndexOf(FileDelimiter);
    return found < 0 ? QString() : path.first(found + FileDelimiter.size());
}

QString FTPSessionClass::UpOneLocalDirectory(const QString& path) const {
    return path.isEmpty() ? QString() : GetDirFromPath(path.chopped(1));
}

QString FTPSessionClass::GetFileFromPath(const QString& path) const {
    return path.section(u'/', -1);
}

void FTPSessionClass::GetFiles(const QString& prefix, const QString& path) {
    const QFileInfo item(path);
    if (!item.exists()) {
        EndFTPSession(QStringLiteral("Cannot find this path: ") + path);
        return;
    }
    const QString name = fileNameWithoutSlash(item.absoluteFilePath());
    if (!item.isDir()) {
        if (item.size() > 0) {
            Files += name;
            Paths += path;
        }
        return;
    }
    Files += u'*' + name;
    Paths += QStringLiteral("Ignore");
    const auto items =
        QDir(path).entryInfoList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
    for (const QFileInfo& child : items) {
        // A link to a folder may lead back up.
        if (!(child.isDir() && child.isSymLink()))
            GetFiles(prefix + name + FileDelimiter, child.absoluteFilePath());
    }
    Files += QStringLiteral("*UP");
    Paths += QStringLiteral("Ignore");
}

std::int32_t FTPSessionClass::GetCurrentDirectoryIndex(const QString& path) const {
    for (std::size_t i = 0; i < DirList.size(); ++i)
        if (Text::equal(DirList[i].GetName(), path))
            return static_cast<std::int32_t>(i);
    return -1;
}

void FTPSessionClass::ParseDirectoryList(const QString& text) {
    QStringView rest(text);
    while (!rest.isEmpty() && CurrentDirectoryIndex >= 0) {
        const qsizetype end = lineEnd(rest);
        const QStringView line = rest.first(end);
        // Between a Return and a Line Feed this leaves an empty line, which tells nothing.
        rest = end < rest.size() ? rest.sliced(end + 1) : QStringView();
        const FTPParsedDirListLineClass entry = ParseDirListLine(line.toString());
        // The name becomes part of a local path and of commands.
        if (!FTPPaths::isPlainFileName(entry.Name))
            continue;
        const auto current = static_cast<std::size_t>(CurrentDirectoryIndex);
        if (entry.IsDir) {
            if (DirList.size() >= MaxDirectories) {
                EndFTPSession(QStringLiteral("Error: The directory tree is too large."));
                return;
            }
            const QString path = CurrentWorkingDirectory + u'/' + entry.Name;
            DirList[current].AddSubDirectory(path);
            DirList.emplace_back(path, DirList[current].GetName());
        } else if (entry.IsFile) {
            DirList[current].AddFile(entry.Name);
        }
    }
}

QString FTPSessionClass::BuildPortString() const {
    const QString address = CommandSocket ? CommandSocket->LocalAddress().toString() : QString();
    return Text::ReplaceAll(address, QStringLiteral("."), QStringLiteral(",")) +
           QStringLiteral(",%1,%2").arg(DataPort / 256).arg(DataPort % 256);
}

std::int32_t FTPSessionClass::CalculatePassivePort(const QString& reply) const {
    const QString fields = passiveFields(reply);
    const int high = passiveField(fields, 5);
    const int low = passiveField(fields, 6);
    return high < 0 || low < 0 ? 0 : high * 256 + low;
}

QString FTPSessionClass::CalculatePassiveAddress(const QString& reply) const {
    return Text::ReplaceAll(passiveFields(reply), QStringLiteral(","), QStringLiteral("."));
}

void FTPSessionClass::CalcSetPassivePort(const QString& reply) {
    const std::int32_t port = CalculatePassivePort(reply);
    if (port == 0)
        m_engine.refuse();
    else
        SetPassivePort(port);
}

void FTPSessionClass::SetPassivePort(std::int32_t port) {
    if (DataSocket)
        DataSocket->ConnectToServer(static_cast<quint16>(port));
}

void FTPSessionClass::MakeTopFolder() {
    m_walkRoot.clear();
    MakeLocalFolder(ServerDirectory);
    m_walkRoot = LocalDirectory;
}

void FTPSessionClass::MakeLocalFolder(const QString& serverPath) {
    const QString name = GetFileFromPath(serverPath);
    const QString path = LocalDirectory + name;
    const QString folder = GetDirFromPath(path + u'/');
    const bool isInside = !folder.isEmpty() && folder.startsWith(m_walkRoot);
    if (!FTPPaths::isPlainFileName(name) || !isInside || (!QFileInfo(path).isDir() && !QDir().mkdir(path)))
        EndFTPSession(QStringLiteral("Error writing local file: ") + name);
    else
        LocalDirectory = folder;
}

void FTPSessionClass::LeaveLocalFolder() {
    const QString folder = UpOneLocalDirectory(LocalDirectory);
    if (folder.startsWith(m_walkRoot))
        LocalDirectory = folder;
    else
        EndFTPSession(QStringLiteral("Error: The server has left the directory."));
}

void FTPSessionClass::DeleteLocalFile(const QString& path) const {
    QFile::remove(path);
}
