#include "ProgramTexts.h"

#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>

namespace {

QString unescaped(QString literal) {
    literal.replace(QStringLiteral("\\n"), QStringLiteral("\n"));
    literal.replace(QStringLiteral("\\\""), QStringLiteral("\""));
    return literal.replace(QStringLiteral("\\\\"), QStringLiteral("\\"));
}

// One literal a line, as it were: a character that no text has stands between them.
QString literalsOf(const QString& path) {
    static const QRegularExpression seam(QStringLiteral("\"\\s*\\n\\s*\""));
    static const QRegularExpression literal(QStringLiteral("\"((?:[^\"\\\\\\n]|\\\\.)*)\""));
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QString source = QString::fromUtf8(file.readAll()).remove(seam);
    QString texts;
    for (auto found = literal.globalMatch(source); found.hasNext();)
        texts += QChar::Null + unescaped(found.next().captured(1));
    return texts;
}

QString allLiterals() {
    QString texts;
    QDirIterator files(QStringLiteral(VLX_SOURCE_FOLDER), {QStringLiteral("*.cpp"), QStringLiteral("*.h")},
                       QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext())
        texts += literalsOf(files.next());
    return texts;
}

}  // namespace

bool isSaidByProgram(QStringView words) {
    static const QString texts = allLiterals();
    return texts.contains(words);
}
