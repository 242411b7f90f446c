// The platform's own folders. Absolute paths without a trailing separator; empty when there is none.
#pragma once

#include <QString>

struct SpecialFolders {
    QString applicationData;
    QString preferences;
    QString temporary;
    // Where the program itself lies, with the folder "Help" beside it.
    QString executable;
};
