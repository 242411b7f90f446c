// How a selection or a click reaches a page, and the history.
#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QTreeWidget>
#include <QUrl>

#include "BookItems.h"
#include "HelpPage.h"
#include "HelpSource.h"
#include "NavButton.h"
#include "SearchHighlight.h"
#include "UniHelpEngine.h"
#include "UniHelpHistory.h"
#include "UniHelpViewer.h"

namespace {

template <typename Item, typename List>
const Item* selectedItem(const List& list) {
    const auto selected = list.selectedItems();
    return selected.isEmpty() ? nullptr : static_cast<const Item*>(selected.front());
}

FolderItem fileOfUrl(const QString& url) {
    return FolderItem(QUrl(url).toLocalFile());
}

}  // namespace

void UniHelpViewer::OpenPage(const FolderItem& page, const QString& anchor) {
    TabSelected(Tab::Contents);
    const FolderItem first = page.isNil() ? m_settings.HomePage : page;
    if (first.isNil()) {
        ListTOC(m_settings.HelpFolder);
        return;
    }
    AddToHistory(first);
    ListTOC(first);
    m_anchor = anchor;
    LoadHelpFile(first, false, false, QString());
    m_anchor.clear();
}

void UniHelpViewer::GetSelectedTopic(Tab list) {
    if (list == Tab::Contents) {
        const auto* item = selectedItem<ContentsItem>(*c.HelpList);
        if (item && !item->row.name.isEmpty() && item->row.kind == RowKind::Page)
            openSource(item->row.source, list, QString());
    } else if (list == Tab::Index) {
        const auto* item = selectedItem<IndexItem>(*c.IndexList);
        if (item && !item->row.name.isEmpty())
            openSource(item->row.source, list, QString());
    } else {
        const auto* item = selectedItem<SearchItem>(*c.SearchList);
        if (item && !item->row.name.isEmpty())
            openSource(item->row.source, list, item->row.text);
    }
}

void UniHelpViewer::openSource(const QString& source, Tab list, const QString& searchText) {
    const SourceKind kind = sourceKind(source);
    if (kind == SourceKind::OutsideAddress)
        m_globals.ShowURL(source);
    if (kind == SourceKind::Script)
        m_globals.UniHelp->RunScript(scriptOf(source));
    if (kind != SourceKind::Path)
        return;
    const FolderItem file = fileOf(source, m_settings.HelpFolder);
    if (!file.Exists())
        return;
    // In the contents list the row is selected already.
    if (list != Tab::Contents)
        ListTOC(file);
    guarded([&] { LoadHelpFile(file, true, list == Tab::Search, searchText); });
}

void UniHelpViewer::LoadHelpFile(const FolderItem& file, bool addToHistory, bool highlight,
                                 const QString& searchText) {
    const PageKind kind = pageKind(file.Name());
    if (!file.isFile() || kind == PageKind::None)
        return;
    if (addToHistory && kind != PageKind::Media)
        addAndRaiseHistory(file);
    QString marked;
    if (kind == PageKind::Html && highlight && m_settings.UseFullTextSearch &&
        m_settings.ShowSearchHighlights)
        marked = SearchHighlight(searchText, file);
    IsUHLink = true;
    if (marked.isEmpty())
        HelpView->LoadPage(file, m_anchor);
    else
        HelpView->LoadPage(marked, file);
}

void UniHelpViewer::AddToHistory(const FolderItem& file) {
    if (!file.Exists())
        return;
    const XmlNode* page =
        pageWithSource(tocxml->DocumentElement(), relativePath(file, m_settings.HelpFolder));
    m_history.AddToHistory(page ? page->GetAttribute(u"name") : file.Name(), file);
}

void UniHelpViewer::addAndRaiseHistory(const FolderItem& file) {
    AddToHistory(file);
    m_history.raiseIsBackHistory();
    paintHistoryButtons();
}

bool UniHelpViewer::HelpView_CancelLoad(const QString& url) {
    if (isOutsideLink(url)) {
        m_globals.ShowURL(url);
        return true;
    }
    if (!isScript(url))
        return false;
    m_globals.UniHelp->RunScript(scriptOf(url));
    return true;
}

void UniHelpViewer::HelpView_DocumentComplete(const QString& url) {
    const bool isUsersClick = !std::exchange(IsUHLink, false);
    const FolderItem file = fileOfUrl(url);
    if (!isUsersClick || !file.Exists() || !isPage(file.Name()))
        return;
    addAndRaiseHistory(file);
    ListTOC(file);
}

// The address stands between the first two double quotes.
void UniHelpViewer::HelpView_StatusChanged(const QString& text) {
    const QString address = text.section(u'"', 1, 1);
    if (isOutsideLink(address))
        c.StatusLabel->setText(address);
    else if (isScript(address))
        c.StatusLabel->setText(QStringLiteral("Click to Run Script"));
    else
        c.StatusLabel->clear();
}

void UniHelpViewer::HelpView_Error(int code, const QString& text) {
    // The load that the window started will not complete.
    IsUHLink = false;
    report(m_globals.UHViewerError(code, text));
}

void UniHelpViewer::showFromHistory(const FolderItem& target) {
    paintHistoryButtons();
    if (target.isNil())
        return;
    ListTOC(target);
    LoadHelpFile(target, false, false, QString());
}

void UniHelpViewer::paintHistoryButtons() {
    c.BtnBack->setEnabled(m_history.IsBackHistory());
    c.BtnNext->setEnabled(m_history.IsNextHistory());
    c.BtnHistory->setEnabled(m_history.IsBackHistory() || m_history.IsNextHistory());
}

void UniHelpViewer::BtnHome_Action() {
    if (m_settings.HomePage.isNil())
        return;
    ListTOC(m_settings.HomePage);
    LoadHelpFile(m_settings.HomePage, true, false, QString());
}

void UniHelpViewer::ShowUHistoryMenu() {
    if (!m_history.IsBackHistory() && !m_history.IsNextHistory())
        return;
    UHistoryMenu = std::make_unique<QMenu>();
    UHistoryMenu->setObjectName(QStringLiteral("UHistoryMenu"));
    for (const HelpHistory::Entry& entry : m_history.listed())
        AddUHistoryMenu(entry);
    UHistoryMenu->popup(c.BtnHistory->mapToGlobal(QPoint(0, c.BtnHistory->height())));
}

void UniHelpViewer::AddUHistoryMenu(const HelpHistory::Entry& entry) {
    auto* row = new UniHelpHistory(entry.title, entry.file, UHistoryMenu.get());
    row->setChecked(entry.isCurrent);
    connect(row, &QAction::triggered, this, [this, row] {
        if (row->mPageFile.Exists())
            LoadHistoryTopic(row->mPageFile);
    });
    UHistoryMenu->addAction(row);
}

void UniHelpViewer::LoadHistoryTopic(const FolderItem& file) {
    ListTOC(file);
    LoadHelpFile(file, true, false, QString());
}
