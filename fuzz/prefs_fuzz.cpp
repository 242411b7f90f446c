// Preferences files of any content: read without harm, and what is written reads back the same.

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "REALEasyPrefs.h"
#include "Require.h"

namespace {

const QString FileName = QStringLiteral("VLXUtilPrefs");

QByteArray contents(const QString& path) {
    QFile file(path);
    require(file.open(QIODevice::ReadOnly));
    return file.readAll();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const QTemporaryDir folder;
    const QString path = folder.filePath(FileName);
    QFile file(path);
    require(file.open(QIODevice::WriteOnly));
    file.write(reinterpret_cast<const char*>(data), static_cast<qint64>(size));
    file.close();

    REALEasyPrefs prefs(folder.path());
    prefs.InitPrefFile(FileName);
    const QString value = QStringLiteral("a\r\nb\nc");
    prefs.SetPrefString(QStringLiteral("Macro1Button"), value);
    prefs.SetPrefNumber(QStringLiteral("Port"), prefs.GetPrefNumber(QStringLiteral("Port"), 7));
    prefs.WritePrefsFile();
    const QByteArray written = contents(path);

    REALEasyPrefs again(folder.path());
    again.InitPrefFile(FileName);
    require(again.GetPrefString(QStringLiteral("macro1button"), {}) == QStringLiteral("a b c"));
    require(again.GetPrefNumber(QStringLiteral("Port"), 1) == prefs.GetPrefNumber(QStringLiteral("Port"), 2));
    again.WritePrefsFile();
    require(contents(path) == written || written.size() > REALEasyPrefs::FileLimit);
    return 0;
}
