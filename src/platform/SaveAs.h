// Saves what the user asked to keep, in a file of his choice.
#pragma once

#include <QByteArray>

#include "Clock.h"
#include "Dialogs.h"

// Asks for the file and writes it: the whole of it, or nothing and a box with the reason.
Task<> saveAs(Dialogs& dialogs, SaveFileRequest request, QByteArray contents);

// The text of an activity log.
Task<> saveLog(Dialogs& dialogs, const Clock& clock, const QString& text);
