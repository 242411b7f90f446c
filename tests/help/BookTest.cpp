// The two XML files and what a source means.
#include "BookContents.h"
#include "Errors.h"
#include "HelpFiles.h"
#include "HelpPage.h"
#include "HelpSource.h"
#include "XmlDocument.h"

namespace {

XmlDocument contents(const HelpFiles& files, const QByteArray& rows) {
    files.writeContents(rows);
    return XmlDocument::LoadXml(files.file(QStringLiteral("uhtoc.xml")));
}

QStringList paths(const std::vector<BookRow>& rows) {
    QStringList result;
    for (const BookRow& row : rows)
        result += row.path + u' ' + row.name;
    return result;
}

bool isRead(const HelpFiles& files, const QByteArray& xml) {
    files.write(QStringLiteral("uhtoc.xml"), xml);
    try {
        XmlDocument::LoadXml(files.file(QStringLiteral("uhtoc.xml")));
        return true;
    } catch (const XmlError&) {
        return false;
    }
}

// The names on the way to a page, the page's own last.
QStringList wayTo(const XmlDocument& toc, const QString& source) {
    const ContentsPlace place = contentsPlace(toc.DocumentElement(), source);
    QStringList names;
    for (const XmlNode* chapter : place.chapters)
        names += chapter->GetAttribute(u"name");
    return names + QStringList(place.page ? place.page->GetAttribute(u"source") : QStringLiteral("-"));
}

TEST(BookTest, RowsCountChaptersAndPagesApartAndPassOverAnythingElse) {
    const HelpFiles files;
    const XmlDocument toc = contents(files,
                                     "<page name='A'/><note/><chapter name='B'><page name='C'/></chapter>"
                                     "<page/><CHAPTER name='D'/>text");
    const auto rows = contentsRows(toc.DocumentElement(), QStringLiteral("helpbook"));
    EXPECT_EQ(paths(rows), (QStringList{"helpbook/page[1] A", "helpbook/chapter[1] B", "helpbook/page[2] ",
                                        "helpbook/chapter[2] D"}));
    EXPECT_EQ(paths(contentsRows(*rows[1].node, rows[1].path)), QStringList{"helpbook/chapter[1]/page[1] C"});
}

TEST(BookTest, IndexKeepsTheOrderOfTheFile) {
    const HelpFiles files;
    files.writeIndex("<topic name='z' source='a.htm'/><see/><topic name='a'/>");
    const XmlDocument index = XmlDocument::LoadXml(files.file(QStringLiteral("uhindex.xml")));
    EXPECT_EQ(paths(indexRows(index.DocumentElement())),
              (QStringList{"helpindex/topic[1] z", "helpindex/topic[2] a"}));
}

TEST(BookTest, PlaceOfAPageIsFoundByTheTextsOfTheRows) {
    const HelpFiles files;
    const XmlDocument toc = contents(files,
                                     "<chapter name='In/Out'><chapter name='deep'>"
                                     "<page name='a/b' source='x/ab.htm'/></chapter></chapter>"
                                     "<page name='twin' source='first.htm'/>"
                                     "<page name='Twin' source='second.htm'/>"
                                     "<page name='spaced' source='a%20b.htm'/>"
                                     "<extra name='?'><page name='hidden' source='hidden.htm'/></extra>");
    EXPECT_EQ(wayTo(toc, "x/ab.htm"), (QStringList{"In/Out", "deep", "x/ab.htm"}));
    EXPECT_EQ(wayTo(toc, "second.htm"), QStringList{"first.htm"}) << "the first of one name wins";
    EXPECT_EQ(wayTo(toc, "a b.htm"), QStringList{"-"}) << "only the very source matches";
    EXPECT_EQ(wayTo(toc, "hidden.htm"), QStringList{"-"}) << "a page without a row";
    EXPECT_EQ(allPages(toc.DocumentElement()).size(), 5U) << "but the search knows it";
}

TEST(BookTest, MalformedXmlIsAnErrorAndNeverMore) {
    const HelpFiles files;
    const QByteArray whole = "<?xml version='1.0'?><helpbook><page name='A' source='a.htm'/></helpbook>";
    EXPECT_TRUE(isRead(files, whole));
    EXPECT_TRUE(isRead(files, "<!DOCTYPE helpbook [<!ENTITY me 'us'>]><helpbook name='&me;'/>"));
    for (qsizetype length = 0; length < whole.size(); ++length)
        EXPECT_FALSE(isRead(files, whole.left(length))) << length;
    QByteArray bomb = "<!DOCTYPE b [<!ENTITY a 'aaaaaaaaaa'>";
    for (char c = 'b'; c < 'k'; ++c)
        bomb += QByteArray("<!ENTITY ") + c + " '" +
                QByteArray("&" + QByteArray(1, char(c - 1)) + ";").repeated(10) + "'>";
    EXPECT_FALSE(isRead(files, bomb + "]><b>&j;</b>"));
    EXPECT_FALSE(isRead(files, QByteArray("<a>").repeated(100'000)));
    EXPECT_FALSE(
        isRead(files, QByteArray("<a>") + QByteArray("<b/>").repeated(XmlDocument::NodeLimit) + "</a>"));
    EXPECT_FALSE(isRead(files, QByteArray(1000, '\0')));
}

// clang-format off
TEST(BookTest, SourcesAreOneOfFourThings) {
    const struct { const char* source; SourceKind kind; } Cases[] = {
        {"#here",                    SourceKind::Heading},
        {"#http://a",                SourceKind::Heading},
        {"http://a.example/b",       SourceKind::OutsideAddress},
        {"x://",                     SourceKind::OutsideAddress},
        {"MailTo:a@b",               SourceKind::OutsideAddress},
        {"http://a b",               SourceKind::Path},
        {"mailto:a b",               SourceKind::Path},
        {"a mailto:b",               SourceKind::Path},
        {"amailto:b",                SourceKind::Path},
        {"UHScript:do it",           SourceKind::Script},
        {"see uhscript:x",           SourceKind::Script},
        {"UHScript:http://a",        SourceKind::OutsideAddress},
        {"",                         SourceKind::Path},
        {"a/b.htm",                  SourceKind::Path},
    };
    for (const auto& c : Cases)
        EXPECT_EQ(sourceKind(QString::fromLatin1(c.source)), c.kind) << c.source;
    EXPECT_EQ(scriptOf(QStringLiteral("see uhscript:say%20'a%26b'%2620")), QStringLiteral("say \"a&b\"&20"));
}

TEST(BookTest, PathsStayInTheHelpFolder) {
    const HelpFiles files;
    files.write(QStringLiteral("a b/c&d.htm"), "x");
    EXPECT_EQ(fileOf(QStringLiteral("a%20b/c%26d.htm"), files.HelpFolder), files.file(QStringLiteral("a b/c&d.htm")));
    EXPECT_TRUE(fileOf(QStringLiteral("a b/c&d.htm"), files.HelpFolder).isFile());
    EXPECT_FALSE(fileOf(QStringLiteral("a%20b/none.htm"), files.HelpFolder).Exists());
    const QString nul = QStringLiteral("a b") + QChar(u'\0');
    for (const QString& bad : {QStringLiteral("../x.htm"), QStringLiteral("a b/../../x"), QStringLiteral("/etc/passwd"),
                               QStringLiteral("."), QStringLiteral("a b//c"), QStringLiteral("..\\x"), QString(), nul})
        EXPECT_TRUE(fileOf(bad, files.HelpFolder).isNil()) << bad.toStdString();
    for (const QString& odd : {QStringLiteral("%00"), QString(65536, u'a'), QStringLiteral("a/").repeated(32768) + u'b'})
        EXPECT_FALSE(fileOf(odd, files.HelpFolder).Exists());
    EXPECT_THROW(fileOf(QStringLiteral("a"), FolderItem()), NilObjectError);
    EXPECT_EQ(relativePath(files.file(QStringLiteral("a b/c&d.htm")), files.HelpFolder), QStringLiteral("a b/c&d.htm"));
}

TEST(BookTest, KindsOfPageFiles) {
    const struct { const char* name; PageKind kind; } Cases[] = {
        {"a.htm", PageKind::Html}, {"a.HTML", PageKind::Html}, {"a.htm.bak", PageKind::Html},
        {"a.txt", PageKind::Text}, {"a.txt.png", PageKind::Text}, {"a.png.txt", PageKind::Text},
        {"a.PNG", PageKind::Media}, {"a.png.htm", PageKind::Media}, {"a.mid", PageKind::Media},
        {"a.swf", PageKind::Media}, {"apng", PageKind::None}, {"a.pdf", PageKind::None},
    };
    for (const auto& c : Cases)
        EXPECT_EQ(pageKind(QString::fromLatin1(c.name)), c.kind) << c.name;
}
// clang-format on

TEST(BookTest, PagesAreReadAsTheySay) {
    const HelpFiles files;
    const struct {
        QByteArray bytes;
        const char16_t* text;
    } Cases[] = {
        {"caf\xc3\xa9", u"café"},
        {"<meta charset=\"iso-8859-1\">caf\xe9", u"café"},
        {"<meta http-equiv='Content-Type' content='text/html; charset=windows-1252'>\x80", u"€"},
        {QByteArray("\xff\xfe\xe9\x00", 4), u"é"},
        {"<meta charset=\"x-nonsense\">\xc3\xa9", u"é"},
        {"\xe9 no utf-8", u"\xfffd no utf-8"},
    };
    for (const auto& c : Cases) {
        files.write(QStringLiteral("p.htm"), c.bytes);
        const auto text = readPage(files.file(QStringLiteral("p.htm")));
        ASSERT_TRUE(text);
        EXPECT_TRUE(text->endsWith(QString::fromUtf16(c.text))) << c.bytes.toStdString();
    }
    EXPECT_FALSE(readPage(files.HelpFolder)) << "a folder is no page";
}

}  // namespace
