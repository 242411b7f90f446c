// Which firmware image is to be sent.
#pragma once

#include <QString>

struct VersionedFilename {
    // File name of the newest local image, "-" when there is none.
    QString m_mstrPath = QStringLiteral("-");
    // A copy of it, taken when a load is prepared.
    QString m_strpath;
};
