// What a server may name.
#pragma once

#include <QStringView>

namespace FTPPaths {

// Whether a name is that of a file or folder in its own folder: no separator in it, no control character,
// not empty, not "." or "..".
bool isPlainFileName(QStringView name);

}  // namespace FTPPaths
