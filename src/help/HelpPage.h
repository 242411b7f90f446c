// Page files: what kind a file is, and its text.
#pragma once

#include <optional>

#include <QString>

#include "FolderItem.h"

// By the file's name, tested in this order.
enum class PageKind {
    Text,
    Media,  // shown, but never part of the history
    Html,
    None,
};

PageKind pageKind(const QString& name);
// Html or Text.
bool isPage(const QString& name);

// The whole text, read as its byte order mark or its `charset` says and as UTF-8 otherwise; nothing when the
// file cannot be read. Larger files than 256 MiB are none that a reader would open.
std::optional<QString> readPage(const FolderItem& item);
