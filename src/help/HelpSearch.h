// Searching the book: first the titles and keywords of its contents, then the pages themselves.
#pragma once

#include <functional>

#include <QString>

#include "Clock.h"
#include "FolderItem.h"
#include "Task.h"
#include "XmlDocument.h"

// A row of the search list.
struct SearchRow {
    QString name;
    QString source;
    QString text;  // what was searched for
};

// What a search works on. All of it must outlive the search.
struct SearchedBook {
    Clock& clock;
    const XmlNode& tocxml;
    FolderItem HelpFolder;
    bool UseFullTextSearch;
};

// Hands each page that matches to `add`, in the order of the contents file. A page that matches in its name,
// key or description is not opened. Reads the pages anew and lets the event loop turn meanwhile.
Task<> SearchTOC(SearchedBook book, QString text, std::function<void(const SearchRow&)> add);
// Whether the page's plain text holds `text`.
Task<bool> SearchPage(Clock& clock, FolderItem HelpFolder, QString text, QString source);
