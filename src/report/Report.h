// What an owner sends when something is odd: one text file, to be read before it is sent.
#pragma once

#include <QByteArray>
#include <QStringList>

struct ReportFacts {
    QString time;
    QStringList versions;
    QStringList port;
    QStringList preferences;  // "name = value"
    QString log;
    QByteArray transcript;
};

// The transcript with all else before it as comments: the whole file can be played back. Values of
// preferences that a name calls a password are left out, and the home folder is written as "~".
QByteArray reportText(const ReportFacts& facts, const QString& homeFolder);
