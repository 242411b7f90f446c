#include "FirmwareServer.h"

#include <QUrl>

#include "FTPHost.h"

namespace {

constexpr int UsualPort = 21;

QUrl ftpUrl(const QString& address) {
    return QUrl(QStringLiteral("ftp://") + address, QUrl::StrictMode);
}

}  // namespace

FirmwareServer FirmwareServer::makers() {
    return at(FTPHostName(), FTPAnonymousPassword());
}

FirmwareServer FirmwareServer::at(const QString& address, const QString& password) {
    const QUrl url = ftpUrl(address);
    const QString host = url.isValid() ? url.host() : address;
    return {host, url.port(UsualPort), QStringLiteral("anonymous"), password};
}

QString FirmwareServer::address() const {
    QString text = host.contains(u':') ? u'[' + host + u']' : host;
    if (port != UsualPort)
        text += u':' + QString::number(port);
    return text;
}

QString FirmwareServer::url(const QString& folder, const QString& name) const {
    return QStringLiteral("ftp://") + address() + folder + inUrl(name);
}

QString FirmwareServer::inUrl(const QString& name) {
    return QString::fromLatin1(name.toLatin1().toPercentEncoding());
}
