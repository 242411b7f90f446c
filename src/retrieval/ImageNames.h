// How the names of firmware images are read, in the local folder and in a server's list alike.
#pragma once

#include <cstdint>

#include <QString>
#include <QStringList>

#include "Clock.h"
#include "Task.h"

// An image is called "VLX720FP", the version digits, ".hex", in any letter case.
namespace ImageNames {

inline const QString Prefix = QStringLiteral("VLX720FP");
inline const QString Extension = QStringLiteral(".hex");

// The version text of the newest image among `names`, and its index; empty, and the index untouched, when
// there is none. Of equal versions the first counts; a version of 0 never does.
QString newest(const QString& prefix, const QString& extension, const QStringList& names,
               std::int32_t& index);

// The images among `names` that have a version, the newest first; those of one version in their order.
QStringList newestFirst(const QString& prefix, const QString& extension, const QStringList& names);

// The version that an image's name tells, as it is shown: "01.05".
QString shownVersion(const QString& name);

// The name of the newest image in `list` if its version is above `baseline`, else empty.
QString newerThan(double baseline, const QString& prefix, const QString& extension, const QStringList& list);

// The lines of a server's name list, trimmed, that may stand for a file in the local folder: a line with a
// separator or a control character in it, or too long for a name, is no name.
Task<QStringList> inListing(Clock& clock, QString listing);

}  // namespace ImageNames
