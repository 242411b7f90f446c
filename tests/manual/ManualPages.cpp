#include "ManualPages.h"

#include <QFile>
#include <QXmlStreamReader>

namespace {

// Quotation marks round a value belong to the sentence, not to the words that are looked for.
void addQuote(QStringList& quotes, const QString& words) {
    QString bare = words.trimmed();
    while (bare.startsWith(u'"'))
        bare.remove(0, 1);
    while (bare.endsWith(u'"'))
        bare.chop(1);
    if (!bare.trimmed().isEmpty())
        quotes += bare.trimmed();
}

// Reads to the end of a quote, in which "var" is a value of the moment and "br" the end of a line.
void readQuote(QXmlStreamReader& xml, QStringList& quotes) {
    QString words;
    int values = 0;
    while (!xml.atEnd()) {
        xml.readNext();
        if (xml.isCharacters()) {
            if (values == 0)
                words += xml.text();
            continue;
        }
        if (xml.isStartElement() && xml.name() == u"var")
            ++values;
        else if (xml.isEndElement() && xml.name() == u"var")
            --values;
        else if (xml.isEndElement() && xml.name() == u"samp")
            break;
        addQuote(quotes, words);
        words.clear();
    }
    addQuote(quotes, words);
}

void readElement(QXmlStreamReader& xml, ManualPage& page) {
    const QXmlStreamAttributes attributes = xml.attributes();
    for (const QXmlStreamAttribute& attribute : attributes) {
        if (attribute.name() == u"id")
            page.anchors += attribute.value().toString();
        else if (attribute.name() == u"href")
            page.links += attribute.value().toString();
        else if (attribute.name() == u"src")
            page.pictures += attribute.value().toString();
    }
    if (xml.name() == u"title")
        page.title = xml.readElementText();
    else if (xml.name() == u"h1")
        page.headings += xml.readElementText();
    else if (xml.name() == u"samp")
        readQuote(xml, page.quotes);
}

ManualPage readPage(const QString& path) {
    ManualPage page;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        page.error = file.errorString();
    QXmlStreamReader xml(&file);
    while (!xml.atEnd())
        if (xml.readNext() == QXmlStreamReader::StartElement)
            readElement(xml, page);
    if (xml.hasError())
        page.error = QStringLiteral("line %1: %2").arg(xml.lineNumber()).arg(xml.errorString());
    return page;
}

}  // namespace

QDir manualFolder() {
    return QDir(QStringLiteral(VLX_SOURCE_FOLDER "/resources/Help"));
}

QMap<QString, ManualPage> manualPages() {
    QMap<QString, ManualPage> pages;
    const QStringList names = manualFolder().entryList({QStringLiteral("*.htm")}, QDir::Files);
    for (const QString& name : names)
        pages[name] = readPage(manualFolder().filePath(name));
    return pages;
}

Book readBook(const QString& fileName, const QStringList& elements, const QString& entryElement) {
    Book book;
    QFile file(manualFolder().filePath(fileName));
    if (!file.open(QIODevice::ReadOnly))
        book.error = file.errorString();
    QXmlStreamReader xml(&file);
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (!elements.contains(xml.name()))
            book.strangers += xml.name().toString();
        if (xml.name() == entryElement)
            book.entries += {xml.attributes().value(QStringLiteral("name")).toString(),
                             xml.attributes().value(QStringLiteral("source")).toString()};
    }
    if (xml.hasError())
        book.error = QStringLiteral("line %1: %2").arg(xml.lineNumber()).arg(xml.errorString());
    return book;
}
