// The page view's library, which the program does not link: it is looked for when help is first opened.
#pragma once

#include "HTMLViewer.h"

// Looks for it beside the program, then in the plug-in folder of the package.
class HTMLViewerPlugin final : public HTMLViewerLibrary {
public:
    bool isAvailable() override;
    std::unique_ptr<HTMLViewer> make(const FolderItem& helpFolder, QWidget* parent) override;

private:
    HTMLViewerLibrary* m_library = nullptr;
};
