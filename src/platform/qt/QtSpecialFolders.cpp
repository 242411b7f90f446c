#include "QtSpecialFolders.h"

#include <QCoreApplication>
#include <QStandardPaths>

SpecialFolders qtSpecialFolders() {
    return {.applicationData = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation),
            .preferences = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation),
            .temporary = QStandardPaths::writableLocation(QStandardPaths::TempLocation),
            .executable = QCoreApplication::applicationDirPath()};
}
