// One directory of the tree that a walk goes through.
#pragma once

#include <cstdint>

#include <QString>
#include <QStringList>

// Files and subdirectories are handled from the last to the first. Counts are last indexes: -1 when empty.
class FTPDirectoryClass {
public:
    FTPDirectoryClass(const QString& name, const QString& parent) : Name(name), ParentDirectory(parent) {}

    void AddFile(const QString& name) { Files += name; }
    // Removes the first name that is equal.
    void DeleteFile(const QString& name);
    // The last file, which stays in the list; empty when there is none.
    QString GetNextFileName() const { return Files.isEmpty() ? QString() : Files.constLast(); }
    std::int32_t GetFileCount() const { return lastIndex(Files); }

    void AddSubDirectory(const QString& path);
    std::int32_t GetSubDirectoryCount() const { return lastIndex(SubDirectories); }
    // The current subdirectory, empty when exhausted; the one before it becomes the current one.
    QString GetNextSubDirectoryName();
    // Removes the first path that is equal; the last one left becomes the current one.
    void DeleteSubDirectory(const QString& path);
    QString GetCurrentSubDirectoryName() const;

    QString GetName() const { return Name; }
    QString GetParentDirectoryName() const { return ParentDirectory; }

private:
    static std::int32_t lastIndex(const QStringList& list) {
        return static_cast<std::int32_t>(list.size()) - 1;
    }

    QStringList Files;
    QString Name;                // full path on the server
    QStringList SubDirectories;  // full paths
    std::int32_t CurrentSubDirectory = -1;
    QString ParentDirectory;  // full path; empty for the top
};
