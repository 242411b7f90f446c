// The page view of the help window: what is asked of it and what it tells.
#pragma once

#include <functional>
#include <memory>

#include <QString>

#include "FolderItem.h"

class QWidget;

// Shows pages of one help folder and lets nothing else in.
class HTMLViewer {
public:
    HTMLViewer() = default;
    HTMLViewer(const HTMLViewer&) = delete;
    HTMLViewer& operator=(const HTMLViewer&) = delete;
    virtual ~HTMLViewer() = default;

    // The control that shows the page; gone with this object.
    virtual QWidget* control() = 0;

    // At an anchor of the page, or at its beginning without one.
    virtual void LoadPage(const FolderItem& file, const QString& anchor) = 0;
    // Shows `html` in place of what `base` holds; relative links and pictures resolve from there.
    virtual void LoadPage(const QString& html, const FolderItem& base) = 0;

    // Asked before a load, whoever starts it; true cancels it. Files of the help folder have "file:" urls.
    std::function<bool(const QString& url)> CancelLoad;
    // The page has come whole.
    std::function<void(const QString& url)> DocumentComplete;
    // For a link under the pointer or the focus: words with the address between double quotes. Empty when
    // there is none any more.
    std::function<void(const QString& text)> StatusChanged;
    std::function<void(int code, const QString& text)> Error;
};

// Where page views come from; asked when help is first opened.
class HTMLViewerLibrary {
public:
    HTMLViewerLibrary() = default;
    HTMLViewerLibrary(const HTMLViewerLibrary&) = delete;
    HTMLViewerLibrary& operator=(const HTMLViewerLibrary&) = delete;
    virtual ~HTMLViewerLibrary() = default;

    virtual bool isAvailable() = 0;
    // Precondition: isAvailable(). The control becomes a child of `parent`.
    virtual std::unique_ptr<HTMLViewer> make(const FolderItem& helpFolder, QWidget* parent) = 0;
};
