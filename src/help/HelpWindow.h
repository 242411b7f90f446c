// The help window as the engine knows it.
#pragma once

#include <functional>

#include <QRect>
#include <QString>

#include "FolderItem.h"
#include "Task.h"

// What the engine copies into each window.
struct HelpSettings {
    bool UseFullTextSearch = true;
    bool ShowSearchHighlights = true;
    bool ShowPrintButton = false;
    bool UseVirtualVolume = false;
    // Names of pictures.
    QString IconCategory;
    QString IconCategoryOpen;
    QString IconPage;
    QString FontName;
    QString AltFont;
    int FontSize = 0;
    QString PrintSettings;
    FolderItem HelpFolder;
    QString title;
    FolderItem HomePage;
};

class HelpWindow {
public:
    HelpWindow() = default;
    HelpWindow(const HelpWindow&) = delete;
    HelpWindow& operator=(const HelpWindow&) = delete;
    virtual ~HelpWindow() = default;

    // Reads the book, once; false (StartError) when it cannot be opened, and the user has been told.
    virtual Task<bool> CustomizeHelp(HelpSettings settings) = 0;
    virtual void Show() = 0;
    // At its beginning without an anchor.
    virtual void OpenPage(const FolderItem& page, const QString& anchor) = 0;
    virtual void OpenSearch(const QString& text) = 0;
    virtual void setRectangle(const QRect& rectangle) = 0;
    virtual void Close() = 0;

    // The window has closed, whoever closed it.
    std::function<void()> Closed;
};
