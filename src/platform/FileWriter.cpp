#include "FileWriter.h"

#include <utility>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace {

// A disk that fills up may take a part; the reason comes with the rest.
bool writeAll(QFileDevice& file, const QByteArray& bytes) {
    qint64 done = 0;
    while (done < bytes.size()) {
        const qint64 step = file.write(bytes.constData() + done, bytes.size() - done);
        if (step <= 0)
            return false;
        done += step;
    }
    return true;
}

QString failureText(const char* what, const QString& path, const QString& reason) {
    return QStringLiteral("Cannot %1 %2: %3")
        .arg(QLatin1String(what), QDir::toNativeSeparators(path), reason);
}

}  // namespace

bool FileWriter::create(const QString& path, Failed failed) {
    m_path = path;
    m_failure.clear();
    m_isWhole = true;
    m_file.reset();
    const QFileInfo there(path);
    if (there.exists() && !there.isFile()) {
        m_failure = failureText("create", path, QStringLiteral("Not a regular file"));
        return false;
    }
    if (failed == Failed::LeavesNoFile)
        m_file = std::make_unique<QSaveFile>(path);
    else
        m_file = std::make_unique<QFile>(path);
    // What stays in a buffer of the program is lost without a word when the disk is full at the end.
    if (m_file->open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        return true;
    fail("create");
    m_file.reset();
    return false;
}

bool FileWriter::write(const QByteArray& bytes) {
    return m_file && (writeAll(*m_file, bytes) || fail("write"));
}

bool FileWriter::finish() {
    const auto file = std::exchange(m_file, nullptr);
    if (!file || !m_isWhole)
        return false;
    auto* const replacing = qobject_cast<QSaveFile*>(file.get());
    if (replacing && !replacing->commit()) {
        m_failure = failureText("complete", m_path, file->errorString());
        return false;
    }
    return true;
}

void FileWriter::abandon() {
    m_file.reset();
}

QString FileWriter::takeFailure() {
    return std::exchange(m_failure, {});
}

bool FileWriter::fail(const char* what) {
    m_isWhole = false;
    m_failure = failureText(what, m_path, m_file->errorString());
    return false;
}

bool writeFile(const QString& path, const QByteArray& bytes, QString& failure) {
    FileWriter file;
    const bool isWritten =
        file.create(path, FileWriter::Failed::LeavesNoFile) && file.write(bytes) && file.finish();
    failure = file.takeFailure();
    return isWritten;
}
