#include "FTPDirectoryClass.h"

#include <algorithm>

#include "Text.h"

namespace {

// Two names may differ in letter case alone: the very same one goes first.
void removeFirst(QStringList& list, const QString& text) {
    if (list.removeOne(text))
        return;
    const auto found =
        std::ranges::find_if(list, [&](const QString& item) { return Text::equal(item, text); });
    if (found != list.end())
        list.erase(found);
}

}  // namespace

void FTPDirectoryClass::DeleteFile(const QString& name) {
    removeFirst(Files, name);
}

void FTPDirectoryClass::AddSubDirectory(const QString& path) {
    SubDirectories += path;
    CurrentSubDirectory = GetSubDirectoryCount();
}

QString FTPDirectoryClass::GetNextSubDirectoryName() {
    const QString path = GetCurrentSubDirectoryName();
    if (CurrentSubDirectory >= 0)
        --CurrentSubDirectory;
    return path;
}

void FTPDirectoryClass::DeleteSubDirectory(const QString& path) {
    removeFirst(SubDirectories, path);
    CurrentSubDirectory = GetSubDirectoryCount();
}

QString FTPDirectoryClass::GetCurrentSubDirectoryName() const {
    return CurrentSubDirectory < 0 ? QString() : SubDirectories.at(CurrentSubDirectory);
}
