// What one line of a directory listing tells.
#pragma once

#include <cstdint>

#include <QString>

// A line that cannot be read leaves the name empty and both flags false. A link sets both flags.
struct FTPParsedDirListLineClass {
    QString Name;
    bool IsDir = false;
    bool IsFile = false;
    std::int32_t Size = 0;  // bytes
    QString ModTime;        // as listed: a time, or a year
    QString ModDate;        // as listed
    QString Permissions;    // nine characters
};

// Reads a listing in the Unix, the bracketed or the NT form, told apart by content.
FTPParsedDirListLineClass ParseDirListLine(const QString& line);

// Replaces every run of each of the characters by one of it.
QString Squeeze(const QString& text, const QString& characters);
