#include "FolderNames.h"

#include <QFileInfo>

FolderNames::FolderNames(const QString& folder) : m_item(QFileInfo(folder).filesystemFilePath(), m_error) {}

std::optional<QString> FolderNames::next() {
    if (m_item == std::filesystem::directory_iterator())
        return std::nullopt;
    QString name = QFileInfo(m_item->path()).fileName();
    m_item.increment(m_error);
    return name;
}

QStringList FolderNames::sorted(const QString& folder) {
    QStringList names;
    FolderNames items(folder);
    while (const auto name = items.next())
        names += *name;
    names.sort();
    return names;
}
