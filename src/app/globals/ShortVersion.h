// The application's short version text, as the window title, the log and the files tell it.
#pragma once

#include <QString>

inline QString ShortVersion() {
    return QStringLiteral(VLX_SHORT_VERSION);
}
