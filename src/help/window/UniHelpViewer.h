// The help window: contents, index and search on the left, the page on the right.
#pragma once

#include <memory>
#include <optional>

#include <QWidget>

#include "BookContents.h"
#include "Divider.h"
#include "Flows.h"
#include "HelpControls.h"
#include "HelpHistory.h"
#include "HelpSearch.h"
#include "HelpWindow.h"
#include "HTMLViewer.h"
#include "UniHelpGlobals.h"

class QMenu;
class QTreeWidgetItem;

class UniHelpViewer final : public QWidget, public HelpWindow {
    Q_OBJECT

public:
    UniHelpViewer(UniHelpGlobals& globals, HTMLViewerLibrary& library);
    ~UniHelpViewer() override;

    Task<bool> CustomizeHelp(HelpSettings settings) override;
    void Show() override;
    void OpenPage(const FolderItem& page, const QString& anchor) override;
    void OpenSearch(const QString& text) override;
    void setRectangle(const QRect& rectangle) override;
    void Close() override { close(); }

protected:
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    enum class Tab { Contents, Index, Search };

    void connectNavigation();
    void connectLists();
    void connectKeys();
    void addHelpView();
    void orderFocus();
    // Runs what a book or a search text may make fail; what fails goes to the default error handling.
    template <typename Action>
    void guarded(const Action& action);
    void report(Task<> dialog) { m_dialogs.start(std::move(dialog)); }
    void rememberRectangle();

    void TabSelected(Tab tab);
    Tab currentTab() const;
    void SetFontSize(int size);
    void SetFontName(const QString& name);
    int listFontSize() const;

    // Lists.
    Task<bool> LoadTOC();
    Task<bool> ListIndex();
    void ListTOC(const FolderItem& file);
    void ListTOCFolder(QTreeWidgetItem* parent, const std::vector<BookRow>& rows);
    void SelectListTopic(const FolderItem& file);
    void HelpList_ExpandRow(QTreeWidgetItem* row);
    void HelpList_CollapseRow(QTreeWidgetItem* row);
    void HelpList_DoubleClick();
    void HelpList_KeyDown(int key);
    void IndexField_TextChange(const QString& text);
    void setAllExpanded(bool expanded);
    void stepInList(int step);

    // Pages.
    void GetSelectedTopic(Tab list);
    void openSource(const QString& source, Tab list, const QString& searchText);
    void LoadHelpFile(const FolderItem& file, bool addToHistory, bool highlight, const QString& searchText);
    void AddToHistory(const FolderItem& file);
    void addAndRaiseHistory(const FolderItem& file);
    bool HelpView_CancelLoad(const QString& url);
    void HelpView_DocumentComplete(const QString& url);
    void HelpView_StatusChanged(const QString& text);
    void HelpView_Error(int code, const QString& text);
    void showFromHistory(const FolderItem& target);
    void paintHistoryButtons();
    void BtnHome_Action();
    void ShowUHistoryMenu();
    void AddUHistoryMenu(const HelpHistory::Entry& entry);
    void LoadHistoryTopic(const FolderItem& file);

    // Search.
    void StartSearch();
    void clearSearch();
    Task<> runSearch(QString text);
    Task<> runOpenSearch(QString text);
    Task<> SearchTOC(QString text);
    void openFirstResult();
    void showHomePage();
    void tellNoMatches();
    Task<> ShowCredits();

    UniHelpGlobals& m_globals;
    HTMLViewerLibrary& m_library;
    HelpSettings m_settings;
    HelpControls c;
    Divider m_divider;
    bool m_isDragging = false;
    std::optional<XmlDocument> tocxml;
    std::optional<XmlDocument> indexml;
    HelpHistory m_history;
    // The next completed load was started by the window itself, not by a click in the page.
    bool IsUHLink = false;
    QString m_anchor;  // of the page that is loaded next
    std::unique_ptr<QMenu> UHistoryMenu;
    std::unique_ptr<HTMLViewer> HelpView;
    Flows m_dialogs;
    Flows m_search;
};

template <typename Action>
void UniHelpViewer::guarded(const Action& action) {
    try {
        action();
    } catch (...) {
        m_globals.onError(std::current_exception());
    }
}
