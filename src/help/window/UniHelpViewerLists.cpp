// The contents list and the index list.
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QToolButton>
#include <QTreeWidget>

#include "BookItems.h"
#include "HelpSource.h"
#include "NavButton.h"
#include "Pictures.h"
#include "Text.h"
#include "UniHelpViewer.h"

namespace {

QString unreadable(const QString& file) {
    return QStringLiteral(
               "UniHelp cannot read the %1 file. Please make sure that it is located in the help "
               "folder and that it is compatible with UniHelp.")
        .arg(file);
}

ContentsItem* contentsItem(QTreeWidgetItem* item) {
    return static_cast<ContentsItem*>(item);
}

// The row that shows a node, among the rows below `parent`.
ContentsItem* itemOf(QTreeWidgetItem& parent, const XmlNode* node) {
    for (int i = 0; i < parent.childCount(); ++i)
        if (contentsItem(parent.child(i))->row.node == node)
            return contentsItem(parent.child(i));
    return nullptr;
}

}  // namespace

void UniHelpViewer::connectLists() {
    connect(c.HelpList, &QTreeWidget::itemExpanded, this, &UniHelpViewer::HelpList_ExpandRow);
    connect(c.HelpList, &QTreeWidget::itemCollapsed, this, &UniHelpViewer::HelpList_CollapseRow);
    connect(c.HelpList, &QTreeWidget::itemClicked, this, [this] { GetSelectedTopic(Tab::Contents); });
    connect(c.HelpList, &QTreeWidget::itemDoubleClicked, this, &UniHelpViewer::HelpList_DoubleClick);
    c.HelpList->installEventFilter(this);
    connect(c.IndexList, &QListWidget::itemSelectionChanged, this, [this] { GetSelectedTopic(Tab::Index); });
    connect(c.SearchList, &QListWidget::itemSelectionChanged, this,
            [this] { GetSelectedTopic(Tab::Search); });
    connect(c.IndexField, &QLineEdit::textChanged, this, &UniHelpViewer::IndexField_TextChange);
    connect(c.SearchField, &QLineEdit::returnPressed, this, &UniHelpViewer::StartSearch);
    connect(c.SearchBtn, &QToolButton::clicked, this, &UniHelpViewer::StartSearch);
}

Task<bool> UniHelpViewer::LoadTOC() {
    const QString name = QStringLiteral("uhtoc.xml");
    const FolderItem file = m_settings.HelpFolder.Child(name);
    if (!file.Exists()) {
        co_await m_globals.UHError(unreadable(name));
        co_return false;
    }
    tocxml = XmlDocument::LoadXml(file);
    co_return true;
}

Task<bool> UniHelpViewer::ListIndex() {
    c.IndexList->clear();
    const QString name = QStringLiteral("uhindex.xml");
    const FolderItem file = m_settings.HelpFolder.Child(name);
    if (!file.Exists()) {
        co_await m_globals.UHError(unreadable(name));
        co_return false;
    }
    indexml = XmlDocument::LoadXml(file);
    for (BookRow& row : indexRows(indexml->DocumentElement()))
        c.IndexList->addItem(new IndexItem(std::move(row)));
    co_return true;
}

// Made anew from the book each time, which also closes every chapter.
void UniHelpViewer::ListTOC(const FolderItem& file) {
    c.HelpList->clear();
    ListTOCFolder(c.HelpList->invisibleRootItem(),
                  contentsRows(tocxml->DocumentElement(), QStringLiteral("helpbook")));
    SelectListTopic(file);
}

void UniHelpViewer::ListTOCFolder(QTreeWidgetItem* parent, const std::vector<BookRow>& rows) {
    const QIcon chapter = Pictures::icon(m_settings.IconCategory);
    const QIcon page = Pictures::icon(m_settings.IconPage);
    QList<QTreeWidgetItem*> items;
    for (const BookRow& row : rows) {
        items += new ContentsItem(row);
        items.back()->setIcon(0, row.kind == RowKind::Chapter ? chapter : page);
    }
    parent->addChildren(items);
}

void UniHelpViewer::SelectListTopic(const FolderItem& file) {
    const ContentsPlace place =
        contentsPlace(tocxml->DocumentElement(), relativePath(file, m_settings.HelpFolder));
    QTreeWidgetItem* opened = c.HelpList->invisibleRootItem();
    for (const XmlNode* chapter : place.chapters) {
        opened = itemOf(*opened, chapter);
        opened->setExpanded(true);
    }
    if (QTreeWidgetItem* page = place.page ? itemOf(*opened, place.page) : nullptr)
        c.HelpList->setCurrentItem(page);
}

void UniHelpViewer::HelpList_ExpandRow(QTreeWidgetItem* row) {
    const ContentsItem* chapter = contentsItem(row);
    row->setIcon(0, Pictures::icon(m_settings.IconCategoryOpen));
    ListTOCFolder(row, contentsRows(*chapter->row.node, chapter->row.path));
}

// The rows below go: a chapter is listed anew when it opens.
void UniHelpViewer::HelpList_CollapseRow(QTreeWidgetItem* row) {
    row->setIcon(0, Pictures::icon(m_settings.IconCategory));
    qDeleteAll(row->takeChildren());
}

void UniHelpViewer::HelpList_DoubleClick() {
    QTreeWidgetItem* row = c.HelpList->currentItem();
    if (row && contentsItem(row)->isChapter())
        row->setExpanded(!row->isExpanded());
}

// The keyboard's click: the arrow keys alone move through the list and open nothing.
void UniHelpViewer::HelpList_KeyDown(int key) {
    if (key != Qt::Key_Return && key != Qt::Key_Enter)
        return;
    HelpList_DoubleClick();
    GetSelectedTopic(Tab::Contents);
}

void UniHelpViewer::IndexField_TextChange(const QString& text) {
    for (int row = 0; row < c.IndexList->count(); ++row) {
        QListWidgetItem* item = c.IndexList->item(row);
        if (!Text::equal(Text::Left(item->text(), text.size()), text))
            continue;
        c.IndexList->scrollToItem(item, QAbstractItemView::PositionAtTop);
        return;
    }
}

// A chapter that opens may bring more chapters: they come next in the walk.
void UniHelpViewer::setAllExpanded(bool expanded) {
    if (currentTab() != Tab::Contents)
        return;
    c.HelpList->setUpdatesEnabled(false);
    for (QTreeWidgetItemIterator row(c.HelpList); *row; ++row)
        if (contentsItem(*row)->isChapter())
            (*row)->setExpanded(expanded);
    c.HelpList->setUpdatesEnabled(true);
}

void UniHelpViewer::stepInList(int step) {
    if (currentTab() == Tab::Contents) {
        QTreeWidgetItem* current = c.HelpList->currentItem();
        QTreeWidgetItem* next = nullptr;
        if (current)
            next = step > 0 ? c.HelpList->itemBelow(current) : c.HelpList->itemAbove(current);
        else if (step > 0)
            next = c.HelpList->topLevelItem(0);
        if (!next)
            return;
        c.HelpList->setCurrentItem(next);
        GetSelectedTopic(Tab::Contents);
        return;
    }
    QListWidget* list = currentTab() == Tab::Index ? c.IndexList : c.SearchList;
    const QModelIndexList selected = list->selectionModel()->selectedRows();
    const int row = (selected.isEmpty() ? -1 : selected.front().row()) + step;
    if (row >= 0 && row < list->count())
        list->setCurrentRow(row);
}
