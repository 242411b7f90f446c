#include "REALEasyPrefs.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include "Text.h"

namespace {

QString booleanText(bool value) {
    return value ? QStringLiteral("true") : QStringLiteral("false");
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
    readEntries(QString::fromUtf8(bytes));
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
    QSaveFile file(prefFile);
    if (!file.open(QIODevice::WriteOnly))
        return;
    for (qsizetype i = 1; i < prefNames.size(); ++i)
        file.write((prefNames[i] + u'\n' + prefItems[i] + u'\n').toUtf8());
    file.commit();
}
