// The operations asked of the toolkit, as one bundle that `App` hands to whoever needs them.
#pragma once

#include "Clock.h"
#include "Dialogs.h"
#include "SerialPort.h"
#include "SleepInhibitor.h"
#include "SpecialFolders.h"

struct Platform {
    Clock& clock;
    SerialPort& Serial1;
    PortList& ports;
    Dialogs& dialogs;
    SpecialFolders folders;
    // None: the system sleeps when it likes.
    SleepInhibitor* sleep = nullptr;
};
