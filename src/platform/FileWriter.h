// Writes a file so that neither a full disk nor an odd name costs what was there before.
#pragma once

#include <memory>

#include <QByteArray>
#include <QFileDevice>
#include <QString>

// One file at a time. A name that stands for a folder, a pipe or a device is refused; one that is a link
// means the file behind it. What is written reaches the system at once, so a full disk shows at the bytes
// that no longer fit.
class FileWriter {
public:
    enum class Failed {
        LeavesNoFile,  // the file appears when finish() makes it; until then an older one stays as it was
        StaysOnDisk,   // what was written is kept
    };

    // Begins the file; false when it cannot be made.
    bool create(const QString& path, Failed failed);
    // False, and the file is not made any more, when the bytes could not all be written.
    bool write(const QByteArray& bytes);
    // Closes the file. False when something of it could not be written.
    bool finish();
    // Closes the file unfinished.
    void abandon();

    // Why the file could not be made or written, in words for the log, and forgets it; empty when nothing
    // failed.
    QString takeFailure();

private:
    bool fail(const char* what);

    QString m_path;
    std::unique_ptr<QFileDevice> m_file;
    bool m_isWhole = true;
    QString m_failure;
};

// The whole file at once, its failure in `failure`.
bool writeFile(const QString& path, const QByteArray& bytes, QString& failure);
