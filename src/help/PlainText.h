// A page reduced to plain text.
#pragma once

#include <QString>

#include "TagFinder.h"

// Reduces a page bit by bit, so that a long one can be searched while the window lives: the head goes, every
// tag becomes a blank, and the entities of a fixed table become their characters.
class PlainText {
public:
    explicit PlainText(QString html);
    PlainText(const PlainText&) = delete;
    PlainText& operator=(const PlainText&) = delete;

    // Goes on for about `count` characters of the page; false when nothing was left.
    bool advance(qsizetype count);
    // What has come out so far.
    const QString& text() const { return m_text; }

private:
    QString m_html;
    QStringView m_body;
    TagFinder m_tags;
    qsizetype m_at = 0;
    QString m_text;
};

// A whole page reduced to plain text.
QString StripHTML(const QString& html);
