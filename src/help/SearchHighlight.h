// Marking the hits of a search in a page.
#pragma once

#include <QString>

#include "FolderItem.h"

// `text` with a backslash before most of the characters that mean something in a pattern. "]", "{" and "}"
// are not among them.
QString ConvertSafeText(const QString& text);

// The page with its hits marked; empty if the file is nil or cannot be read. Throws PatternError when the
// text, made safe as it can be, is still no pattern.
QString SearchHighlight(const QString& text, const FolderItem& file);
// The same on a page's text.
QString markHits(const QString& html, const QString& text);
