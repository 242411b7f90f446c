// The plug-in's door.
#pragma once

#include <QObject>

#include "HTMLViewerInterface.h"

class WebEngineLibrary final : public QObject, public HTMLViewerLibrary {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID VLX_HTML_VIEWER_LIBRARY)
    Q_INTERFACES(HTMLViewerLibrary)

public:
    bool isAvailable() override;
    std::unique_ptr<HTMLViewer> make(const FolderItem& helpFolder, QWidget* parent) override;

private:
    void prepare();

    bool m_isPrepared = false;
};
