#include "SystemVersion.h"

#include <QSysInfo>

#include "ShortVersion.h"
#include "Text.h"

QString systemVersionLine(const QString& prettyName, const QString& type, const QString& version) {
    // "Debian GNU/Linux 12 (bookworm)": system, version, and the release's name between parentheses. Some
    // systems put the name before and the version between the parentheses: "macOS Ventura (13.2)".
    const QString before = Text::Trim(Text::NthField(prettyName, u"(", 1));
    const QString between = Text::NthField(Text::NthField(prettyName, u"(", 2), u")", 1);
    QString system = type;
    QString name = between;
    if (!version.isEmpty() && between == version) {
        system = Text::NthField(before, u" ", 1);
        name = Text::Mid(before, system.size() + 2);
    } else if (!version.isEmpty() && before.endsWith(u' ' + version)) {
        system = before.chopped(version.size() + 1);
    }
    return QStringLiteral("%1 Version %2 (%3)").arg(system, version, name);
}

void GetOSVersion(Globals& globals) {
    globals.SetStatusText(
        systemVersionLine(QSysInfo::prettyProductName(), QSysInfo::productType(), QSysInfo::productVersion()),
        false);
}

void logVersions(Globals& globals) {
    globals.SetStatusText(QStringLiteral("Tessarin VLX Utility for OS X Version ") + ShortVersion(), false);
    GetOSVersion(globals);
}
