// What all of the help system shares.
#pragma once

#include <functional>

#include <QRect>
#include <QString>

#include "Clock.h"
#include "Dialogs.h"
#include "Flows.h"
#include "Task.h"

class UniHelpEngine;

class UniHelpGlobals {
public:
    UniHelpGlobals(Clock& sharedClock, Dialogs& sharedDialogs) : clock(sharedClock), dialogs(sharedDialogs) {}

    // The two error dialogs: they end when the user has closed them.
    Task<> UHError(QString text) const;
    Task<> UHViewerError(int code, const QString& text) const;

    Clock& clock;
    Dialogs& dialogs;

    // The one engine; it enters itself here.
    UniHelpEngine* UniHelp = nullptr;

    // Where the help window last stood; kept while the program runs.
    int UHelpTop = 80;
    int UHelpLeft = 80;
    int UHelpWidth = 900;
    int UHelpHeight = 600;

    // Hooks for the program around the help system.
    std::function<void()> UHClosed = [] {};
    std::function<void()> UHPrint = [] {};
    std::function<bool(bool)> UHViewerStatus = [](bool available) { return available; };
    // Hands an address to the system's browser or mail program.
    std::function<void(const QString& url)> ShowURL = [](const QString&) {};
    // Gets what no handler of the help system catches, such as malformed XML.
    std::function<void(std::exception_ptr)> onError = [](const std::exception_ptr&) {};
    Flows::ErrorHandler errorHandler() {
        return [this](const std::exception_ptr& error) { onError(error); };
    }
};
