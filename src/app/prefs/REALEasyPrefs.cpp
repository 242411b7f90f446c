#include "REALEasyPrefs.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStringDecoder>

#include "FileWriter.h"
#include "Text.h"

namespace {

QString booleanText(bool value) {
    return value ? QStringLiteral("true") : QStringLiteral("false");
}

// A file of an older system, or one that was damaged, may not be UTF-8.
bool isUtf8(const QByteArray& bytes) {
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString text = decoder(bytes);
    Q_UNUSED(text)
    return !decoder.hasError();
}

// No program that writes lines of text leaves them: the disk or another program did.
bool isDamaged(const QByteArray& bytes) {
    return bytes.contains('\0');
}

}  // namespace

void REALEasyPrefs::InitPrefFile(const QString& fileName) {
    QDir().mkpath(m_folder);
    prefFile = m_folder + u'/' + fileName;
    QFile file(prefFile);
    if (!file.exists()) {
        file.open(QIODevice::WriteOnly);
        return;
    }
    // A pipe in its place would be waited for.
    if (!QFileInfo(prefFile).isFile() || !file.open(QIODevice::ReadOnly))
        return;
    QByteArray bytes = file.read(FileLimit);
    if (!file.atEnd())
        bytes.truncate(bytes.lastIndexOf('\n') + 1);
    if (isDamaged(bytes))
        keepAside();
    readEntries(isUtf8(bytes) ? QString::fromUtf8(bytes) : QString::fromLatin1(bytes));
}

// What can be read of it is used; on quitting another file takes its place.
void REALEasyPrefs::keepAside() const {
    const QString date = QFileInfo(prefFile).lastModified().toString(QStringLiteral("yyyyMMddTHHmmss"));
    QFile::copy(prefFile, prefFile + QStringLiteral(".damaged-") + date);
}

void REALEasyPrefs::readEntries(const QString& text) {
    QString lines = text;
    lines.replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace(u'\r', u'\n');
    if (lines.endsWith(u'\n'))
        lines.chop(1);
    if (lines.isEmpty())
        return;
    const QStringList entries = lines.split(u'\n');
    for (qsizetype i = 0; i < entries.size(); i += 2) {
        prefNames += entries[i];
        prefItems += entries.value(i + 1);
    }
}

QStringList REALEasyPrefs::lines() const {
    QStringList lines;
    for (qsizetype i = 1; i < prefNames.size(); ++i)
        lines += prefNames[i] + QStringLiteral(" = ") + prefItems[i];
    return lines;
}

qsizetype REALEasyPrefs::indexOf(const QString& name) const {
    for (qsizetype i = 1; i < prefNames.size(); ++i)
        if (Text::equal(prefNames[i], name))
            return i;
    return 0;
}

QString REALEasyPrefs::GetPrefString(const QString& name, const QString& otherwise) const {
    const qsizetype index = indexOf(name);
    return index > 0 ? prefItems[index] : otherwise;
}

std::int32_t REALEasyPrefs::GetPrefNumber(const QString& name, std::int32_t otherwise) const {
    return Text::IntVal(GetPrefString(name, Text::Str(otherwise)));
}

bool REALEasyPrefs::GetPrefBoolean(const QString& name, bool otherwise) const {
    return Text::equal(GetPrefString(name, booleanText(otherwise)), QStringLiteral("true"));
}

void REALEasyPrefs::SetPrefString(const QString& name, const QString& value) {
    const qsizetype index = indexOf(name);
    if (index > 0) {
        prefItems[index] = Text::onOneLine(value);
    } else {
        prefNames += name;
        prefItems += Text::onOneLine(value);
    }
}

void REALEasyPrefs::SetPrefNumber(const QString& name, std::int32_t value) {
    SetPrefString(name, Text::Str(value));
}

void REALEasyPrefs::SetPrefBoolean(const QString& name, bool value) {
    SetPrefString(name, booleanText(value));
}

void REALEasyPrefs::WritePrefsFile() const {
    QString lines;
    for (qsizetype i = 1; i < prefNames.size(); ++i)
        lines += prefNames[i] + u'\n' + prefItems[i] + u'\n';
    QString untold;
    writeFile(prefFile, lines.toUtf8(), untold);
}
