// The names of what is in a folder.
#pragma once

#include <filesystem>
#include <optional>
#include <system_error>

#include <QString>
#include <QStringList>

// In the folder's own order, one at a time: a folder may hold very many. The toolkit's own lists are empty,
// from its release 6.8 on, for a folder that holds one name that is no text.
class FolderNames {
public:
    // A folder that cannot be read has no names.
    explicit FolderNames(const QString& folder);

    std::optional<QString> next();

    // All of them, by their characters.
    static QStringList sorted(const QString& folder);

    // What cannot be read in a name is replaced; what has such a name cannot be opened by it.
    static bool isText(const QString& name) { return !name.contains(QChar::ReplacementCharacter); }

private:
    std::error_code m_error;
    std::filesystem::directory_iterator m_item;
};
