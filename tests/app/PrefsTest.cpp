#include "REALEasyPrefs.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

class PrefsTest : public testing::Test {
protected:
    QTemporaryDir m_world{QDir::tempPath() + QStringLiteral("/vlx prefs é XXXXXX")};
    QString m_folder = m_world.filePath(QStringLiteral("config"));
    QString m_path = m_folder + QStringLiteral("/VLXUtilPrefs");

    void give(const QByteArray& contents) {
        QDir().mkpath(m_folder);
        QFile file(m_path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(contents);
    }

    QByteArray written() const {
        QFile file(m_path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }

    REALEasyPrefs opened() const {
        REALEasyPrefs prefs(m_folder);
        prefs.InitPrefFile(QStringLiteral("VLXUtilPrefs"));
        return prefs;
    }
};

TEST_F(PrefsTest, MissingFileIsCreatedAndGivesDefaults) {
    const REALEasyPrefs prefs = opened();
    EXPECT_TRUE(QFile::exists(m_path));
    EXPECT_EQ(prefs.GetPrefNumber(QStringLiteral("Port"), 3), 3);
    EXPECT_EQ(prefs.GetPrefString(QStringLiteral("FolderPath"), QStringLiteral("x")), QStringLiteral("x"));
    EXPECT_TRUE(prefs.GetPrefBoolean(QStringLiteral("Verbose"), true));
}

TEST_F(PrefsTest, ReadsWhatAUserMayHaveLeft) {
    const struct {
        QByteArray contents;
        const char* key;
        const char* expected;
    } rows[] = {
        // clang-format off
        {"port\n2\n",                   "Port",         "2"},
        {"Port\n2\nPORT\n5\n",          "Port",         "2"},
        {"Macro1Button\n\nTab\n4\n",    "Macro1Button", ""},
        {"Macro1Button\n\nTab\n4\n",    "Tab",          "4"},
        {"Port\n2\nTab",                "Tab",          ""},
        {"Port\r\n2\r\nTab\r\n4\r\n",   "Tab",          "4"},
        {"Port\r2\rTab\r4\r",           "Tab",          "4"},
        {"Port\n7",                     "Port",         "7"},
        {"FolderPath\n/h/\xc3\xa9\n",   "FolderPath",   "/h/\xc3\xa9"},
        {"FolderPath\n/h/\xe9\n",       "FolderPath",   "/h/\xc3\xa9"},
        {QByteArray(5000, '\x01') + '\n', "Port",       "default"},
        {QByteArray(300, '\0'),         "Port",         "default"},
        {QByteArray(10 << 20, '\n'), "Port", "default"},
        // clang-format on
    };
    for (const auto& [contents, key, expected] : rows) {
        give(contents);
        EXPECT_EQ(opened().GetPrefString(QString::fromLatin1(key), QStringLiteral("default")),
                  QString::fromUtf8(expected))
            << contents.left(20).toStdString();
    }
}

TEST_F(PrefsTest, NumbersAndBooleansAreLenient) {
    give("Port\nabc\nTab\n 3x\nwinLEFT\n-30000\nBig\n99999999999\nVerbose\nTRUE\nOther\nyes\n");
    const REALEasyPrefs prefs = opened();
    EXPECT_EQ(prefs.GetPrefNumber(QStringLiteral("Port"), 9), 0);
    EXPECT_EQ(prefs.GetPrefNumber(QStringLiteral("Tab"), 9), 3);
    EXPECT_EQ(prefs.GetPrefNumber(QStringLiteral("winLEFT"), 9), -30000);
    EXPECT_EQ(prefs.GetPrefNumber(QStringLiteral("Big"), 9), 2147483647);
    EXPECT_TRUE(prefs.GetPrefBoolean(QStringLiteral("Verbose"), false));
    EXPECT_FALSE(prefs.GetPrefBoolean(QStringLiteral("Other"), true));
}

TEST_F(PrefsTest, WritesOldEntriesFirstInTheirOrderAndNewOnesLast) {
    give("zeta\n1\nPort\n0\n");
    REALEasyPrefs prefs = opened();
    prefs.SetPrefString(QStringLiteral("Macro1Button"), QString());
    prefs.SetPrefNumber(QStringLiteral("PORT"), -5);
    prefs.SetPrefBoolean(QStringLiteral("Verbose"), true);
    prefs.WritePrefsFile();
    EXPECT_EQ(written(), "zeta\n1\nPort\n-5\nMacro1Button\n\nVerbose\ntrue\n");
}

TEST_F(PrefsTest, LineEndsInAValueCannotBreakTheFile) {
    REALEasyPrefs prefs = opened();
    prefs.SetPrefString(QStringLiteral("Macro1Button"), QStringLiteral("a\nb\r\nc\rd"));
    prefs.SetPrefString(QStringLiteral("Macro2Button"), QStringLiteral("e"));
    prefs.WritePrefsFile();
    EXPECT_EQ(opened().GetPrefString(QStringLiteral("Macro1Button"), {}), QStringLiteral("a b c d"));
    EXPECT_EQ(opened().GetPrefString(QStringLiteral("Macro2Button"), {}), QStringLiteral("e"));
}

TEST_F(PrefsTest, DamagedFileIsKeptAsideWithItsDate) {
    const QByteArray damaged = QByteArray("Port\n2\n") + QByteArray(100, '\0') + "\nTab\n3\n";
    give(damaged);
    REALEasyPrefs prefs = opened();
    EXPECT_EQ(prefs.GetPrefNumber(QStringLiteral("Port"), 0), 2);
    prefs.WritePrefsFile();
    const QStringList kept = QDir(m_folder).entryList({QStringLiteral("VLXUtilPrefs.damaged-2*")});
    ASSERT_EQ(kept.size(), 1);
    QFile file(m_folder + u'/' + kept.front());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), damaged);
}

TEST_F(PrefsTest, FolderInPlaceOfTheFileStopsNothing) {
    QDir().mkpath(m_path + QStringLiteral("/inside"));
    REALEasyPrefs prefs = opened();
    EXPECT_EQ(prefs.GetPrefNumber(QStringLiteral("Port"), 1), 1);
    prefs.SetPrefNumber(QStringLiteral("Port"), 2);
    prefs.WritePrefsFile();
    EXPECT_TRUE(QDir(m_path).exists(QStringLiteral("inside")));
}

}  // namespace
