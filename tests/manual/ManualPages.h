// The manual as its files have it. Its pages are well-formed XML, so that they can be read as such.
#pragma once

#include <QDir>
#include <QMap>
#include <QStringList>

struct ManualPage {
    QString error;  // of the reader; empty where the page is well-formed
    QString title;
    QStringList headings;  // of the first level
    QStringList anchors;
    QStringList links;     // href, as they stand
    QStringList pictures;  // src, as they stand
    QStringList quotes;    // words of the program between two values or line ends, letter for letter
};

QDir manualFolder();

// By file name.
QMap<QString, ManualPage> manualPages();

struct BookEntry {
    QString name;
    QString source;
};

struct Book {
    QString error;
    QList<BookEntry> entries;  // pages or topics, in the file's order
    QStringList strangers;     // elements that no such file has
};

Book readBook(const QString& fileName, const QStringList& elements, const QString& entryElement);
