// Names and paths of a server.
#pragma once

#include <QString>
#include <QStringView>

namespace FTPPaths {

// Whether a name is that of a file or folder in its own folder: no separator in it, no control character,
// not empty, not "." or "..".
bool isPlainFileName(QStringView name);

// On a server: what lies in a directory, and a directory without trailing slashes.
QString child(const QString& directory, const QString& name);
QString withoutTrailingSlash(QString directory);

}  // namespace FTPPaths
