#include "FetchedFiles.h"

#include <filesystem>

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "ApplicationFolders.h"
#include "Text.h"

namespace {

QString fetchFolder(const QString& firmwareFolder) {
    return ApplicationFolders::withSeparator(firmwareFolder) + QStringLiteral(".vlxcopying");
}

QString quoted(const QString& name) {
    return u'"' + name + u'"';
}

}  // namespace

void FetchedFiles::begin(const QString& firmwareFolder) {
    sweep(firmwareFolder);
    m_firmwareFolder = firmwareFolder;
    m_folder = fetchFolder(firmwareFolder) + u'/';
}

void FetchedFiles::end() {
    m_reader.close();
    if (!m_folder.isEmpty())
        sweep(m_firmwareFolder);
    m_folder.clear();
}

void FetchedFiles::sweep(const QString& firmwareFolder) {
    if (firmwareFolder.isEmpty())
        return;
    const QString folder = fetchFolder(firmwareFolder);
    // What a link points to is not ours.
    if (QFileInfo(folder).isSymLink() || !QFileInfo(folder).isDir())
        QFile::remove(folder);
    else
        QDir(folder).removeRecursively();
}

bool FetchedFiles::makeFolder() {
    // No deeper: a firmware folder that is gone is not made anew.
    return QFileInfo(m_folder).isDir() || QDir().mkdir(m_folder);
}

bool FetchedFiles::has(const QString& name) const {
    return QFileInfo(m_folder + name).isFile();
}

qint64 FetchedFiles::size() const {
    qint64 sum = 0;
    for (const QFileInfo& file : QDir(m_folder).entryInfoList(QDir::Files | QDir::Hidden))
        sum += file.size();
    return sum;
}

bool FetchedFiles::keep(const QString& name) {
    m_reader.close();
    std::error_code error;
    std::filesystem::rename(QFileInfo(m_folder + name).filesystemFilePath(),
                            QFileInfo(m_firmwareFolder + name).filesystemFilePath(), error);
    return !error;
}

void FetchedFiles::rename(const QString& from, const QString& to) const {
    if (from != to)
        QFile::rename(m_folder + from, m_folder + to);
}

Task<bool> FetchedFiles::HexVerify(QString name) {
    const bool ok = co_await m_reader.Verify(m_folder + name);
    m_reader.close();
    if (ok) {
        m_globals.SetStatusText(quoted(name) + QStringLiteral(" verification succeeded"), true);
    } else {
        m_globals.SetStatusText(quoted(name) + QStringLiteral(" verification failed"), false);
        deleteFile(name);
    }
    co_return ok;
}

void FetchedFiles::deleteFile(const QString& name) {
    QFile file(m_folder + name);
    if (file.remove())
        m_globals.SetStatusText(QStringLiteral("Deleted file ") + quoted(name), false);
    else
        m_globals.SetStatusText(
            QStringLiteral("Delete failed on %1. Error %2.").arg(quoted(name), Text::Str(file.error())),
            false);
}

void FetchedFiles::tellFailure(const QString& name) {
    m_globals.SetStatusText(QStringLiteral("Unable to copy file ") + quoted(name), false);
}
