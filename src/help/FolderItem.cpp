#include "FolderItem.h"

#include <algorithm>

#include <QDir>
#include <QFileInfo>

#include "Errors.h"

namespace {

bool isPlainName(const QString& name) {
    return !name.isEmpty() && name != QStringLiteral(".") && name != QStringLiteral("..") &&
           !name.contains(u'/') && !name.contains(u'\\') && !name.contains(QChar(u'\0'));
}

}  // namespace

bool FolderItem::Exists() const {
    return !isNil() && QFileInfo::exists(m_path);
}

bool FolderItem::Directory() const {
    return !isNil() && QFileInfo(m_path).isDir();
}

bool FolderItem::isFile() const {
    return !isNil() && QFileInfo(m_path).isFile();
}

QString FolderItem::Name() const {
    return QFileInfo(m_path).fileName();
}

FolderItem FolderItem::Parent() const {
    return isNil() ? FolderItem() : FolderItem(QFileInfo(m_path).path());
}

FolderItem FolderItem::Child(const QString& name) const {
    return Descendant({name});
}

FolderItem FolderItem::Descendant(const QStringList& names) const {
    if (isNil())
        throw NilObjectError(QStringLiteral("A nil FolderItem has no children."));
    if (!std::all_of(names.begin(), names.end(), isPlainName))
        return {};
    return FolderItem(m_path + u'/' + names.join(u'/'));
}

std::vector<FolderItem> FolderItem::Children() const {
    std::vector<FolderItem> items;
    if (isNil())
        return items;
    const auto all = QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;
    for (const QString& name : QDir(m_path).entryList(all, QDir::Name))
        items.push_back(Child(name));
    return items;
}

bool FolderItem::CreateAsFolder() const {
    return !isNil() && QDir().mkdir(m_path);
}

bool FolderItem::CopyFileTo(const FolderItem& folder) const {
    return QFile::copy(m_path, folder.Child(Name()).AbsolutePath());
}
