#include "FTPPaths.h"

#include <algorithm>

namespace {

bool isForbidden(QChar c) {
#ifdef Q_OS_WIN
    if (c == u'\\' || c == u':')
        return true;
#endif
    return c == u'/' || c.unicode() < 0x20 || c.unicode() == 0x7F;
}

}  // namespace

bool FTPPaths::isPlainFileName(QStringView name) {
    return !name.isEmpty() && name != u"." && name != u".." && std::ranges::none_of(name, isForbidden);
}

QString FTPPaths::child(const QString& directory, const QString& name) {
    return directory.endsWith(u'/') ? directory + name : directory + u'/' + name;
}

QString FTPPaths::withoutTrailingSlash(QString directory) {
    while (directory.size() > 1 && directory.endsWith(u'/'))
        directory.chop(1);
    return directory;
}
