#include "Report.h"

namespace {

// Every line a comment, so that no value can be taken for an event.
QByteArray section(const QString& title, const QStringList& lines) {
    QByteArray text = "#\n# " + title.toUtf8() + '\n';
    for (const QString& line : lines)
        text += "#   " + line.toUtf8() + '\n';
    return text;
}

QStringList withoutPasswords(const QStringList& preferences) {
    QStringList lines;
    for (const QString& line : preferences) {
        const QString name = line.section(QStringLiteral(" = "), 0, 0);
        lines +=
            name.contains(u"password", Qt::CaseInsensitive) ? name + QStringLiteral(" = (left out)") : line;
    }
    return lines;
}

QStringList linesOf(const QString& text) {
    QString lines = text;
    lines.replace(u'\r', u'\n');
    return lines.split(u'\n', Qt::SkipEmptyParts);
}

}  // namespace

QByteArray reportText(const ReportFacts& facts, const QString& homeFolder) {
    QByteArray head = "# VLX Utility report, " + facts.time.toUtf8() + '\n' +
                      section(QStringLiteral("Versions"), facts.versions) +
                      section(QStringLiteral("Port"), facts.port) +
                      section(QStringLiteral("Preferences"), withoutPasswords(facts.preferences)) +
                      section(QStringLiteral("Log"), linesOf(facts.log)) + "#\n";
    if (homeFolder.size() > 1)
        head.replace(homeFolder.toUtf8(), "~");
    return head + facts.transcript;
}
