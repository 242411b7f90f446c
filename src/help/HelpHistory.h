// The pages that were opened, and where among them the reader is.
#pragma once

#include <vector>

#include <QString>

#include "FolderItem.h"

// Newest at the low indexes. A page opened after going back is inserted where the reader is: what lay
// forward stays forward.
class HelpHistory {
public:
    struct Entry {
        QString title;
        FolderItem file;
        bool isCurrent;
    };

    static constexpr int ListLimit = 15;  // rows of the history list

    void AddToHistory(const QString& title, const FolderItem& file);
    // The history has become worth going back in.
    void raiseIsBackHistory() { m_isBackHistory = true; }

    // One step; the page to show, nil when there is none.
    FolderItem goBack();
    FolderItem goNext();

    bool IsBackHistory() const { return m_isBackHistory; }
    bool IsNextHistory() const { return m_isNextHistory; }
    // What the history list shows: the entries at the lowest indexes.
    std::vector<Entry> listed() const;

private:
    int highestIndex() const { return static_cast<int>(m_entries.size()) - 1; }
    void recompute();

    struct Page {
        QString title;
        FolderItem file;
    };
    // The empty one stays at the high end for good.
    std::vector<Page> m_entries{Page()};
    int m_historyNum = 0;
    bool m_isBackHistory = false;
    bool m_isNextHistory = false;
};
