// The help engine: knows the book and opens the one help window.
#pragma once

#include <functional>
#include <memory>

#include <QString>

#include "Clock.h"
#include "Flows.h"
#include "FolderItem.h"
#include "HelpWindow.h"
#include "SpecialFolders.h"
#include "UniHelpGlobals.h"

class UniHelpEngine {
public:
    using WindowMaker = std::function<std::unique_ptr<HelpWindow>()>;

    // With `useVirtualVolume` the book is unpacked at once from the one file "UniHelpGuide.vv".
    UniHelpEngine(UniHelpGlobals& globals, SpecialFolders folders, WindowMaker makeWindow,
                  bool useVirtualVolume = false);
    UniHelpEngine(const UniHelpEngine&) = delete;
    UniHelpEngine& operator=(const UniHelpEngine&) = delete;

    // Names of pictures.
    QString IconCategory = QStringLiteral("bookblue");
    QString IconCategoryOpen = QStringLiteral("bookblueopen");
    QString IconPage = QStringLiteral("docwhite");
    // Fonts of the list panes; the second is tried when the first is not installed.
    QString FontName = QStringLiteral("Arial");
    QString AltFont = QStringLiteral("Helvetica");
    QString PrintSettings;
    // The file name of the home page inside the help folder.
    QString HomePage = QStringLiteral("VLXUtility.htm");
    QString HelpTitle = QStringLiteral("VLX Utility Help");
    FolderItem HelpFolder;
    bool UseVirtualVolume;
    // True leaves the window where its placement puts it, false gives it the remembered rectangle.
    bool AutoSet = true;
    bool UseFullTextSearch = true;
    bool ShowSearchHighlights = true;
    bool ShowPrintButton = false;
    int FontSize = 11;

    // Opens the help window on a page, at an anchor of it if one is told, or on a search; the window that was
    // open closes. The window comes from the event loop. Throws NilObjectError when there is no HelpFolder.
    void Run(const FolderItem& page, const QString& anchor = {});
    void Run(const QString& text);
    void closeWindow();
    // Gets the text behind "UHScript:" of the sources and links that are followed: a hook for the program
    // around the help system.
    std::function<void(const QString& script)> RunScript = [](const QString&) {};

    Task<> VVInitialize(QString name);
    Task<> VVExtract(FolderItem source, FolderItem target);

private:
    using FirstStep = std::function<void(HelpWindow&)>;

    void openWith(FirstStep firstStep);
    void open();
    Task<> showWindow();
    HelpSettings settings() const;

    UniHelpGlobals& m_globals;
    SpecialFolders m_folders;
    WindowMaker m_makeWindow;
    std::unique_ptr<HelpWindow> m_window;
    // Lets a window that the user closed go from the event loop.
    ClockTimer m_dropping;
    // Opens from the event loop: whoever asks may be a handler of the window that closes for it.
    ClockTimer m_opening;
    FirstStep m_firstStep;
    Flows m_flows;
};
