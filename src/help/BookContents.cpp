#include "BookContents.h"

#include <algorithm>

#include <QStringList>

#include "Text.h"

namespace {

const QString Chapter = QStringLiteral("chapter");
const QString Page = QStringLiteral("page");
const QString Topic = QStringLiteral("topic");
const QString Book = QStringLiteral("helpbook");

BookRow row(const XmlNode& node, RowKind kind, const QString& parentPath, int number) {
    return {.name = node.GetAttribute(u"name"),
            .path = QStringLiteral("%1/%2[%3]").arg(parentPath, node.Name().toLower()).arg(number),
            .kind = kind,
            .source = node.GetAttribute(u"source"),
            .node = &node};
}

// The names of the page and of all above it, from the top down.
QStringList chainTo(const XmlNode& page) {
    QStringList names;
    for (const XmlNode* node = &page; node && !node->is(Book); node = node->Parent())
        names.prepend(node->GetAttribute(u"name"));
    return names;
}

// One step of the way: the first row of that text, among those of the chapter opened last.
void SelectListDig(ContentsPlace& place, const XmlNode& root, const QString& text) {
    const XmlNode& opened = place.chapters.empty() ? root : *place.chapters.back();
    for (const BookRow& row : contentsRows(opened, QString())) {
        if (!Text::equal(row.name, text))
            continue;
        if (row.kind == RowKind::Page)
            place.page = row.node;
        else
            place.chapters.push_back(row.node);
        return;
    }
}

// Calls `visit` with each node below and including `node` in document order until it returns true.
template <typename Visit>
bool walk(const XmlNode& node, const Visit& visit) {
    return visit(node) || std::any_of(node.children().begin(), node.children().end(),
                                      [&visit](const auto& child) { return walk(*child, visit); });
}

}  // namespace

std::vector<BookRow> contentsRows(const XmlNode& node, const QString& path) {
    std::vector<BookRow> rows;
    int chapters = 0;
    int pages = 0;
    for (const auto& child : node.children()) {
        if (child->is(Chapter))
            rows.push_back(row(*child, RowKind::Chapter, path, ++chapters));
        else if (child->is(Page))
            rows.push_back(row(*child, RowKind::Page, path, ++pages));
    }
    return rows;
}

std::vector<BookRow> indexRows(const XmlNode& helpindex) {
    std::vector<BookRow> rows;
    for (const auto& child : helpindex.children())
        if (child->is(Topic))
            rows.push_back(
                row(*child, RowKind::Topic, QStringLiteral("helpindex"), static_cast<int>(rows.size()) + 1));
    return rows;
}

std::vector<const XmlNode*> allPages(const XmlNode& root) {
    std::vector<const XmlNode*> pages;
    walk(root, [&pages](const XmlNode& node) {
        if (node.Name() == Page)
            pages.push_back(&node);
        return false;
    });
    return pages;
}

const XmlNode* pageWithSource(const XmlNode& root, const QString& source) {
    const XmlNode* found = nullptr;
    walk(root, [&found, &source](const XmlNode& node) {
        if (node.Name() == Page && node.GetAttribute(u"source") == source)
            found = &node;
        return found != nullptr;
    });
    return found;
}

ContentsPlace contentsPlace(const XmlNode& root, const QString& source) {
    ContentsPlace place;
    const XmlNode* page = pageWithSource(root, source);
    if (!page)
        return place;
    for (const QString& name : chainTo(*page))
        SelectListDig(place, root, name);
    return place;
}
