// Where the facts of a report come from.
#pragma once

#include "Globals.h"
#include "LineRecord.h"
#include "Platform.h"
#include "REALEasyPrefs.h"

SaveFileRequest reportRequest(const Clock& clock);
QByteArray gatherReport(Platform& platform, const Globals& globals, const REALEasyPrefs& prefs,
                        const QString& log, const LineRecord& record);
