#include "HelpSource.h"

#include <QStringList>

#include "Text.h"

namespace {

const QString ScriptMark = QStringLiteral("UHScript:");

bool contains(QStringView text, QStringView part) {
    return Text::InStr(text, part) > 0;
}

bool startsAsMail(QStringView text) {
    return text.startsWith(u"mailto:", Qt::CaseInsensitive);
}

QString withoutEscapes(QString text) {
    return text.replace(QStringLiteral("%20"), QStringLiteral(" "))
        .replace(QStringLiteral("%26"), QStringLiteral("&"));
}

}  // namespace

SourceKind sourceKind(QStringView source) {
    if (source.startsWith(u'#'))
        return SourceKind::Heading;
    if ((contains(source, u"://") || startsAsMail(source)) && !source.contains(u' '))
        return SourceKind::OutsideAddress;
    return isScript(source) ? SourceKind::Script : SourceKind::Path;
}

bool isScript(QStringView address) {
    return contains(address, ScriptMark);
}

QString scriptOf(const QString& address) {
    const QString script = Text::Mid(address, Text::InStr(address, ScriptMark) + ScriptMark.size());
    return withoutEscapes(script).replace(u'\'', u'"');
}

FolderItem fileOf(const QString& source, const FolderItem& helpFolder) {
    return helpFolder.Descendant(withoutEscapes(source).split(u'/'));
}

QString relativePath(const FolderItem& file, const FolderItem& helpFolder) {
    const QString path = file.AbsolutePath();
    const QString root = helpFolder.AbsolutePath() + u'/';
    return path.startsWith(root) ? path.mid(root.size()) : path;
}

bool isOutsideLink(QStringView url) {
    return contains(url, u"http://") || contains(url, u"https://") || contains(url, u"ftp://") ||
           startsAsMail(url);
}
