// Addresses of the help book's files. They have a scheme of their own, so that "file:" can be shut
// altogether.
#pragma once

#include <QUrl>

#include "FolderItem.h"

namespace BookUrl {

constexpr char Scheme[] = "vlxhelp";

// Makes the scheme known. Before anything else of the page view, once.
void registerScheme();

QUrl of(const FolderItem& file, const FolderItem& helpFolder);
// The file of the help folder that an address means; nil when it means none, or one outside of the folder, by
// dots or by a link of the file system.
FolderItem file(const QUrl& url, const FolderItem& helpFolder);
// The address as the help window knows it: "file:" for a file of the book.
QString told(const QUrl& url, const FolderItem& helpFolder);

}  // namespace BookUrl
