// The listing parser, the directory entries of a walk, and the small texts.
#include <gtest/gtest.h>

#include "FTPDirectoryClass.h"
#include "FTPParsedDirListLineClass.h"
#include "FTPPaths.h"
#include "SessionBench.h"

namespace {

struct Line {
    const char* name;
    const char* line;
    const char* expected;  // kind|name|size|date|time|permissions
};

class ListingLine : public testing::TestWithParam<Line> {};

TEST_P(ListingLine, IsRead) {
    const FTPParsedDirListLineClass entry = ParseDirListLine(QString::fromLatin1(GetParam().line));
    const QString kind =
        QString::fromLatin1(entry.IsDir ? "dir" : "") + QString::fromLatin1(entry.IsFile ? "file" : "");
    const QString read = QStringList{kind,          entry.Name,    QString::number(entry.Size),
                                     entry.ModDate, entry.ModTime, entry.Permissions}
                             .join(u'|');
    EXPECT_EQ(read.toStdString(), GetParam().expected);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Lines, ListingLine, testing::Values(
    Line{"File",             "-rw-r--r--   1 ftp      ftp          1024 Mar 09 14:05 a.txt",    "file|a.txt|1024|Mar 09|14:05|rw-r--r--"},
    Line{"Folder",           "drwxr-xr-x   2 0        0            4096 Nov 21 14:10 sub dir",  "dir|sub dir|4096|Nov 21|14:10|rwxr-xr-x"},
    Line{"LinkSetsBoth",     "lrwxrwxrwx 1 a b 3 Jan 1 10:00 here -> there",                    "dirfile|here -> there|3|Jan 1|10:00|rwxrwxrwx"},
    Line{"YearStaysAYear",   "-rw-r--r-- 1 a b 5 Feb 28 2003 old",                              "file|old|5|Feb 28|2003|rw-r--r--"},
    Line{"RunsOfBlanksShrink", "-rw-r--r-- 1 a b 5 Feb 28 2003 two  blanks",                    "file|two blanks|5|Feb 28|2003|rw-r--r--"},
    Line{"MonthInTheName",   "-rw-r--r-- 1 a b 5 Feb 28 2003 May report.txt",                   "file|May report.txt|5|Feb 28|2003|rw-r--r--"},
    Line{"OwnerCalledMar",   "-rw-r--r-- 1 Mar b 5 Feb 28 2003 x",                              "file|Feb 28 2003 x|0|Mar b|5|rw-r--r--"},
    Line{"NoGroup",          "-rw-r--r-- 1 owner 77 Jun 3 09:00 x",                             "file|x|77|Jun 3|09:00|rw-r--r--"},
    Line{"SizePast31Bits",   "-rw-r--r-- 1 a b 99999999999 Jun 3 09:00 x",                      "file|x|2147483647|Jun 3|09:00|rw-r--r--"},
    Line{"Device",           "crw-r--r-- 1 a b 5 Jun 3 09:00 tty",                              "|tty|5|Jun 3|09:00|rw-r--r--"},
    Line{"MonthInAnyCase",   "-rw-r--r-- 1 a b 5 JUN 3 09:00 x",                                "file|x|5|JUN 3|09:00|rw-r--r--"},
    Line{"TrailingBlank",    "-rw-r--r-- 1 a b 5 Jun 3 09:00 x ",                               "file|x |5|Jun 3|09:00|rw-r--r--"},
    Line{"NoTime",           "-rw-r--r-- 1 a b 5 Jun 3 ",                                       "file||5|Jun  |00:00|rw-r--r--"},
    Line{"NoName",           "-rw-r--r-- 1 a b 5 Jun 3 09:00",                                  "file||5|Jun 3|09:00|rw-r--r--"},
    Line{"Total",            "total 12",                                                        "||0|||"},
    Line{"Empty",            "",                                                                "||0|||"},
    Line{"BlanksOnly",       "        ",                                                        "||0|||"},
    Line{"FourFieldsOfNT",   "02-23-04  09:15AM       <DIR>          pub",                      "||0|||"},
    Line{"UsualNTWithBlank", "02-23-04  09:15AM       <DIR>          my docs",                  "file|docs|0|02-23-04|<DIR>|"},
    Line{"UsualNTTrailing",  "02-23-04  09:15AM       <DIR>          pub ",                     "file||0|02-23-04|<DIR>|"},
    Line{"NTFolder",         "02-23-04 09:15 AM <dir> my docs",                                 "dir|my docs|0|02-23-04|AM|"},
    Line{"NTFile",           "02-23-04 09:15 AM 123 a.txt",                                     "file|a.txt|123|02-23-04|AM|"},
    Line{"MonthFirst",       "Jan 1 10:00 5 x",                                                 "file|x|5|Jan|10:00|"}),
    [](const auto& tested) { return std::string(tested.param.name); });
// clang-format on

TEST(Squeeze, ShrinksRunsOfTheGivenCharactersOnly) {
    EXPECT_EQ(Squeeze(QStringLiteral("  a   b--cc "), QStringLiteral(" -")).toStdString(), " a b-cc ");
    EXPECT_EQ(Squeeze(QStringLiteral("aabb"), QString()).toStdString(), "aabb");
}

TEST(DirectoryEntry, GivesFilesFromTheLastAndKeepsThemUntilDeleted) {
    FTPDirectoryClass entry(QStringLiteral("/top"), QString());
    EXPECT_EQ(entry.GetFileCount(), -1);
    for (const char* name : {"a", "b", "a"})
        entry.AddFile(QString::fromLatin1(name));
    EXPECT_EQ(entry.GetNextFileName(), u"a");
    entry.DeleteFile(QStringLiteral("A"));  // the first that is equal
    EXPECT_EQ(entry.GetFileCount(), 1);
    EXPECT_EQ(entry.GetNextFileName(), u"a");
    entry.DeleteFile(QStringLiteral("a"));
    EXPECT_EQ(entry.GetNextFileName(), u"b");
}

TEST(ServerName, StaysInItsFolder) {
    using namespace std::string_view_literals;
    for (const auto name : {u"VLX720FP0123.hex"sv, u"a b"sv, u"caf\u00e9 \u0085"sv, u".profile"sv})
        EXPECT_TRUE(FTPPaths::isPlainFileName(name)) << QStringView(name).toString().toStdString();
    for (const auto name : {u""sv, u"."sv, u".."sv, u"../x"sv, u"/etc/x"sv, u"a/b"sv, u"a\nDELE b"sv,
                            u"a\0b"sv, u"a\u001b[2J"sv, u"a\u007f"sv})
        EXPECT_FALSE(FTPPaths::isPlainFileName(name)) << QStringView(name).toString().toStdString();
}

TEST(FormatBytes, ChangesItsUnitAboveEachLimit) {
    SessionBench<SimClock> bench;
    const std::pair<std::int32_t, const char*> cases[] = {{0, "0 bytes"},      {1024, "1024 bytes"},
                                                          {1025, "1 KB"},      {1048576, "1024 KB"},
                                                          {1048577, "1.0 MB"}, {2147483647, "2048.0 MB"}};
    for (const auto& [count, text] : cases)
        EXPECT_EQ(bench.status->FormatBytes(count).toStdString(), text);
}

TEST(LocalPaths, AreCutAtTheDelimiter) {
    SessionBench<SimClock> bench;
    FTPSessionClass& session = *bench.session;
    EXPECT_EQ(session.GetDirFromPath(QStringLiteral("/a/b/c")), u"/a/b/");
    EXPECT_EQ(session.GetDirFromPath(QStringLiteral("/a/b/")), u"/a/b/");
    EXPECT_EQ(session.GetDirFromPath(QStringLiteral("none")), QString());
    EXPECT_EQ(session.UpOneLocalDirectory(QStringLiteral("/a/b/")), u"/a/");
    EXPECT_EQ(session.UpOneLocalDirectory(QString()), QString());
    EXPECT_EQ(session.GetFileFromPath(QStringLiteral("/pub/x")), u"x");
    session.FileDelimiter = QStringLiteral(":");
    EXPECT_EQ(session.GetDirFromPath(QStringLiteral("Disk:Folder:file")), u"Disk:Folder:");
}

TEST(DataPorts, WrapAroundAtTheEndOfTheRange) {
    SessionBench<SimClock> bench;
    bench.session->SetDataPortRange(5000, 5002);
    EXPECT_GE(bench.session->DataPort, 5000);
    EXPECT_LE(bench.session->DataPort, 5002);
    bench.session->DataPort = 5002;
    bench.session->NextDataPort();
    EXPECT_EQ(bench.session->DataPort, 5000);
}

// What the log shows of a session, and which flags it raises.
TEST(StatusReports, ShowFewLinesWithoutTrace) {
    SimClock clock;
    ScriptedDialogs dialogs(clock);
    Globals globals(clock);
    QStringList log;
    globals.StatusField = [&log](const QString& line) { log += line.mid(9).trimmed(); };
    globals.m_FolderPath = QStringLiteral("/fw/");
    globals.FTPFile = QStringLiteral("x.hex");
    FTPSessionClass session(clock, dialogs, globals);
    FTPStatusClass& status = *session.FTPStatusInstance;

    status.Status_FTP(FTPSessionClass::ConnectingText());
    status.Status_FTP(QStringLiteral("Send UserID"));
    status.Response_FTP(QString());
    status.Response_FTP(QStringLiteral("RETR x.hex"));
    status.Response_FTP(QStringLiteral("RETR y.hex"));
    EXPECT_FALSE(globals.FTPDone);
    status.Successful_FTP(QStringLiteral("The file list has been transferred."));
    EXPECT_TRUE(globals.FTPDone);
    EXPECT_FALSE(globals.FTPError);
    status.Error_FTP(QStringLiteral("Error: 102"));
    EXPECT_TRUE(globals.FTPError);
    status.Successful_FTP(QStringLiteral("Connected to Tessarin server."));
    status.Successful_FTP(QStringLiteral("File Transfer Complete."));
    status.Successful_FTP(QStringLiteral("Logoff Complete."));

    EXPECT_EQ(
        log.join(u'\n').toStdString(),
        FTPSessionClass::ConnectingText().toStdString() +
            "\nCopying files to \"/fw/\"\nConnected to Tessarin server.\nCopied \"x.hex\" from Tessarin\n"
            "Logoff Complete.");
}

}  // namespace
