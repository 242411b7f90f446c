#include "HelpPage.h"

#include <algorithm>

#include <QFile>
#include <QRegularExpression>
#include <QStringDecoder>

#include "Text.h"

namespace {

constexpr qint64 SizeLimit = 256 << 20;

bool isMedia(const QString& name) {
    static const QRegularExpression Patterns[] = {
        QRegularExpression(QStringLiteral("\\.jpeg|\\.jpg|\\.gif|\\.png"),
                           QRegularExpression::CaseInsensitiveOption),
        QRegularExpression(QStringLiteral("\\.mov|\\.mpeg|\\.mpg|\\.avi|\\.swf"),
                           QRegularExpression::CaseInsensitiveOption),
        QRegularExpression(QStringLiteral("\\.mp3|\\.mp2|\\.aif|\\.wav|\\.mid"),
                           QRegularExpression::CaseInsensitiveOption)};
    return std::any_of(std::begin(Patterns), std::end(Patterns),
                       [&name](const QRegularExpression& pattern) { return pattern.match(name).hasMatch(); });
}

QString decoded(const QByteArray& bytes) {
    QStringDecoder asTold = QStringDecoder::decoderForHtml(bytes);
    return asTold.isValid() ? asTold(bytes) : QString::fromUtf8(bytes);
}

}  // namespace

PageKind pageKind(const QString& name) {
    if (Text::InStr(name, u".txt") > 0)
        return PageKind::Text;
    if (isMedia(name))
        return PageKind::Media;
    return Text::InStr(name, u".htm") > 0 ? PageKind::Html : PageKind::None;
}

bool isPage(const QString& name) {
    return Text::InStr(name, u".htm") > 0 || Text::InStr(name, u".txt") > 0;
}

std::optional<QString> readPage(const FolderItem& item) {
    QFile file(item.AbsolutePath());
    if (!item.isFile() || file.size() > SizeLimit || !file.open(QIODevice::ReadOnly))
        return std::nullopt;
    return decoded(file.readAll());
}
