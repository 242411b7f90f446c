#pragma once

#include "SpecialFolders.h"

// The user's folders on this platform. Needs the application object. None of them is made here.
SpecialFolders qtSpecialFolders();
