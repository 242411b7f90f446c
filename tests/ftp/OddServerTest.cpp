// Servers that are slow, early, odd, broken or hostile.
#include <array>

#include <QHostInfo>
#include <QRegularExpression>

#include <gmock/gmock.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include "DiskLimit.h"
#include "Operations.h"
#include "ScriptedServer.h"

namespace {

using testing::HasSubstr;
using testing::StartsWith;

class OddServer : public testing::Test {
protected:
    OddServer() {
        prepareServer(root.path());
        prepareLocal(bench.local.path());
        bench.connectTo(server.port());
    }

    void logon() {
        logOnTo(bench);
        bench.status->ends.clear();
    }
    // The server answers `verb` its own way.
    void answerTo(const char* verb, const QByteArray& text) {
        server.answer = [verb = QString::fromLatin1(verb),
                         text](const QString& command) -> std::optional<QByteArray> {
            if (command.section(u' ', 0, 0) == verb)
                return text;
            return std::nullopt;
        };
    }
    void greetWith(const QByteArray& greeting) {
        server.intercept = [greeting](int number, QByteArray& reply) {
            if (number == 0)
                reply = greeting;
        };
    }
    QByteArray localFile(const char* name) {
        return readFile(bench.local.path() + u'/' + QString::fromLatin1(name));
    }

    QTemporaryDir root;
    ScriptedServer server{root.path()};
    SessionBench<SimClock> bench;
    FTPSessionClass& session = *bench.session;
};

// ---- Replies

TEST_F(OddServer, GreetsInManyLines) {
    greetWith(
        "220-Welcome to Microsoft\r\n still welcome\r\nbare words\r\n\r\n220-and more\r\n220 Ready\r\n");
    logon();
    EXPECT_EQ(server.commands.filter(QStringLiteral("USER")).size(), 1);
    EXPECT_TRUE(bench.status->responses.contains(QStringLiteral(" still welcome")));
    EXPECT_FALSE(session.NT) << "only the last line of the greeting counts";
}

TEST_F(OddServer, GreetsWith530AndNamesItsMaker) {
    greetWith("530 Microsoft FTP\r\n");
    EXPECT_EQ(bench.run(&FTPSessionClass::Logon), "ok: Connected to Tessarin server.");
    EXPECT_TRUE(session.NT);
}

TEST_F(OddServer, GreetsWithGarbage) {
    greetWith(QByteArray("\x00\xff\x80garbage\r\n", 12));
    EXPECT_THAT(bench.run(&FTPSessionClass::Logon), StartsWith("error: Error: "));
    EXPECT_EQ(server.commands, QStringList());
}

TEST_F(OddServer, AsksForNoPassword) {
    answerTo("USER", "230 In already.\r\n");
    EXPECT_EQ(bench.run(&FTPSessionClass::Logon), "error: Error: 230 In already.\n");
    bench.renew();
    bench.connectTo(server.port());
    bench.session->AddFileName(QStringLiteral("a.txt"));
    EXPECT_EQ(bench.runIn(QStringLiteral("/work"), &FTPSessionClass::StartGetFile),
              "ok: File Transfer Complete.");
}

TEST_F(OddServer, SendsAThreeCharacterReply) {
    logon();
    // The gate of ChangeDir passes over it, that of GetWorkingDir does not.
    answerTo("CWD", "250\r\n");
    session.ServerDirectory = QStringLiteral("/work/pub");
    session.ChangeDir();
    EXPECT_TRUE(waitUntil([&] { return server.commands.constLast().startsWith(u"CWD"); }));
    settle();
    EXPECT_EQ(bench.status->ends.size(), 0);
    answerTo("PWD", "257\r\n");
    EXPECT_EQ(bench.run(&FTPSessionClass::GetWorkingDir), "ok: The working directory has been transferred.");
}

TEST_F(OddServer, AnswersAbortWithAPlain226) {
    logon();
    answerTo("ABOR", "226 Transfer complete.\r\n");
    session.AbortTransfer();
    EXPECT_TRUE(waitUntil(
        [&] { return bench.status->responses.contains(QStringLiteral("226 Transfer complete.")); }));
    settle();
    EXPECT_EQ(bench.status->ends.size(), 0) << "nothing is reported";
    EXPECT_FALSE(session.ConnectionTimer->IsOn());
}

TEST_F(OddServer, RefusesADirectCommandWithACodeBelow400) {
    logon();
    answerTo("FEAT", "350 More?\r\n");
    EXPECT_EQ(bench.run([](auto& s) { s.DirectCommand(QStringLiteral("FEAT")); }),
              "error: Error: 350 More?\n");
    EXPECT_EQ(bench.run(&FTPSessionClass::GetSystemInfo), "ok: System information received.");
}

TEST_F(OddServer, SaysGoodbyeToAnIdleSession) {
    logon();
    bench.run(&FTPSessionClass::GetSystemInfo);
    server.send("421 Too long idle.\r\n");
    EXPECT_TRUE(waitUntil([&] { return bench.status->ends.size() == 2; }));
    EXPECT_EQ(bench.status->ends.constLast().toStdString(), "error: Error: 421 Too long idle.\n");
    server.send(ScriptedServer::Hang);
    EXPECT_TRUE(waitUntil([&] { return !session.CommandSocket->IsConnected(); }));
    EXPECT_EQ(bench.run(&FTPSessionClass::GetWorkingDir), "error: Connection Lost.");
}

TEST_F(OddServer, IsNotThere) {
    EXPECT_EQ(bench.run(&FTPSessionClass::GetWorkingDir), "error: Data Socket is no longer active.");
    QTcpServer taken;
    taken.listen(QHostAddress::LocalHost);
    bench.connectTo(taken.serverPort());
    taken.close();
    EXPECT_EQ(bench.run(&FTPSessionClass::Logon), "error: Error: 0");
}

// ---- IPv6

class IPv6Server : public testing::Test {
protected:
    void begin(const QString& host) {
        prepareServer(root.path());
        prepareLocal(bench.local.path());
        bench.connectTo(server.port());
        bench.session->ServerAddress = host;
    }
    static bool isLocalhost() {
        return QHostInfo::fromName(QStringLiteral("localhost"))
            .addresses()
            .contains(QHostAddress(QHostAddress::LocalHostIPv6));
    }

    QTemporaryDir root;
    ScriptedServer server{root.path(), QHostAddress::LocalHostIPv6};
    SessionBench<SimClock> bench;
};

TEST_F(IPv6Server, IsAskedInExtendedForms) {
    begin(QStringLiteral("::1"));
    logOnTo(bench);
    EXPECT_EQ(bench.run(&FTPSessionClass::GetDirList), "ok: The file list has been transferred.");
    EXPECT_TRUE(bench.session->DirectoryFileList.contains(u"a.txt"));
    EXPECT_EQ(bench.runIn(QStringLiteral("/work/pub"), &FTPSessionClass::GetDir),
              "ok: Directory Transfer Complete.");
    bench.session->PassiveMode = false;
    EXPECT_EQ(bench.runIn(QStringLiteral("/work/pub"), &FTPSessionClass::DeleteDir),
              "ok: The directory has been deleted.");
    EXPECT_EQ(server.commands.filter(QStringLiteral("EPRT")).value(0).toStdString(),
              QStringLiteral("EPRT |2|::1|%1|").arg(bench.session->DataPort - 2).toStdString());
    EXPECT_EQ(server.commands.filter(QRegularExpression(QStringLiteral("^P(ASV|ORT)"))), QStringList());
}

TEST_F(IPv6Server, IsReachedWhereIPv4AnswersNothing) {
    if (!isLocalhost())
        GTEST_SKIP() << "localhost is no IPv6 name here";
    begin(QStringLiteral("localhost"));
    logOnTo(bench);
    EXPECT_TRUE(bench.session->IsIPv6());
    ScriptedServer other(root.path());
    bench.session->CommandPort = other.port();
    EXPECT_EQ(bench.run(&FTPSessionClass::Logon), "ok: Connected to Tessarin server.");
    EXPECT_FALSE(bench.session->IsIPv6()) << "IPv4 comes first";
}

// Its backlog is full: a caller gets no answer, not even a refusal.
TEST_F(IPv6Server, IsReachedWhereIPv4IsSilent) {
    if (!isLocalhost())
        GTEST_SKIP() << "localhost is no IPv6 name here";
    begin(QStringLiteral("localhost"));
    const int silent = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{.sin_family = AF_INET,
                        .sin_port = htons(static_cast<std::uint16_t>(server.port())),
                        .sin_addr = {htonl(INADDR_LOOPBACK)},
                        .sin_zero = {}};
    ASSERT_EQ(::bind(silent, reinterpret_cast<sockaddr*>(&address), sizeof(address)), 0);
    ::listen(silent, 0);
    std::array<QTcpSocket, 3> crowd;
    for (QTcpSocket& caller : crowd)
        caller.connectToHost(QHostAddress::LocalHost, static_cast<quint16>(server.port()));
    settle(50);
    bench.session->Logon();
    settle(50);
    EXPECT_EQ(server.replies, 0);
    bench.clock.advance(SSLSocket::Patience);
    EXPECT_TRUE(waitUntil([&] { return bench.status->ends.size() == 1; }));
    EXPECT_EQ(bench.status->ends.constLast().toStdString(), "ok: Connected to Tessarin server.");
    ::close(silent);
}

TEST_F(IPv6Server, OffersNoUsablePort) {
    for (const char* reply : {"502 Not known.", "227 Passive (127,0,0,1,4,5)", "229 (|||0|)",
                              "229 (|||70000|)", "229 (||5|)", "229 ()"}) {
        begin(QStringLiteral("::1"));
        server.answer = nullptr;
        logOnTo(bench);
        server.answer = [reply](const QString& command) -> std::optional<QByteArray> {
            return command == u"EPSV" ? std::optional(QByteArray(reply) + "\r\n") : std::nullopt;
        };
        const bool isRefusal = reply[2] != '9';
        EXPECT_EQ(bench.run(&FTPSessionClass::GetDirList),
                  isRefusal ? std::string("error: Error: The server refuses EPSV, and there is no other "
                                          "passive mode over IPv6: ") +
                                  reply
                            : std::string("error: Error: ") + reply + "\n");
        EXPECT_EQ(server.data(), nullptr);
    }
}

// ---- Encryption

TEST_F(OddServer, OffersNoEncryption) {
    session.FTPS = true;
    EXPECT_EQ(bench.run(&FTPSessionClass::Logon), "error: Error: 502 Not implemented.\r");
    EXPECT_EQ(server.commands, QStringList(QStringLiteral("AUTH TLS"))) << "no fall-back to the clear";
}

TEST_F(OddServer, StallsInTheHandshake) {
    session.FTPS = true;
    // The second line may not pass for an answer under encryption.
    answerTo("AUTH", "234 Go on.\r\n200 PBSZ.\r\n");
    session.Logon();
    EXPECT_TRUE(waitUntil([&] { return bench.status->responses.contains(QStringLiteral("234 Go on.")); }));
    settle();
    EXPECT_EQ(bench.status->ends.size(), 0);
    bench.clock.advance(std::chrono::seconds(20));
    EXPECT_EQ(bench.status->ends.join(u'|').toStdString(),
              "error: Error: The connection timed out. Ending session.");
    EXPECT_EQ(server.commands, QStringList(QStringLiteral("AUTH TLS")));
}

// ---- Single steps, without a server

TEST(SingleStep, GoesOnOrEnds) {
    const struct {
        const char16_t* type;
        const char16_t* step;
        int code;
        const char* nextStep;
        const char* report;
    } rows[] = {
        // clang-format off
        {u"Logon",        u"PROT",    534, "USER",    ""},
        {u"Logon",        u"PROT",    536, "PROT",    "error: Error: x     \r"},
        {u"Logon",        u"nowhere", 200, "nowhere", ""},
        {u"ChangeDir",    u"nowhere", 200, "nowhere", "error: Unknown error during (nowhere)."},
        {u"Logoff",       u"START",   221, "START",   "error: Unknown error during (START)."},
        {u"MakeDir",      u"mkd",     257, "mkd",     "ok: Directory Created."},
        {u"MAKEDIR",      u"MKD",     257, "MKD",     "ok: Directory Created."},
        {u"Dance",        u"START",   200, "START",   ""},
        {u"GetFile",      u"USER",    230, "PASS",    ""},
        {u"PutSingleFile", u"STOR",   250, "STOR",    "ok: File Transfer Complete."},
        {u"GetSingleFile", u"RETR",   250, "RETR",    "error: Error: x     \n"},
        // clang-format on
    };
    for (const auto& [type, step, code, nextStep, report] : rows) {
        SessionBench<SimClock> bench;
        bench.session->FTPSessionType = QString::fromUtf16(type);
        bench.session->CurrentFTPStep = QString::fromUtf16(step);
        bench.session->ParseCommandBuffer(code);
        EXPECT_EQ(bench.session->CurrentFTPStep.toStdString(), nextStep) << code;
        EXPECT_EQ(bench.status->ends.join(u'|').toStdString(), report) << code;
    }
}

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
    session.LocalDirectory = top;
    EXPECT_EQ(bench.run(&FTPSessionClass::PutDir), "ok: Directory Transfer Complete.");
    EXPECT_EQ(tree(root.path() + QStringLiteral("/work/UP")),
              (QStringList{QStringLiteral("one.txt=UP/one.txt"), QStringLiteral("up/"),
                           QStringLiteral("up/two.txt=UP/up/two.txt")}));
    EXPECT_EQ(readFile(root.path() + QStringLiteral("/work/after.txt")), "after.txt");
    EXPECT_TRUE(
        bench.status->statuses.contains(QStringLiteral("Skipped a link to a folder: %1loop").arg(top)));
    EXPECT_TRUE(bench.status->statuses.contains(QStringLiteral("Skipped a broken link: %1broken").arg(top)));
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

// ---- Behind an end

// The late reply comes when the next operation waits for its own.
TEST_F(OddServer, AnswersInTheMiddleOfTheNextOperation) {
    logon();
    answerTo("MKD", "");
    session.ServerDirectory = QStringLiteral("/work/new");
    session.MakeDir();
    EXPECT_TRUE(waitUntil([&] { return server.commands.constLast().startsWith(u"MKD"); }));
    bench.clock.advance(std::chrono::seconds(20));
    answerTo("RMD", "257-Made\r\n257 at last.\r\n250 Removed.\r\n");
    EXPECT_EQ(bench.run(&FTPSessionClass::RemoveDir), "ok: Empty Directory Removed.");
}

TEST_F(OddServer, IsAskedMoreFromInsideAReport) {
    logon();
    session.ServerDirectory = QStringLiteral("/work/none");
    bench.status->next = [this] {
        answerTo("USER", "");
        session.StartGetDirList();
    };
    EXPECT_THAT(bench.run(&FTPSessionClass::ChangeDir), StartsWith("error: Error: 550"));
    EXPECT_TRUE(waitUntil([&] { return server.commands.constLast().startsWith(u"USER"); }));
    bench.status->next = [this] {
        server.answer = nullptr;
        session.Logon();
    };
    bench.clock.advance(std::chrono::seconds(20));
    EXPECT_TRUE(session.ConnectionTimer->IsOn()) << "the end of the one does not stop the timer of the other";
    EXPECT_TRUE(waitUntil([&] { return bench.status->ends.size() == 3; }));
    EXPECT_EQ(bench.status->ends.mid(1).join(u'|').toStdString(),
              "error: Error: The connection timed out. Ending session.|ok: Connected to Tessarin server.");
}

// ---- Passwords

TEST_F(OddServer, RepeatsThePasswordItRefuses) {
    answerTo("PASS", "530-PASS secret-word is\r\n530 not the password, secret-word.\r\n");
    bench.run(&FTPSessionClass::Logon);
    const QString everything = bench.status->all.join(u'\n');
    EXPECT_FALSE(everything.contains(u"secret-word")) << everything.toStdString();
    EXPECT_TRUE(bench.status->responses.contains(QStringLiteral("PASS")));
}

TEST_F(OddServer, SpeaksThePasswordInOtherPlaces) {
    logon();
    answerTo("PWD", "257 \"/srv/secret-word\"\r\n");
    bench.run(&FTPSessionClass::GetWorkingDir);
    EXPECT_EQ(bench.status->responses.constLast(), u"257 \"/srv/secret-word\"");
    // A short one may be a part of any word, even of the reply to itself.
    answerTo("PASS", "230 Logged in; PASS in it was.\r\n");
    bench.connectTo(server.port(), QStringLiteral("me"), QStringLiteral("in"));
    bench.run(&FTPSessionClass::Logon);
    EXPECT_EQ(bench.status->responses.constLast(), u"230 Logged in; PASS it was.");
}

TEST_F(OddServer, IsSentAPasswordByACallersOwnCommand) {
    logon();
    bench.run([](auto& s) { s.DirectCommand(QStringLiteral("PASS hush")); });
    bench.run([](auto& s) { s.SITECommand(QStringLiteral("PASSWD hush")); });
    EXPECT_TRUE(server.commands.contains(QStringLiteral("PASS hush")));
    EXPECT_FALSE(bench.status->all.join(u'\n').contains(u"hush"));
}

// ---- Hostile

TEST_F(OddServer, NeverEndsItsLine) {
    greetWith(QByteArray(100'000, 'x'));
    EXPECT_EQ(bench.run(&FTPSessionClass::Logon), "error: Error: The reply line is too long.");
    EXPECT_EQ(session.CommandSocket, nullptr);
}

TEST_F(OddServer, NeverEndsItsReply) {
    for (const char* begin : {"220-", " "}) {
        bench.renew();
        bench.connectTo(server.port());
        server.replies = 0;
        greetWith((begin + QByteArray(60, 'x') + "\r\n").repeated(2000));
        EXPECT_EQ(bench.run(&FTPSessionClass::Logon), "error: Error: The reply is too long.") << begin;
    }
}

TEST_F(OddServer, SaysMuchUnasked) {
    logon();
    server.send(QByteArray("200 Not asked.\r\n").repeated(50'000));
    EXPECT_TRUE(waitUntil([&] { return session.CommandSocket == nullptr; }));
    EXPECT_EQ(bench.status->ends.join(u'|').toStdString(), "error: Error: The reply is too long.");
}

TEST_F(OddServer, SendsNextToNothing) {
    logon();
    server.timing.end = DataTiming::End::Open;
    session.Timeout = 50'000;
    session.Files = QStringList(QStringLiteral("a.txt"));
    session.GetSingleFile();
    EXPECT_TRUE(waitUntil([&] { return localFile("a.txt") == "alpha"; }));
    const auto minuteWith = [this](int bytes) {
        for (int half = 0; half < 2; ++half) {
            server.data()->write(QByteArray(bytes / 2, 'x'));
            settle(10);
            bench.clock.advance(std::chrono::seconds(30));
        }
    };
    minuteWith(1024);
    EXPECT_EQ(bench.status->ends, QStringList());
    minuteWith(1022);
    EXPECT_EQ(bench.status->ends.join(u'|').toStdString(),
              "error: Error: The transfer has come to a standstill. Ending session.");
}

TEST_F(OddServer, EndsItsLineFarTooLate) {
    greetWith("220 " + QByteArray(100'000, 'x') + "\r\n");
    EXPECT_EQ(bench.run(&FTPSessionClass::Logon), "error: Error: The reply line is too long.");
}

TEST_F(OddServer, NeverEndsItsListing) {
    logon();
    server.fixedListing = QByteArray(65 * 1024 * 1024, 'x');
    EXPECT_EQ(bench.run(&FTPSessionClass::GetDirList, 30'000),
              "error: Error: The directory list is too long.");
    EXPECT_EQ(session.DataSocket, nullptr) << "or all of it would still be taken in";
    EXPECT_FALSE(session.ConnectionTimer->IsOn());
}

TEST_F(OddServer, NamesNoUsablePort) {
    logon();
    session.LocalDirectory += QStringLiteral("tree/");
    for (const char* numbers :
         {"127,0,0,1,4,5", "(127,0,0,1,200)", "()", "(127,0,0,1,-4,5)", "(127,0,0,1,99999999999,5)",
          "(127,0,0,1,256,5)", "(127,0,0,1,four,5)", "(127,0,0,1,0,0)"}) {
        const std::string reply = std::string("227 Passive ") + numbers;
        answerTo("PASV", QByteArray::fromStdString(reply) + "\r\n");
        EXPECT_EQ(bench.runWith({QStringLiteral("a.txt")}, &FTPSessionClass::GetSingleFile),
                  "error: Error: " + reply + "\n");
        EXPECT_EQ(bench.run(&FTPSessionClass::PutDir), "error: Error: " + reply + "\n");
    }
}

TEST_F(OddServer, PointsAtAnotherHost) {
    logon();
    server.intercept = [](int, QByteArray& reply) { reply.replace("127,0,0,1", "10,9,8,7"); };
    EXPECT_EQ(bench.runWith({QStringLiteral("a.txt")}, &FTPSessionClass::GetSingleFile),
              "ok: File Transfer Complete.");
    EXPECT_EQ(localFile("a.txt"), "alpha");
    EXPECT_EQ(session.CalculatePassiveAddress(QStringLiteral("227 (10,9,8,7,1,2)")), u"10.9.8.7.1.2");
}

TEST_F(OddServer, LetsAStrangerComeToOurPort) {
    logon();
    session.PassiveMode = false;
    answerTo("LIST", "");
    session.GetDirList();
    EXPECT_TRUE(waitUntil([&] { return server.commands.contains(QStringLiteral("LIST")); }));
    QTcpSocket stranger;
    stranger.bind(QHostAddress(QStringLiteral("127.0.0.2")));
    stranger.connectToHost(QHostAddress::LocalHost, static_cast<quint16>(session.DataPort));
    EXPECT_TRUE(waitUntil([&] { return stranger.state() == QAbstractSocket::UnconnectedState; }));
    EXPECT_FALSE(session.DataSocket->IsConnected());
}

TEST_F(OddServer, FindsOurPortTaken) {
    logon();
    session.PassiveMode = false;
    QTcpServer taken;
    taken.listen(QHostAddress::LocalHost, static_cast<quint16>(session.DataPort));
    EXPECT_EQ(bench.run(&FTPSessionClass::GetDirList), "error: Error while receiving the directory list: 8");
}

// Names in the listing of a walk that would lead out of the local folder, or into a second command.
TEST_F(OddServer, ListsNamesThatLeadElsewhere) {
    logon();
    const QByteArray file = "-rw-r--r-- 1 a b 3 Mar 09 14:05 ";
    const QByteArray folder = "drwxr-xr-x 1 a b 3 Mar 09 14:05 ";
    for (const char* name : {"../x", "/etc/x", "sub/three.txt", "", ".", "..", "a\001b", "\rDELE a.txt"})
        server.fixedListing += file + name + "\r\n" + folder + name + "\r\n";
    // A Return alone ends a line too.
    server.fixedListing += file + "one.txt\r" + file + "two.txt";
    EXPECT_EQ(bench.runIn(QStringLiteral("/work/pub"), &FTPSessionClass::GetDir),
              "ok: Directory Transfer Complete.");
    EXPECT_EQ(server.commands.filter(QStringLiteral("RETR")),
              (QStringList{QStringLiteral("RETR two.txt"), QStringLiteral("RETR one.txt")}));
    EXPECT_EQ(tree(bench.local.path() + QStringLiteral("/pub")),
              (QStringList{QStringLiteral("one.txt=one"), QStringLiteral("two.txt=two")}));
    EXPECT_EQ(server.commands.filter(QStringLiteral("DELE")), QStringList());
    EXPECT_TRUE(
        bench.status->statuses.contains(QStringLiteral("Skipped a name that cannot be used here: ../x")));
}

// The window lives on meanwhile.
TEST_F(OddServer, ListsAHundredThousandNames) {
    logon();
    QString listing;
    for (int i = 0; i < 100'000; ++i)
        listing += QStringLiteral("-rw-r--r-- 1 a b 3 Mar 09 14:05 %1.hex\r\n").arg(i);
    session.FTPSessionType = QStringLiteral("GetDirImmediate");
    session.DirList.emplace_back(QStringLiteral("/work"), QString());
    EXPECT_TRUE(session.DataSocket->ParseDirectoryList(listing));
    EXPECT_LT(session.DirList[0].GetFileCount(), 99'999);
    EXPECT_TRUE(session.DataSocket->IsPending());
    EXPECT_TRUE(waitUntil([&] { return !session.DataSocket->IsPending(); }));
    EXPECT_EQ(session.DirList[0].GetFileCount(), 99'999);
}

// A server that keeps saying that we are still below would lead the walk out of its folder upwards.
TEST_F(OddServer, LeadsAWalkUpAndOut) {
    logon();
    int walks = 0;
    server.answer = [&walks](const QString& command) -> std::optional<QByteArray> {
        if (command == u"PWD")
            return ++walks == 1 ? "257 \"/work/pub\"\r\n" : "257 \"/work/pub/sub\"\r\n";
        return std::nullopt;
    };
    EXPECT_EQ(bench.runIn(QStringLiteral("/work/pub"), &FTPSessionClass::GetDir),
              "error: Error: The server has left the directory.");
}

TEST_F(OddServer, IsGivenNamesWithLineBreaks) {
    logon();
    const QString name = QStringLiteral("a.txt\r\nDELE a.txt");
    const std::string refused = "error: Error: A command cannot hold a line break.";
    EXPECT_EQ(bench.runIn(name, &FTPSessionClass::ChangeDir), refused);
    EXPECT_EQ(bench.runWith({name}, &FTPSessionClass::DeleteSingleFile), refused);
    EXPECT_EQ(bench.run([](auto& s) { s.SITECommand(QStringLiteral("A\nB")); }), refused);
    EXPECT_THAT(bench.runWith({name}, &FTPSessionClass::GetSingleFile),
                StartsWith("error: Error writing local file: "));
    EXPECT_EQ(server.commands.filter(QStringLiteral("DELE")), QStringList());
    EXPECT_EQ(bench.run(&FTPSessionClass::GetWorkingDir), "ok: The working directory has been transferred.");
}

TEST_F(OddServer, IsAskedForAFileOutsideTheLocalFolder) {
    logon();
    EXPECT_EQ(bench.runWith({QStringLiteral("../a.txt")}, &FTPSessionClass::GetSingleFile),
              "error: Error writing local file: ../a.txt");
    EXPECT_EQ(server.commands.filter(QStringLiteral("RETR")), QStringList());
}

TEST_F(OddServer, KnowsNothingOfItsCurrentDirectory) {
    logon();
    answerTo("PWD", "257 \"/elsewhere\"\r\n");
    EXPECT_EQ(bench.runIn(QStringLiteral("/work/pub"), &FTPSessionClass::GetDir),
              "ok: Directory Transfer Complete.");
    EXPECT_EQ(bench.dialogs.shown, (QStringList{QStringLiteral("NEXTPORT oops /elsewhere"),
                                                QStringLiteral("NEXTSUBDIR oops /elsewhere"),
                                                QStringLiteral("PARENT oops /elsewhere")}));
    bench.clock.advance(std::chrono::seconds(1));
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
