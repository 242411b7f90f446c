// What the lists of the help window show of the two XML files.
#pragma once

#include <vector>

#include <QString>

#include "XmlDocument.h"

enum class RowKind { Chapter, Page, Topic };

// One row of the contents or index list: its text, and the hidden cells behind it.
struct BookRow {
    QString name;
    // The row's place in the book, such as "helpbook/chapter[2]/page[1]". A label: nothing evaluates it.
    QString path;
    RowKind kind;
    QString source;
    const XmlNode* node;
};

// The chapters and pages right below a node, whose own row has `path`. Other elements have no row.
std::vector<BookRow> contentsRows(const XmlNode& node, const QString& path);
std::vector<BookRow> indexRows(const XmlNode& helpindex);

// "//page": all pages in document order.
std::vector<const XmlNode*> allPages(const XmlNode& root);
// "//page[@source='...']": the first page with that very source; none when there is no such page.
const XmlNode* pageWithSource(const XmlNode& root, const QString& source);

// The way to a page through the contents list.
struct ContentsPlace {
    std::vector<const XmlNode*> chapters;  // to open, from the top down
    const XmlNode* page = nullptr;         // to select, if any
};

// Finds its way by the rows' texts alone: of two rows of the same text the first one is taken, whichever the
// page really was.
ContentsPlace contentsPlace(const XmlNode& root, const QString& source);
