#include "BookUrl.h"

#include <QDir>
#include <QFileInfo>
#include <QWebEngineUrlScheme>

#include "HelpSource.h"

namespace {

const QString Host = QStringLiteral("book");

bool isBookUrl(const QUrl& url) {
    return url.scheme() == QLatin1String(BookUrl::Scheme) && url.host() == Host;
}

bool liesIn(const QString& path, const FolderItem& folder) {
    const QString root = QFileInfo(folder.AbsolutePath()).canonicalFilePath();
    return !root.isEmpty() && QFileInfo(path).canonicalFilePath().startsWith(root + u'/');
}

// Where in the book an address points to; it need not exist.
FolderItem itemOf(const QUrl& url, const FolderItem& helpFolder) {
    if (!isBookUrl(url))
        return {};
    return helpFolder.Descendant(url.path(QUrl::FullyDecoded).mid(1).split(u'/'));
}

}  // namespace

void BookUrl::registerScheme() {
    QWebEngineUrlScheme scheme{QByteArray(Scheme)};
    scheme.setSyntax(QWebEngineUrlScheme::Syntax::Host);
    QWebEngineUrlScheme::registerScheme(scheme);
}

QUrl BookUrl::of(const FolderItem& file, const FolderItem& helpFolder) {
    QUrl url;
    url.setScheme(QLatin1String(Scheme));
    url.setHost(Host);
    url.setPath(u'/' + relativePath(file, helpFolder), QUrl::DecodedMode);
    return url;
}

FolderItem BookUrl::file(const QUrl& url, const FolderItem& helpFolder) {
    const FolderItem item = itemOf(url, helpFolder);
    return item.isFile() && liesIn(item.AbsolutePath(), helpFolder) ? item : FolderItem();
}

QString BookUrl::told(const QUrl& url, const FolderItem& helpFolder) {
    const FolderItem item = itemOf(url, helpFolder);
    return item.isNil() ? url.toString(QUrl::FullyEncoded)
                        : QUrl::fromLocalFile(item.AbsolutePath()).toString();
}
