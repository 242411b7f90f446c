// The tags of a page.
#pragma once

#include <optional>

#include <QStringView>

// Finds, one after the other, what the pattern "<(.*\r)*[^*]*>" matches when it is not greedy: from a "<" to
// the next ">", with no asterisk in between. An asterisk is passed only by a Return behind it, on the line on
// which the tag began. The pattern itself needs exponential time for pages with asterisks and Returns; this
// walk needs time in proportion to the page.
class TagFinder {
public:
    struct Tag {
        qsizetype begin;
        qsizetype end;  // behind the ">"
    };

    // The text must outlive the finder.
    explicit TagFinder(QStringView html) : m_html(html) {}

    std::optional<Tag> next();

private:
    // Where a character comes next; remembers the last place found.
    struct Lookout {
        char16_t character;
        qsizetype askedFrom = -1;
        qsizetype found = -1;
    };

    // The end of the text when there is none.
    qsizetype find(Lookout& lookout, qsizetype from) const;
    // The end of a tag whose rest begins at `start`, or of the one that begins at `begin`; 0 for none.
    qsizetype endFrom(qsizetype start);
    qsizetype endOf(qsizetype begin);

    QStringView m_html;
    qsizetype m_at = 0;
    // Returns before this place are known to lead to no end of a tag.
    qsizetype m_hopelessUpTo = 0;
    Lookout m_greater{u'>'};
    Lookout m_asterisk{u'*'};
    Lookout m_return{u'\r'};
    Lookout m_lineFeed{u'\n'};
};
