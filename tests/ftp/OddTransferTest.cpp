// Transfers that come in an odd order, cut, or into a folder that resists.
#include <unistd.h>

#include "DiskLimit.h"
#include "OddServer.h"

namespace {

using testing::StartsWith;

// ---- The order of things

TEST_F(OddServer, Says125InPlaceOf150) {
    logon();
    server.intercept = [](int, QByteArray& reply) { reply.replace("150 ", "125 "); };
    EXPECT_EQ(bench.runWith({QStringLiteral("a.txt")}, &FTPSessionClass::GetSingleFile),
              "ok: File Transfer Complete.");
    EXPECT_THAT(bench.runWith({QStringLiteral("b c.txt")}, &FTPSessionClass::RestartGetSingleFile),
                StartsWith("error: Error: 125 Here it comes."));
}

TEST_F(OddServer, TellsASizeInThreeFields) {
    logon();
    answerTo("SIZE", "213 is 4\r\n");
    session.RestartByteCount = 0;
    EXPECT_EQ(bench.runWith({QStringLiteral("up.txt")}, &FTPSessionClass::RestartPutSingleFile),
              "ok: File Transfer Complete.");
    EXPECT_TRUE(server.commands.contains(QStringLiteral("REST 0")));
}

// A listing longer than one read, whose files stand at its two ends.
TEST_F(OddServer, ListsMoreThanOneReadHoldsInAWalk) {
    logon();
    const QByteArray ignored = "crw-r--r-- 1 a b 3 Mar 09 14:05 a device that a walk passes over\r\n";
    server.fixedListing = "-rw-r--r-- 1 a b 3 Mar 09 14:05 one.txt\r\n" + ignored.repeated(8000) +
                          "-rw-r--r-- 1 a b 3 Mar 09 14:05 two.txt\r\n";
    EXPECT_EQ(bench.runIn(QStringLiteral("/work/pub"), &FTPSessionClass::GetDir),
              "ok: Directory Transfer Complete.");
    EXPECT_EQ(tree(bench.local.path() + QStringLiteral("/pub")),
              (QStringList{QStringLiteral("one.txt=one"), QStringLiteral("two.txt=two")}));
}

// ---- Lengths

TEST_F(OddServer, TellsALengthThatDecidesWhetherAllCame) {
    logon();
    const std::string ok = "ok: File Transfer Complete.";
    const struct {
        const char* note;
        const char16_t* type;
        std::string report;
        const char* file = "a.txt";
    } rows[] = {{" (5 bytes)", u"I", ok},
                {" (6 bytes)", u"I", "error: Error while receiving the file: 5 of 6 bytes"},
                {" (4 bytes)", u"I", "error: Error while receiving the file: 5 of 4 bytes"},
                {" for (9 bytes) (5 bytes)", u"I", ok, "(9 bytes)"},
                {" (6 bytes)", u"A", ok},  // other line ends
                {" (some bytes)", u"I", ok}};
    for (const auto& [note, type, report, file] : rows) {
        writeFile(root.path() + QStringLiteral("/work/") + QLatin1String(file), "alpha");
        server.transferNote = note;
        session.FTPTransferType = QString::fromUtf16(type);
        EXPECT_EQ(bench.runWith({QString::fromLatin1(file)}, &FTPSessionClass::GetSingleFile), report);
    }
}

struct Restart {
    const char* name;
    const char* local;  // what lies here; the server has "part and the rest" or what it sends
    const char* sent;   // by a server that passes over the offset; none: it heeds it
    const char* note;
    const char* report;  // and what lies here afterwards
    const char* result;
};

class RestartedDownload : public OddServer, public testing::WithParamInterface<Restart> {};

TEST_P(RestartedDownload, IsTakenUpOrLeftAsItWas) {
    const Restart& restart = GetParam();
    writeFile(root.path() + QStringLiteral("/work/rest"), "abababab");
    writeFile(bench.local.path() + QStringLiteral("/rest"), restart.local);
    logon();
    server.transferNote = restart.note;
    if (restart.sent)
        answerTo("REST", restart.sent);
    EXPECT_THAT(bench.runWith({QStringLiteral("rest")}, &FTPSessionClass::RestartGetSingleFile),
                StartsWith(restart.report));
    EXPECT_EQ(localFile("rest"), restart.result);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Restarts, RestartedDownload, testing::Values(
    Restart{"Heeded",              "aba",  nullptr,          "",           "ok: ",                                                 "abababab"},
    Restart{"Refused",             "ab",   "502 No.\r\n",    "",           "error: Error: 502 No.",                                "ab"},
    Restart{"PassedOver",          "ab",   "350 Well.\r\n",  "",           "error: Error: The server has passed over the restart", "ab"},
    Restart{"PassedOverTelling",   "ab",   "350 Well.\r\n",  " (8 bytes)", "error: Error: The server has passed over the restart", "ab"},
    // What is left is like the beginning: the length that the server tells decides.
    Restart{"LikeTheBeginning",    "ab",   nullptr,          "",           "ok: ",                                                 "abababab"},
    Restart{"RestTold",            "ab",   nullptr,          " (6 bytes)", "ok: ",                                                 "abababab"},
    Restart{"WholeTold",           "ab",   nullptr,          " (8 bytes)", "ok: ",                                                 "abababab"},
    Restart{"TooLittleTold",       "aba",  nullptr,          " (7 bytes)", "error: Error while receiving the file: 5 of 7 bytes",  "abababab"}),
    [](const auto& tested) { return std::string(tested.param.name); });
// clang-format on

TEST_F(OddServer, HasNoSizeToSettleADoubtfulRestart) {
    writeFile(root.path() + QStringLiteral("/work/rest"), "abababab");
    writeFile(bench.local.path() + QStringLiteral("/rest"), "ab");
    logon();
    answerTo("SIZE", "502 No.\r\n");
    EXPECT_THAT(bench.runWith({QStringLiteral("rest")}, &FTPSessionClass::RestartGetSingleFile),
                StartsWith("error: Error: The server has passed over the restart"));
    EXPECT_EQ(localFile("rest"), "ab");
}

TEST_F(OddServer, IsSentOnWithinTheFileAndTwoGiB) {
    logon();
    QFile large(bench.local.path() + QStringLiteral("/up.txt"));
    EXPECT_TRUE(large.open(QIODevice::WriteOnly) && large.resize((qint64{1} << 31) + 8));
    large.close();
    server.timing.end = DataTiming::End::Reset;  // the sparse file itself is not wanted
    for (const auto& [size, report] :
         {std::pair{"2147483648", "error: Error: 213 2147483648"}, {"2147483647", "error: Error"}}) {
        answerTo("SIZE", "213 " + QByteArray(size) + "\r\n");
        EXPECT_THAT(bench.runWith({QStringLiteral("up.txt")}, &FTPSessionClass::RestartPutSingleFile),
                    StartsWith(report));
    }
    EXPECT_EQ(server.commands.filter(QStringLiteral("REST")), QStringList("REST 2147483647"));
}

TEST_F(OddServer, HasMoreThanTheFileThatIsSentOn) {
    logon();
    answerTo("SIZE", "213 18\r\n");
    EXPECT_THAT(bench.runWith({QStringLiteral("up.txt")}, &FTPSessionClass::RestartPutSingleFile),
                StartsWith("error: Error while sending the file: the server has more"));
}

TEST_F(OddServer, IsAskedToRestartBehindTwoGiB) {
    logon();
    QFile large(bench.local.path() + QStringLiteral("/a.txt"));
    EXPECT_TRUE(large.open(QIODevice::WriteOnly) && large.resize(qint64{1} << 31));
    EXPECT_EQ(bench.runWith({QStringLiteral("a.txt")}, &FTPSessionClass::RestartGetSingleFile),
              "error: Error writing local file: a.txt");
    EXPECT_TRUE(large.resize((qint64{1} << 31) - 1));
    answerTo("REST", "550 Enough seen.\r\n");
    bench.runWith({QStringLiteral("a.txt")}, &FTPSessionClass::RestartGetSingleFile);
    EXPECT_TRUE(server.commands.contains(QStringLiteral("REST 2147483647")));
}

// ---- Local files

TEST_F(OddServer, RefusesAFileThatIsHereAlready) {
    logon();
    writeFile(bench.local.path() + QStringLiteral("/none"), "precious");
    EXPECT_THAT(bench.runWith({QStringLiteral("none")}, &FTPSessionClass::GetSingleFile),
                StartsWith("error: Error: 550 "));
    EXPECT_EQ(localFile("none"), "precious");
}

TEST_F(OddServer, IsGivenNamesThatItsEncodingLacks) {
    logon();
    for (const QString& name : {QStringLiteral("\u03a9.txt"), QStringLiteral("\u0416.txt")}) {
        writeFile(bench.local.path() + u'/' + name, "greek");
        EXPECT_EQ(bench.runWith({name}, &FTPSessionClass::PutSingleFile),
                  "error: Error: A command cannot hold a character that the server's encoding lacks.");
    }
    EXPECT_EQ(server.commands.filter(QStringLiteral("STOR")), QStringList());
}

TEST_F(OddServer, IsSentATreeWithAFolderCalledUpAndLinks) {
    logon();
    const QString top = bench.local.path() + QStringLiteral("/odd/");
    for (const char* name : {"UP/one.txt", "UP/up/two.txt", "after.txt"})
        writeFile(top + QString::fromLatin1(name), name);
    QFile::link(top, top + QStringLiteral("loop"));
    QFile::link(top + QStringLiteral("nothing"), top + QStringLiteral("broken"));
    ASSERT_EQ(::symlink("after.txt", QFile::encodeName(top).append("no\xFFtext").constData()), 0);
    session.LocalDirectory = top;
    EXPECT_EQ(bench.run(&FTPSessionClass::PutDir), "ok: Directory Transfer Complete.");
    EXPECT_EQ(tree(root.path() + QStringLiteral("/work/UP")),
              (QStringList{QStringLiteral("one.txt=UP/one.txt"), QStringLiteral("up/"),
                           QStringLiteral("up/two.txt=UP/up/two.txt")}));
    EXPECT_EQ(readFile(root.path() + QStringLiteral("/work/after.txt")), "after.txt");
    EXPECT_TRUE(
        bench.status->statuses.contains(QStringLiteral("Skipped a link to a folder: %1loop").arg(top)));
    EXPECT_TRUE(bench.status->statuses.contains(QStringLiteral("Skipped a broken link: %1broken").arg(top)));
    EXPECT_TRUE(bench.status->statuses.contains(
        QStringLiteral("Skipped a name that is no text: %1no\xFFFDtext").arg(top)));
}

TEST_F(OddServer, HoldsNamesThatDifferInLetterCaseAlone) {
    const QString top = root.path() + QStringLiteral("/work/pub/");
    for (const char* name : {"A.txt", "a.txt", "D/x", "d/y"})
        writeFile(top + QString::fromLatin1(name), name);
    logon();
    EXPECT_EQ(bench.runIn(QStringLiteral("/work/pub/"), &FTPSessionClass::GetDir),
              "ok: Directory Transfer Complete.");
    EXPECT_EQ(tree(bench.local.path() + QStringLiteral("/pub")), tree(top));
    session.LocalDirectory = bench.local.path() + QStringLiteral("/all/");
    QDir().mkpath(session.LocalDirectory);
    EXPECT_EQ(bench.runIn(QStringLiteral("/"), &FTPSessionClass::GetDir), "ok: Directory Transfer Complete.");
    EXPECT_EQ(tree(bench.local.path() + QStringLiteral("/all")), tree(root.path()));
    EXPECT_EQ(bench.runIn(QStringLiteral("work"), &FTPSessionClass::GetDir),
              "error: Error: The path of a directory tree must be absolute: work");
    EXPECT_EQ(bench.dialogs.shown, QStringList());
}

// ---- Local trouble

TEST_F(OddServer, IsNotSentAFileThatIsMissing) {
    logon();
    EXPECT_EQ(bench.runWith({QStringLiteral("none")}, &FTPSessionClass::PutSingleFile),
              "error: Cannot Find File: none");
    EXPECT_EQ(server.commands.filter(QStringLiteral("STOR")), QStringList());
    bench.renew();
    bench.connectTo(server.port());
    bench.session->LocalDirectory += QStringLiteral("none/");
    EXPECT_THAT(bench.run(&FTPSessionClass::StartPutDir), StartsWith("error: Cannot find this path: "));
    EXPECT_EQ(bench.session->CommandSocket, nullptr);
}

TEST_F(OddServer, SendsMoreThanTheDiskTakes) {
    logon();
    writeFile(root.path() + QStringLiteral("/work/big"), QByteArray(2 * 1024 * 1024, 'x'));
    {
        const DiskLimit full(64 * 1024);
        EXPECT_EQ(bench.runWith({QStringLiteral("big")}, &FTPSessionClass::GetSingleFile),
                  "error: Error writing local file: big");
        settle();
    }
    EXPECT_EQ(bench.status->ends.size(), 1) << "one error, and no success behind it";
    EXPECT_FALSE(session.ConnectionTimer->IsOn());
}

// Files of the system tell a size that they do not hold.
TEST_F(OddServer, IsSentLessThanTheSizeOfTheFile) {
    logon();
    session.LocalDirectory = QStringLiteral("/sys/class/net/lo/");
    const QByteArray content = readFile(session.LocalDirectory + QStringLiteral("mtu"));
    EXPECT_EQ(bench.runWith({QStringLiteral("mtu")}, &FTPSessionClass::PutSingleFile),
              "ok: File Transfer Complete.");
    EXPECT_EQ(readFile(root.path() + QStringLiteral("/work/mtu")), content);
}

TEST_F(OddServer, IsAskedForAListingInTheMiddleOfADownload) {
    logon();
    server.timing.end = DataTiming::End::Open;
    session.Files = QStringList(QStringLiteral("a.txt"));
    session.GetSingleFile();
    EXPECT_TRUE(waitUntil([&] { return localFile("a.txt") == "alpha"; }));
    server.timing = {};
    EXPECT_EQ(bench.run(&FTPSessionClass::GetDirList), "ok: The file list has been transferred.");
    EXPECT_THAT(session.DirectoryFileList.toStdString(), StartsWith("-rw-r--r--"));
}

}  // namespace
