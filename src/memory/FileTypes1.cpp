#include "FileTypes1.h"

#ifdef Q_OS_MACOS
#include <sys/xattr.h>

#include <QFile>

void FileTypes1::setCodes(const QString& path, const QByteArray& creatorCode, const QByteArray& typeCode) {
    // The Finder's record of a file: 32 bytes that begin with the two codes.
    const QByteArray record = (typeCode + creatorCode).leftJustified(32, '\0');
    setxattr(QFile::encodeName(path).constData(), "com.apple.FinderInfo", record.constData(),
             static_cast<size_t>(record.size()), 0, 0);
}
#else
void FileTypes1::setCodes(const QString&, const QByteArray&, const QByteArray&) {}
#endif
