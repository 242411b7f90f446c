// The search panel.
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>

#include "BookItems.h"
#include "HelpSource.h"
#include "Pictures.h"
#include "UniHelpEngine.h"
#include "UniHelpViewer.h"

namespace {

// Three blanks are a real search.
bool isNothing(const QString& text) {
    return text.isEmpty() || text == QStringLiteral(" ") || text == QStringLiteral("  ");
}

}  // namespace

void UniHelpViewer::clearSearch() {
    m_search.cancelAll();
    c.SearchList->clear();
    c.StatusLabel->clear();
}

void UniHelpViewer::StartSearch() {
    clearSearch();
    const QString text = c.SearchField->text();
    if (isNothing(text)) {
        c.SearchList->setFocus();
        report(m_globals.UHError(
            QStringLiteral("Please enter a keyword or phrase that you wish to search for.")));
    } else if (text.toLower() == QStringLiteral("unihelp credits")) {
        c.SearchList->setFocus();
        report(ShowCredits());
    } else {
        m_search.start(runSearch(text));
    }
}

Task<> UniHelpViewer::runSearch(QString text) {
    co_await SearchTOC(text);
    if (c.SearchList->count() == 0)
        tellNoMatches();
    c.SearchField->setFocus();
    c.SearchField->selectAll();
}

Task<> UniHelpViewer::SearchTOC(QString text) {
    const SearchedBook book{m_globals.clock, tocxml->DocumentElement(), m_settings.HelpFolder,
                            m_settings.UseFullTextSearch};
    const QIcon icon = Pictures::icon(m_settings.IconPage);
    const std::function<void(const SearchRow&)> add = [this, icon](const SearchRow& row) {
        c.SearchList->addItem(new SearchItem(row, icon));
    };
    co_await ::SearchTOC(book, text, add);
}

void UniHelpViewer::tellNoMatches() {
    m_globals.dialogs.Beep();
    c.StatusLabel->setText(QStringLiteral("Sorry, No Matches Were Found."));
}

void UniHelpViewer::OpenSearch(const QString& text) {
    TabSelected(Tab::Search);
    clearSearch();
    m_search.start(runOpenSearch(text));
}

Task<> UniHelpViewer::runOpenSearch(QString text) {
    if (isNothing(text)) {
        c.SearchField->clear();
        showHomePage();
        tellNoMatches();
        co_return;
    }
    c.SearchField->setText(text);
    co_await SearchTOC(text);
    if (c.SearchList->count() > 0) {
        openFirstResult();
        co_return;
    }
    showHomePage();
    tellNoMatches();
}

void UniHelpViewer::openFirstResult() {
    const SearchRow row = static_cast<SearchItem*>(c.SearchList->item(0))->row;
    const SourceKind kind = sourceKind(row.source);
    if (kind == SourceKind::Path) {
        const FolderItem file = fileOf(row.source, m_settings.HelpFolder);
        if (file.Exists()) {
            AddToHistory(file);
            ListTOC(file);
            LoadHelpFile(file, false, true, row.text);
            return;
        }
    }
    showHomePage();
    if (kind == SourceKind::OutsideAddress)
        m_globals.ShowURL(row.source);
    if (kind == SourceKind::Script)
        m_globals.UniHelp->RunScript(scriptOf(row.source));
}

void UniHelpViewer::showHomePage() {
    if (m_settings.HomePage.isNil()) {
        ListTOC(m_settings.HelpFolder);
        return;
    }
    AddToHistory(m_settings.HomePage);
    ListTOC(m_settings.HomePage);
    LoadHelpFile(m_settings.HomePage, false, false, QString());
}

Task<> UniHelpViewer::ShowCredits() {
    m_globals.dialogs.Beep();
    const MessageRequest request{
        .message = QStringLiteral("UniHelp"),
        .explanation = QStringLiteral("The help viewer of the VLX Utility: a book of plain pages with its "
                                      "contents, its index, and a search that reads every page."),
        .actionButton = QStringLiteral("Visit Web Site"),
        .alternateButton = QStringLiteral("Cancel"),
        .kind = MessageKind::Question};
    const bool isWanted = co_await m_globals.dialogs.askCaution(request);
    if (isWanted)
        m_globals.ShowURL(QStringLiteral("https://unihelp.tessarin.example/"));
}
