// The program as the main window's handlers see it: built by App, which owns all of it.
#pragma once

#include "FirmwareFolder.h"
#include "Flows.h"
#include "LineOwner.h"
#include "MemoryTools.h"
#include "OperatingControls.h"
#include "PortSelection.h"
#include "Retrieval.h"
#include "SendFirmware.h"
#include "StatusMonitor.h"
#include "VersionCheck.h"
#include "WindowState.h"

struct Services {
    Platform& platform;
    Globals& globals;
    WindowState& window;
    LineOwner& line;
    Flows& flows;
    PortSelection& ports;
    VersionCheck& versions;
    StatusMonitor& monitor;
    OperatingControls& controls;
    FirmwareFolder& firmwareFolder;
    SendFirmware& sendFirmware;
    Retrieval& retrieval;
    MemoryTools& memoryTools;
};
