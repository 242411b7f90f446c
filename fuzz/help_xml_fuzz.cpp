// A contents or index file of any content: an error or a book, and every source of it stays in the folder.

#include <QFile>
#include <QTemporaryDir>

#include "BookContents.h"
#include "Errors.h"
#include "HelpSource.h"
#include "Require.h"

namespace {

void useBook(const XmlDocument& book, const FolderItem& folder) {
    const XmlNode& root = book.DocumentElement();
    contentsRows(root, QStringLiteral("helpbook"));
    indexRows(root);
    for (const XmlNode* page : allPages(root)) {
        const QString source = page->GetAttribute(u"source");
        require(pageWithSource(root, source) != nullptr);
        contentsPlace(root, source);
        if (sourceKind(source) == SourceKind::Script)
            scriptOf(source);
        const FolderItem file = fileOf(source, folder);
        require(file.isNil() || file.AbsolutePath().startsWith(folder.AbsolutePath() + u'/'));
        require(!file.AbsolutePath().contains(QStringLiteral("/../")));
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const QTemporaryDir world;
    const FolderItem folder(world.path());
    const FolderItem item = folder.Child(QStringLiteral("uhtoc.xml"));
    QFile file(item.AbsolutePath());
    require(file.open(QIODevice::WriteOnly));
    file.write(reinterpret_cast<const char*>(data), static_cast<qint64>(size));
    file.close();
    try {
        useBook(XmlDocument::LoadXml(item), folder);
    } catch (const XmlError&) {
        return 0;
    }
    return 0;
}
