// A file or folder of the help book, by its path.
#pragma once

#include <vector>

#include <QString>

// It may or may not exist, and may be none at all (nil). The file system is asked anew by each call.
class FolderItem {
public:
    FolderItem() = default;
    explicit FolderItem(const QString& absolutePath) : m_path(absolutePath) {}

    bool isNil() const { return m_path.isEmpty(); }
    bool Exists() const;
    bool Directory() const;
    // Exists and can be read to its end: neither a folder nor a device nor a pipe.
    bool isFile() const;
    QString Name() const;
    QString AbsolutePath() const { return m_path; }

    FolderItem Parent() const;
    // The item of that name in this folder, existing or not; nil when `name` is no plain name, such as "..".
    // Throws NilObjectError when this is nil.
    FolderItem Child(const QString& name) const;
    // The item that `names` lead to, one folder below the other; nil when one of them is no plain name.
    FolderItem Descendant(const QStringList& names) const;
    // What lies in this folder.
    std::vector<FolderItem> Children() const;

    bool CreateAsFolder() const;
    bool CopyFileTo(const FolderItem& folder) const;

    friend bool operator==(const FolderItem&, const FolderItem&) = default;

private:
    QString m_path;
};
