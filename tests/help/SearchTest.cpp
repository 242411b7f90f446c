// Search and marks.
#include <random>

#include <QRegularExpression>

#include "Errors.h"
#include "HelpFiles.h"
#include "HelpSearch.h"
#include "PlainText.h"
#include "SearchHighlight.h"
#include "SimClock.h"
#include "TagFinder.h"

namespace {

using namespace std::chrono_literals;

const QString Open = QStringLiteral("<span style=\"font-weight: bold;background: #FFFF66;\">");
const QString Close = QStringLiteral("</span>");

// `marked` with its marks written short.
QString shortened(QString marked) {
    return marked.replace(Open, QStringLiteral("[")).replace(Close, QStringLiteral("]"));
}

// Texts of a few characters that matter, in all mixtures.
class RandomText {
public:
    QString next(const QString& letters) {
        QString text;
        for (unsigned length = m_random() % 24; length > 0; --length)
            text += letters[static_cast<qsizetype>(m_random() % static_cast<unsigned>(letters.size()))];
        return text;
    }

private:
    std::mt19937 m_random{7};
};

TEST(SearchTest, TagsAreThoseOfThePattern) {
    const QRegularExpression pattern(
        QStringLiteral("<(.*\\r)*[^*]*>"),
        QRegularExpression::CaseInsensitiveOption | QRegularExpression::InvertedGreedinessOption);
    RandomText random;
    for (int i = 0; i < 5000; ++i) {
        const QString text = random.next(QStringLiteral("<<>>**\r\r\na"));
        QString expected = text;
        expected.replace(pattern, QStringLiteral(" "));
        QString stripped;
        TagFinder tags(text);
        qsizetype at = 0;
        while (const auto tag = tags.next()) {
            stripped += QStringView(text).mid(at, tag->begin - at);
            stripped += u' ';
            at = tag->end;
        }
        stripped += QStringView(text).mid(at);
        ASSERT_EQ(stripped, expected) << text.toUtf8().toPercentEncoding().toStdString();
    }
}

// clang-format off
TEST(SearchTest, PagesBecomePlainText) {
    const struct { const char* why; const char16_t* html; const char16_t* text; } Cases[] = {
        {"the head goes",                 u"<head>secret</head><BODY class=x>a",  u" a"},
        {"no body, nothing goes",         u"<title>a</title>b",                   u" a b"},
        {"a tag parts a word",            u"po<b>w</b>er",                        u"po w er"},
        {"over several lines",            u"a<img\nalt='x'\n>b",                  u"a b"},
        {"an asterisk keeps a tag",       u"a<i alt='*'>b",                       u"a<i alt='*'>b"},
        {"a Return leads past it",        u"a<i alt='*'\r>b",                     u"a b"},
        {"named and numbered",            u"&quot;&#34;&COPY;&#169;&mdash;&minus;&#039;&apos;", u"\"\"©©–-''"},
        {"letters by their case",         u"&Agrave;&agrave;&AGRAVE;&OElig;&oelig;&SZLIG;",     u"Àà&AGRAVE;Œœß"},
        {"ampersand last, and once",      u"&amp;copy; &amp;amp; &AMP;",          u"&copy; &amp; &"},
        {"outside of the table",          u"&nbsp;&lt;&#38;&#39;&;&&deg;",        u"&nbsp;&lt;&#38;&#39;&;&°"},
    };
    for (const auto& c : Cases)
        EXPECT_EQ(StripHTML(QString::fromUtf16(c.html)), QString::fromUtf16(c.text)) << c.why;
}

TEST(SearchTest, HitsAreMarkedAsTyped) {
    const struct { const char* why; const char* html; const char* text; const char* marked; } Cases[] = {
        {"in capitals, by any case",   "<body>Power, power",           "pOwer", "<body>[POWER], [POWER]"},
        {"not in the head",            "<title>a</title><body>a",      "a",     "<title>a</title><body>[A]"},
        {"not in a tag",               "<body><i title='a'>a</i>",     "a",     "<body><i title='a'>[A]</i>"},
        {"no body: from the start",    "a<b>a",                        "a",     "[A]<b>[A]"},
        {"a lone greater sign",        "<body>a > a",                  "a",     "<body>a > [A]"},
        {"characters of patterns",     "<body>a.c (b) [x] abc",        "a.c",   "<body>[A.C] (b) [x] abc"},
        {"brackets",                   "<body>[x]",                    "[x]",   "<body>[[X]]"},
        {"a count in braces counts",   "<body>aab",                    "a{2}",  "<body>[A{2}]b"},
        {"dollar in the replacement",  "<body>x$&y",                   "x$&y",  "<body>[Xx$&yY]"},
        {"a group that is not there",  "<body>$1",                     "$1",    "<body>[]"},
        {"backslash before a letter",  "<body>c\\temp",                "c\\temp", "<body>[CTEMP]"},
        {"nothing found",              "<body>b",                      "a",     "<body>b"},
        {"a pattern that matches nothing at all", "<body>bbb",         "x{0}",  "<body>bbb"},
    };
    for (const auto& c : Cases)
        EXPECT_EQ(shortened(markHits(QString::fromLatin1(c.html), QString::fromLatin1(c.text))), QString::fromLatin1(c.marked)) << c.why;
    EXPECT_THROW(markHits(QStringLiteral("a"), QStringLiteral("a{3,1}")), PatternError);
    EXPECT_THROW(markHits(QStringLiteral("a"), QString(1 << 20, u'a')), PatternError);
    EXPECT_TRUE(SearchHighlight(QStringLiteral("a"), FolderItem()).isEmpty());
}
// clang-format on

TEST(SearchTest, MarksAreThoseOfThePattern) {
    RandomText random;
    for (int i = 0; i < 5000; ++i) {
        const QString html = random.next(QStringLiteral("<>ab]."));
        const QString text = random.next(QStringLiteral("ab].<>")).left(2) + u'a';
        const QRegularExpression pattern(
            ConvertSafeText(text) + QStringLiteral("(?!([^<]+)?>)"),
            QRegularExpression::CaseInsensitiveOption | QRegularExpression::InvertedGreedinessOption);
        QString expected = html;
        expected.replace(pattern, Open + text.toUpper() + Close);
        ASSERT_EQ(shortened(markHits(html, text)), shortened(expected))
            << html.toStdString() << " / " << text.toStdString();
    }
}

class BookSearch {
public:
    QStringList search(const QString& text, bool useFullTextSearch = true) {
        const XmlDocument toc = XmlDocument::LoadXml(files.file(QStringLiteral("uhtoc.xml")));
        QStringList found;
        const Task<> flow = SearchTOC({clock, toc.DocumentElement(), files.HelpFolder, useFullTextSearch},
                                      text, [&found](const SearchRow& row) { found += row.name; });
        EXPECT_TRUE(clock.run(flow));
        EXPECT_EQ(clock.pendingWaits(), 0);
        return found;
    }

    SimClock clock;
    HelpFiles files;
};

TEST(SearchTest, FindsTitlesKeywordsAndPagesInTheOrderOfTheBook) {
    BookSearch book;
    book.files.writeContents(
        "<page name='One' source='1.htm'/><chapter name='swr'><page name='SWR limits' "
        "source='#none'/></chapter>"
        "<page name='Two' source='2.htm' key='reflected, swr'/><page name='Three' source='sub/a%20b.htm'/>"
        "<page name='Four' source='1.htm' desc='About SWR'/><page name='One again' source='1.htm'/>"
        "<page name='Away' source='http://swr.example/'/><page name='Gone' source='swr.htm'/>"
        "<page name='Out' source='../swr.txt'/>");
    book.files.write(QStringLiteral("1.htm"),
                     "<title>antenna</title><body title='tuner'>The S<i>W</i>R, 2&nbsp;:&#49; lo<b></b>w");
    book.files.write(QStringLiteral("2.htm"), "<body>nothing of it");
    book.files.write(QStringLiteral("sub/a b.htm"), "<body>High &quot;swr&quot; * at\r\n<p\n>dusk");
    QFile out(book.files.outside(QStringLiteral("swr.txt")));
    ASSERT_TRUE(out.open(QIODevice::WriteOnly));
    out.write("swr");
    out.close();

    EXPECT_EQ(book.search("swr"), (QStringList{"SWR limits", "Two", "Three", "Four"}));
    EXPECT_EQ(book.search("swr", false), (QStringList{"SWR limits", "Two", "Four"}));
    EXPECT_EQ(book.search("\"SWR\" "), QStringList{"Three"}) << "one phrase, entities read";
    EXPECT_EQ(book.search("s w r"), (QStringList{"One", "Four", "One again"})) << "listed twice, found twice";
    EXPECT_EQ(book.search("antenna"), QStringList()) << "the head is not searched";
    EXPECT_EQ(book.search("tuner"), QStringList()) << "nor are tags";
    EXPECT_EQ(book.search("gone"), QStringList{"Gone"}) << "a title needs no file";
    EXPECT_EQ(book.search("..."), QStringList());
}

TEST(SearchTest, PhraseThatLiesAcrossSlicesOfALongPageIsFound) {
    BookSearch book;
    book.files.writeContents("<page name='Long' source='long.htm'/>");
    for (const int shift : {0, 1, 7, 12}) {
        const QByteArray filler = QByteArray("x<br>").repeated(((1 << 18) - shift) / 5);
        book.files.write(QStringLiteral("long.htm"), "<body>" + filler + "fault table" + filler);
        EXPECT_EQ(book.search("fault table"), QStringList{"Long"}) << shift;
    }
}

TEST(SearchTest, OddPagesNeitherStopNorCrash) {
    BookSearch book;
    book.files.writeContents("<page name='Odd' source='odd.htm'/>");
    const QByteArray needle = "needle";
    const QByteArray pages[] = {
        QByteArray(1 << 20, '\r') + needle,
        QByteArray(1 << 20, '<') + needle,
        "<" + QByteArray(1 << 20, 'a') + ">" + needle,
        QByteArray(1 << 20, '<') + "*" + needle,
        QByteArray("<*\r").repeated(1 << 18) + needle,
        QByteArray("<*\r\n").repeated(1 << 18) + needle,
        QByteArray("&").repeated(1 << 20) + needle,
        needle + QByteArray(1 << 20, '\0'),
    };
    for (const QByteArray& page : pages) {
        book.files.write(QStringLiteral("odd.htm"), page);
        EXPECT_EQ(book.search("needle"), QStringList{"Odd"}) << page.left(8).toStdString();
    }
    // Marking looks ahead from each hit: a long text without tags must not make that a long look each time.
    const QString text(1 << 18, u'e');
    EXPECT_EQ(markHits(text, QStringLiteral("e")).size(), (Open.size() + Close.size() + 1) * text.size());
}

}  // namespace
