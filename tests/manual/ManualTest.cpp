// The manual holds together: every link, picture and entry leads somewhere, and what it quotes is what the
// program says.

#include <gtest/gtest.h>

#include <algorithm>

#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>
#include <QSet>

#include "HelpPage.h"
#include "ManualPages.h"
#include "PlainText.h"

namespace {

QString unescaped(QString literal) {
    literal.replace(QStringLiteral("\\n"), QStringLiteral("\n"));
    literal.replace(QStringLiteral("\\\""), QStringLiteral("\""));
    return literal.replace(QStringLiteral("\\\\"), QStringLiteral("\\"));
}

// One literal a line, as it were: a character that no text has stands between them.
QString literalsOf(const QString& path) {
    static const QRegularExpression seam(QStringLiteral("\"\\s*\\n\\s*\""));
    static const QRegularExpression literal(QStringLiteral("\"((?:[^\"\\\\\\n]|\\\\.)*)\""));
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QString source = QString::fromUtf8(file.readAll()).remove(seam);
    QString texts;
    for (auto found = literal.globalMatch(source); found.hasNext();)
        texts += QChar::Null + unescaped(found.next().captured(1));
    return texts;
}

QString allLiterals() {
    QString texts;
    QDirIterator files(QStringLiteral(VLX_SOURCE_FOLDER), {QStringLiteral("*.cpp"), QStringLiteral("*.h")},
                       QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext())
        texts += literalsOf(files.next());
    return texts;
}

bool isSaidByProgram(QStringView words) {
    static const QString texts = allLiterals();
    return texts.contains(words);
}

const QString StyleSheet = QStringLiteral("manual.css");

class Manual : public testing::Test {
protected:
    // What is wrong, a line each; empty where all is well.
    void complain(const QString& page, const QString& what) {
        m_complaints += page.toStdString() + ": " + what.toStdString() + '\n';
    }

    static QString duplicateIn(QStringList names) {
        std::sort(names.begin(), names.end());
        const auto twice = std::adjacent_find(names.cbegin(), names.cend());
        return twice == names.cend() ? QString() : *twice;
    }

    // A file name counts as written: systems that tell capital and small letters apart read the manual too.
    static bool isFile(const QString& name) {
        static const QSet<QString> names = [] {
            const QDir help = manualFolder();
            QStringList found = help.entryList(QDir::Files);
            for (const QString& picture :
                 QDir(help.filePath(QStringLiteral("pictures"))).entryList(QDir::Files))
                found += QStringLiteral("pictures/") + picture;
            return QSet<QString>(found.cbegin(), found.cend());
        }();
        return names.contains(name);
    }

    bool leadsSomewhere(const QString& from, const QString& link) const {
        const qsizetype hash = link.indexOf(u'#');
        const QString file = hash == 0 ? from : link.left(hash);
        return isFile(file) && (hash < 0 || m_pages[file].anchors.contains(link.mid(hash + 1)));
    }

    // Each page has an entry, and each entry a page and a name of its own.
    void checkBook(const QString& file, const Book& book) {
        if (!book.error.isEmpty())
            complain(file, book.error);
        for (const QString& stranger : book.strangers)
            complain(file, QStringLiteral("unknown element ") + stranger);
        QStringList names;
        QStringList unlisted = m_pages.keys();
        for (const BookEntry& entry : book.entries) {
            names += entry.name.toCaseFolded();
            unlisted.removeAll(entry.source);
            if (entry.name.isEmpty() || !m_pages.contains(entry.source))
                complain(file, QStringLiteral("no page for \"%1\": %2").arg(entry.name, entry.source));
        }
        for (const QString& page : unlisted)
            complain(file, QStringLiteral("no entry for ") + page);
        if (const QString twice = duplicateIn(names); !twice.isEmpty())
            complain(file, QStringLiteral("twice: ") + twice);
    }

    const QMap<QString, ManualPage> m_pages = manualPages();
    std::string m_complaints;
};

TEST_F(Manual, PagesAreWellFormed) {
    EXPECT_GE(m_pages.size(), 20);
    for (const auto& [name, page] : m_pages.asKeyValueRange()) {
        if (!page.error.isEmpty())
            complain(name, page.error);
        if (page.headings != QStringList{page.title} || page.title.isEmpty())
            complain(name, QStringLiteral("title and heading differ"));
        if (!page.links.contains(StyleSheet))
            complain(name, QStringLiteral("no style sheet"));
        if (const QString twice = duplicateIn(page.anchors); !twice.isEmpty())
            complain(name, QStringLiteral("anchor twice: ") + twice);
    }
    EXPECT_EQ(m_complaints, "");
}

TEST_F(Manual, LinksAndPicturesLeadSomewhere) {
    QSet<QString> unused;
    for (const QString& picture : manualFolder().entryList({QStringLiteral("pictures")}, QDir::Dirs))
        for (const QString& file : QDir(manualFolder().filePath(picture)).entryList(QDir::Files))
            unused += picture + u'/' + file;
    EXPECT_FALSE(unused.isEmpty());
    for (const auto& [name, page] : m_pages.asKeyValueRange()) {
        for (const QString& link : page.links)
            if (!leadsSomewhere(name, link))
                complain(name, QStringLiteral("link to nowhere: ") + link);
        for (const QString& picture : page.pictures) {
            if (!isFile(picture))
                complain(name, QStringLiteral("no picture ") + picture);
            unused -= picture;
        }
    }
    for (const QString& picture : std::as_const(unused))
        complain(picture, QStringLiteral("shown nowhere"));
    EXPECT_EQ(m_complaints, "");
}

TEST_F(Manual, ContentsListEachPageOnceByItsTitle) {
    const QString file = QStringLiteral("uhtoc.xml");
    const Book contents =
        readBook(file, {QStringLiteral("helpbook"), QStringLiteral("chapter"), QStringLiteral("page")},
                 QStringLiteral("page"));
    checkBook(file, contents);
    for (const BookEntry& entry : contents.entries)
        if (entry.name != m_pages[entry.source].title)
            complain(entry.source, QStringLiteral("called \"%1\" in the contents").arg(entry.name));
    EXPECT_EQ(m_complaints, "");
}

TEST_F(Manual, IndexLeadsToEachPageAndIsSorted) {
    const QString file = QStringLiteral("uhindex.xml");
    const Book index =
        readBook(file, {QStringLiteral("helpindex"), QStringLiteral("topic")}, QStringLiteral("topic"));
    checkBook(file, index);
    const auto isAfter = [](const BookEntry& left, const BookEntry& right) {
        return left.name.toCaseFolded() > right.name.toCaseFolded();
    };
    const auto unsorted = std::adjacent_find(index.entries.cbegin(), index.entries.cend(), isAfter);
    if (unsorted != index.entries.cend())
        complain(file, QStringLiteral("out of order after ") + unsorted->name);
    EXPECT_EQ(m_complaints, "");
}

// The program opens these by name: the home page, the page of each tab, the place of each fault code.
TEST_F(Manual, HasWhatTheProgramOpens) {
    for (const char* page : {"VLXUtility", "port", "firmware", "operate", "configuration", "tester"})
        EXPECT_TRUE(m_pages.contains(QLatin1String(page) + QStringLiteral(".htm"))) << page;
    const QStringList anchors = m_pages[QStringLiteral("faults.htm")].anchors;
    for (int code = 0; code < 16; ++code)
        EXPECT_TRUE(anchors.contains(QStringLiteral("fault-%1").arg(code, 2, 10, QLatin1Char('0')))) << code;
}

// An owner searches for the words in front of him.
TEST_F(Manual, QuotesTheProgramLetterForLetter) {
    int count = 0;
    for (const auto& [name, page] : m_pages.asKeyValueRange()) {
        const QString searched = StripHTML(readPage(FolderItem(manualFolder().filePath(name))).value());
        for (const QString& quote : page.quotes) {
            ++count;
            if (!isSaidByProgram(quote))
                complain(name, QStringLiteral("the program does not say: ") + quote);
            if (!searched.contains(quote))
                complain(name, QStringLiteral("a search does not find: ") + quote);
        }
    }
    EXPECT_GT(count, 100);
    EXPECT_EQ(m_complaints, "");
}

}  // namespace
