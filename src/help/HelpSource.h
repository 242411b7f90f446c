// The `source` of a page or topic: what it means and where it leads. Lists, links and the search all ask
// here.
#pragma once

#include <QString>

#include "FolderItem.h"

enum class SourceKind {
    Heading,         // leads nowhere
    OutsideAddress,  // for the system's browser or mail program
    Script,
    Path,  // relative to the help folder
};

SourceKind sourceKind(QStringView source);

// The text that a source or an address of the kind "UHScript:..." hands to the script hook.
bool isScript(QStringView address);
QString scriptOf(const QString& address);

// The item that a source of the kind Path leads to, existing or not; nil when it would leave the folder.
FolderItem fileOf(const QString& source, const FolderItem& helpFolder);

// The path of a file as a source writes it; the whole path when the file lies outside of the help folder.
QString relativePath(const FolderItem& file, const FolderItem& helpFolder);

// What a link in a page leads to when it leads out of the book.
bool isOutsideLink(QStringView url);
