// The program's own folders, below the system's folder for application data.
#pragma once

#include <QString>

#include "Globals.h"
#include "SpecialFolders.h"

namespace ApplicationFolders {

// The folder path with its trailing separator: names of files are joined to it directly.
QString withSeparator(const QString& folder);

// The default firmware folder, whether it exists or not; empty when there is no application data folder.
QString defaultFirmwareFolder(const SpecialFolders& folders);

// Makes the default firmware folder as far as a first start does, and gives the folder that was reached,
// with its separator: on the very first start that is the maker's folder itself. Empty when there is no
// application data folder.
QString makeFirmwareFolder(const SpecialFolders& folders);

// At start-up: makes the folders for firmware, configurations and fault tables. Those that the preferences
// left empty take these paths.
void makeAll(const SpecialFolders& folders, Globals& globals);

}  // namespace ApplicationFolders
