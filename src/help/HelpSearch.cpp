#include "HelpSearch.h"

#include <algorithm>

#include <QStringMatcher>

#include "BookContents.h"
#include "HelpPage.h"
#include "HelpSource.h"
#include "PlainText.h"
#include "Text.h"

namespace {

constexpr qsizetype Slice = 1 << 18;  // characters of a page between two looks at the time

bool isWordCharacter(QChar c) {
    return c.unicode() < 0x80 && c.isLetterOrNumber();
}

// The longest run of plain letters and digits. A page whose plain text holds `text` holds this as it stands:
// no tag comes to nothing, and no entity to a plain letter.
QString longestWord(const QString& text) {
    QStringView longest;
    for (qsizetype at = 0; at < text.size(); ++at) {
        const qsizetype begin = at;
        while (at < text.size() && isWordCharacter(text[at]))
            ++at;
        if (at - begin > longest.size())
            longest = QStringView(text).mid(begin, at - begin);
    }
    return longest.toString();
}

bool mayHold(const QString& html, const QString& text) {
    return QStringMatcher(longestWord(text), Qt::CaseInsensitive).indexIn(html) >= 0;
}

Task<bool> holds(Clock& clock, QString html, QString text) {
    const QStringMatcher matcher(text, Qt::CaseInsensitive);
    PlainText page(std::move(html));
    qsizetype from = 0;
    while (page.advance(Slice)) {
        if (matcher.indexIn(page.text(), from) >= 0)
            co_return true;
        from = std::max<qsizetype>(page.text().size() - text.size() + 1, 0);
        co_await clock.breathe();
    }
    co_return false;
}

bool matchesInContents(const XmlNode& page, const QString& text) {
    return Text::InStr(page.GetAttribute(u"name"), text) > 0 ||
           Text::InStr(page.GetAttribute(u"key"), text) > 0 ||
           Text::InStr(page.GetAttribute(u"desc"), text) > 0;
}

}  // namespace

Task<> SearchTOC(SearchedBook book, QString text, std::function<void(const SearchRow&)> add) {
    for (const XmlNode* page : allPages(book.tocxml)) {
        const QString source = page->GetAttribute(u"source");
        bool isHit = matchesInContents(*page, text);
        if (!isHit && book.UseFullTextSearch)
            isHit = co_await SearchPage(book.clock, book.HelpFolder, text, source);
        if (isHit)
            add({page->GetAttribute(u"name"), source, text});
        co_await book.clock.breathe();
    }
}

Task<bool> SearchPage(Clock& clock, FolderItem HelpFolder, QString text, QString source) {
    if (sourceKind(source) != SourceKind::Path)
        co_return false;
    auto html = readPage(fileOf(source, HelpFolder));
    if (!html || !mayHold(*html, text))
        co_return false;
    const bool isHit = co_await holds(clock, std::move(*html), text);
    co_return isHit;
}
