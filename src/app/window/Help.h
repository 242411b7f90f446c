// The utility's help: its book, its window, and which page belongs to which tab.
#pragma once

#include <optional>

#include <QString>

#include "Flows.h"
#include "HTMLViewerPlugin.h"
#include "Platform.h"
#include "UniHelpEngine.h"
#include "UniHelpGlobals.h"

class Help {
public:
    Help(Platform& platform, const Flows::ErrorHandler& onError);

    // Opens the book on its home page, or on the page of a tab.
    void _HelpVLXUtilHelp_Action() { show(QStringLiteral("VLXUtility.htm")); }
    void showTab(int tab) { show(pageOfTab(tab)); }
    // The text on a fault, or on the fault table.
    void showFault(std::optional<int> code);
    void close() { UniHelp.closeWindow(); }

    static QString pageOfTab(int tab);

private:
    void show(const QString& page, const QString& anchor = {});

    UniHelpGlobals m_globals;
    HTMLViewerPlugin m_pageViews;
    UniHelpEngine UniHelp;
};
