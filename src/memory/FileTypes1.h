// The kinds of file that the memory tools read and write.
#pragma once

#include <QByteArray>
#include <QString>

#include "Dialogs.h"

namespace FileTypes1 {

// What a file dialog shows, and the four-character codes by which one platform's file system tells a kind.
struct Kind {
    FileType type;
    QByteArray typeCode;
    QByteArray creatorCode;
};

inline const Kind VLXConfigFile{{QStringLiteral("VLX Configuration File"), QStringLiteral(".VLXConfig")},
                                QByteArrayLiteral("TEXT"),
                                QByteArrayLiteral("VXU1")};
inline const Kind VLXFaultTableFile{
    {QStringLiteral("VLX Fault Table File"), QStringLiteral(".VLXFaultTable")},
    QByteArrayLiteral("TEXT"),
    QByteArrayLiteral("VXU1")};
// Files that the utility of another platform wrote. They differ from the former by their codes alone, so a
// dialog that goes by the extension shows them already.
inline const Kind WindowsVLXConfig{{QStringLiteral("Windows VLX Config File"), VLXConfigFile.type.extension},
                                   QByteArrayLiteral("DUMB"),
                                   QByteArrayLiteral("????")};
inline const Kind WindowsVLXFaultTableFile{
    {QStringLiteral("Windows VLX Fault Table File"), VLXFaultTableFile.type.extension},
    QByteArrayLiteral("DUMB"),
    QByteArrayLiteral("????")};

// Marks a file with its codes where the file system has them; elsewhere the extension alone tells the kind.
void setCodes(const QString& path, const QByteArray& creatorCode, const QByteArray& typeCode);

}  // namespace FileTypes1
