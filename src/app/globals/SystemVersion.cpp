#include "SystemVersion.h"

#include <QSysInfo>

namespace {

// "Debian GNU/Linux 12 (bookworm)" carries its release name between parentheses.
QString releaseName(const QString& prettyName) {
    const qsizetype open = prettyName.lastIndexOf(u'(');
    const qsizetype close = prettyName.lastIndexOf(u')');
    return open >= 0 && close > open ? prettyName.mid(open + 1, close - open - 1) : QString();
}

QString systemName(const QString& prettyName) {
    const QString version = QSysInfo::productVersion();
    const qsizetype versionAt = prettyName.indexOf(u' ' + version);
    return versionAt > 0 ? prettyName.left(versionAt) : QSysInfo::productType();
}

}  // namespace

void GetOSVersion(Globals& globals) {
    const QString prettyName = QSysInfo::prettyProductName();
    globals.SetStatusText(
        QStringLiteral("%1 Version %2 (%3)")
            .arg(systemName(prettyName), QSysInfo::productVersion(), releaseName(prettyName)),
        false);
}
