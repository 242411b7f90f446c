#include "HTMLViewerPlugin.h"

#include <QCoreApplication>
#include <QPluginLoader>

#include "HTMLViewerInterface.h"

namespace {

const QString FileName = QStringLiteral("vlx_help_webengine");

HTMLViewerLibrary* load(const QString& folder) {
    QPluginLoader loader(folder + u'/' + FileName);
    return qobject_cast<HTMLViewerLibrary*>(loader.instance());
}

}  // namespace

// Asked again at each opening while it is missing: the user may install it meanwhile.
bool HTMLViewerPlugin::isAvailable() {
    const QString program = QCoreApplication::applicationDirPath();
    if (!m_library)
        m_library = load(program);
    if (!m_library)
        m_library = load(program + u'/' + QStringLiteral(VLX_PLUGIN_FOLDER));
    return m_library && m_library->isAvailable();
}

std::unique_ptr<HTMLViewer> HTMLViewerPlugin::make(const FolderItem& helpFolder, QWidget* parent) {
    return m_library->make(helpFolder, parent);
}
