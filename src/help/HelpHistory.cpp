#include "HelpHistory.h"

#include <algorithm>

void HelpHistory::AddToHistory(const QString& title, const FolderItem& file) {
    m_entries.insert(m_entries.begin() + m_historyNum, Page{title, file});
}

FolderItem HelpHistory::goBack() {
    if (!m_isBackHistory)
        return {};
    if (m_historyNum < highestIndex() - 1)
        ++m_historyNum;
    recompute();
    return m_entries[static_cast<std::size_t>(m_historyNum)].file;
}

FolderItem HelpHistory::goNext() {
    if (!m_isNextHistory)
        return {};
    if (m_historyNum > 0)
        --m_historyNum;
    recompute();
    return m_entries[static_cast<std::size_t>(m_historyNum)].file;
}

void HelpHistory::recompute() {
    m_isNextHistory = highestIndex() > 1 && m_historyNum != 0;
    if (m_historyNum <= highestIndex() - 1)
        m_isBackHistory = m_historyNum < highestIndex() - 1;
}

std::vector<HelpHistory::Entry> HelpHistory::listed() const {
    std::vector<Entry> entries;
    const int last = std::min(highestIndex(), ListLimit - 1);
    for (int i = 0; i <= last; ++i) {
        const Page& page = m_entries[static_cast<std::size_t>(i)];
        if (!page.file.isNil())
            entries.push_back({page.title, page.file, i == m_historyNum});
    }
    return entries;
}
