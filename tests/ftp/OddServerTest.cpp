// Servers that are slow, early, odd, broken or hostile.
#include <csignal>

#include <gmock/gmock.h>
#include <sys/resource.h>

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
    greetWith("220-Welcome to Microsoft\r\n still welcome\r\n220-and more\r\n220 Ready\r\n");
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

TEST_F(OddServer, ClosesAnUnusedDataConnectionLater) {
    logon();
    EXPECT_EQ(bench.runWith({QStringLiteral("a.txt")}, &FTPSessionClass::DeleteSingleFile),
              "ok: File has been deleted.");
    EXPECT_TRUE(waitUntil([&] { return server.data() != nullptr; }));
    server.data()->disconnectFromHost();
    EXPECT_TRUE(waitUntil([&] { return !session.DataSocket->IsConnected(); }));
    EXPECT_FALSE(session.ConnectionTimer->IsOn()) << "nothing is awaited that could time out";
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

struct SingleStep {
    const char* name;
    const char16_t* type;
    const char16_t* step;
    int code;
    const char* nextStep;
    const char* report;
};

class SingleStepTest : public testing::TestWithParam<SingleStep> {};

TEST_P(SingleStepTest, GoesOnOrEnds) {
    SessionBench<SimClock> bench;
    bench.session->FTPSessionType = QString::fromUtf16(GetParam().type);
    bench.session->CurrentFTPStep = QString::fromUtf16(GetParam().step);
    bench.session->ParseCommandBuffer(GetParam().code);
    EXPECT_EQ(bench.session->CurrentFTPStep.toStdString(), GetParam().nextStep);
    EXPECT_EQ(bench.status->ends.join(u'|').toStdString(), GetParam().report);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Steps, SingleStepTest, testing::Values(
    SingleStep{"ProtRefusedByPolicy",  u"Logon",        u"PROT",    534, "USER",    ""},
    SingleStep{"ProtRefused",          u"Logon",        u"PROT",    536, "PROT",    "error: Error: x     \r"},
    SingleStep{"LogonUnknownStep",     u"Logon",        u"nowhere", 200, "nowhere", ""},
    SingleStep{"OtherUnknownStep",     u"ChangeDir",    u"nowhere", 200, "nowhere", "error: Unknown error during (nowhere)."},
    SingleStep{"LogoffUnknownStep",    u"Logoff",       u"START",   221, "START",   "error: Unknown error during (START)."},
    SingleStep{"StepInAnyCase",        u"MakeDir",      u"mkd",     257, "mkd",     "ok: Directory Created."},
    SingleStep{"TypeInAnyCase",        u"MAKEDIR",      u"MKD",     257, "MKD",     "ok: Directory Created."},
    SingleStep{"UnknownType",          u"Dance",        u"START",   200, "START",   ""},
    SingleStep{"OneShotTakes230",      u"GetFile",      u"USER",    230, "PASS",    ""},
    SingleStep{"UploadTakes250",       u"PutSingleFile", u"STOR",   250, "STOR",    "ok: File Transfer Complete."},
    SingleStep{"DownloadDoesNot",      u"GetSingleFile", u"RETR",   250, "RETR",    "error: Error: x     \n"}),
    [](const auto& tested) { return std::string(tested.param.name); });
// clang-format on

// ---- The order of things

TEST_F(OddServer, EndsAListingBeforeItsData) {
    logon();
    server.endsTransferFirst = true;
    EXPECT_EQ(bench.run(&FTPSessionClass::GetDirList), "ok: The file list has been transferred.");
}

TEST_F(OddServer, SendsDataBeforeItSaysSo) {
    logon();
    server.startsTransferLate = true;
    EXPECT_EQ(bench.runWith({QStringLiteral("a.txt")}, &FTPSessionClass::GetSingleFile),
              "ok: File Transfer Complete.");
    EXPECT_EQ(localFile("a.txt"), "alpha");
    EXPECT_EQ(bench.run(&FTPSessionClass::GetDirList), "ok: The file list has been transferred.");
    EXPECT_TRUE(session.DirectoryFileList.contains(u"a.txt"));
}

TEST_F(OddServer, ClosesADownloadLongAfterTheEnd) {
    logon();
    server.keepsDataOpen = true;
    session.Files = QStringList(QStringLiteral("a.txt"));
    session.GetSingleFile();
    EXPECT_TRUE(waitUntil([&] { return localFile("a.txt") == "alpha"; }));
    server.send("226 Transfer complete.\r\n");
    // Real NOOPs go back and forth until the connection is closed.
    EXPECT_TRUE(waitUntil([&] { return server.commands.count(QStringLiteral("NOOP")) >= 3; }));
    EXPECT_TRUE(bench.status->responses.contains(QStringLiteral("FORCENOOP")));
    EXPECT_EQ(bench.status->ends.size(), 0);
    server.data()->disconnectFromHost();
    EXPECT_TRUE(waitUntil([&] { return bench.status->ends.size() == 1; }));
    EXPECT_EQ(bench.status->ends.constLast().toStdString(), "ok: File Transfer Complete.");
    EXPECT_TRUE(session.ConnectionTimer->IsOn()) << "left running on purpose";
}

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

// A walk takes a listing in blocks; of a listing in several only the last block counts.
TEST_F(OddServer, PausesInTheListingOfAWalk) {
    logon();
    server.keepsDataOpen = true;
    server.fixedListing = "-rw-r--r-- 1 a b 3 Mar 09 14:05 one.txt\r\n";
    session.ServerDirectory = QStringLiteral("/work/pub");
    session.GetDir();
    EXPECT_TRUE(
        waitUntil([&] { return server.data() && server.commands.contains(QStringLiteral("LIST -a")); }));
    settle();
    bench.clock.advance(std::chrono::milliseconds(20));
    server.data()->write("-rw-r--r-- 1 a b 3 Mar 09 14:05 two.txt\r\n");
    settle();
    server.data()->disconnectFromHost();
    server.keepsDataOpen = false;
    server.send("226 Done.\r\n");
    EXPECT_TRUE(waitUntil([&] { return bench.status->ends.size() == 1; }));
    EXPECT_EQ(tree(bench.local.path() + QStringLiteral("/pub")), QStringList(QStringLiteral("two.txt=two")));
}

// ---- Passwords

TEST_F(OddServer, RepeatsThePasswordItRefuses) {
    answerTo("PASS", "530-PASS secret-word is\r\n530 not the password, secret-word.\r\n");
    bench.run(&FTPSessionClass::Logon);
    const QString everything = bench.status->all.join(u'\n');
    EXPECT_FALSE(everything.contains(u"secret-word")) << everything.toStdString();
    EXPECT_TRUE(bench.status->responses.contains(QStringLiteral("PASS")));
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

struct Passive {
    const char* name;
    const char* reply;
};

class PassiveReply : public OddServer, public testing::WithParamInterface<Passive> {};

TEST_P(PassiveReply, WithoutAUsablePortIsRefused) {
    logon();
    answerTo("PASV", QByteArray(GetParam().reply) + "\r\n");
    EXPECT_EQ(bench.runWith({QStringLiteral("a.txt")}, &FTPSessionClass::GetSingleFile),
              std::string("error: Error: ") + GetParam().reply + "\n");
    bench.session->LocalDirectory += QStringLiteral("tree/");
    EXPECT_EQ(bench.run(&FTPSessionClass::PutDir), std::string("error: Error: ") + GetParam().reply + "\n");
}

INSTANTIATE_TEST_SUITE_P(Replies, PassiveReply,
                         testing::Values(Passive{"NoParentheses", "227 Passive 127,0,0,1,4,5"},
                                         Passive{"TooFewFields", "227 Passive (127,0,0,1,200)"},
                                         Passive{"Empty", "227 Passive ()"},
                                         Passive{"Negative", "227 Passive (127,0,0,1,-4,5)"},
                                         Passive{"Huge", "227 Passive (127,0,0,1,99999999999,5)"},
                                         Passive{"PastAByte", "227 Passive (127,0,0,1,256,5)"},
                                         Passive{"Words", "227 Passive (127,0,0,1,four,5)"},
                                         Passive{"PortZero", "227 Passive (127,0,0,1,0,0)"}),
                         [](const auto& tested) { return std::string(tested.param.name); });

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
    server.answer = [](const QString& command) -> std::optional<QByteArray> {
        if (command == u"PWD")
            return "257 \"/elsewhere\"\r\n";
        return std::nullopt;
    };
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
    bench.renew();
    bench.connectTo(server.port());
    bench.session->LocalDirectory += QStringLiteral("none/");
    EXPECT_THAT(bench.run(&FTPSessionClass::StartPutDir), StartsWith("error: Cannot find this path: "));
    EXPECT_EQ(bench.session->CommandSocket, nullptr);
}

TEST_F(OddServer, SendsMoreThanTheDiskTakes) {
    logon();
    writeFile(root.path() + QStringLiteral("/work/big"), QByteArray(2 * 1024 * 1024, 'x'));
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    const rlimit full{64 * 1024, before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &full);
    EXPECT_EQ(bench.runWith({QStringLiteral("big")}, &FTPSessionClass::GetSingleFile),
              "error: Error writing local file: big");
    settle();
    setrlimit(RLIMIT_FSIZE, &before);
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
    server.keepsDataOpen = true;
    session.Files = QStringList(QStringLiteral("a.txt"));
    session.GetSingleFile();
    EXPECT_TRUE(waitUntil([&] { return localFile("a.txt") == "alpha"; }));
    server.keepsDataOpen = false;
    EXPECT_EQ(bench.run(&FTPSessionClass::GetDirList), "ok: The file list has been transferred.");
    EXPECT_THAT(session.DirectoryFileList.toStdString(), StartsWith("-rw-r--r--"));
}

TEST_F(OddServer, BreaksATransferOff) {
    logon();
    writeFile(bench.local.path() + QStringLiteral("/big"), QByteArray(8 * 1024 * 1024, 'x'));
    session.Files = QStringList(QStringLiteral("big"));
    session.PutSingleFile();
    EXPECT_TRUE(waitUntil(
        [&] { return server.data() && server.data()->state() == QAbstractSocket::ConnectedState; }));
    server.data()->disconnect(&server);
    server.data()->abort();
    EXPECT_TRUE(waitUntil([&] { return bench.status->ends.size() == 1; }));
    EXPECT_THAT(bench.status->ends.constLast().toStdString(),
                StartsWith("error: Error while sending the file: "));
    EXPECT_FALSE(session.DataSocket->DataStream.isOpen());
}

}  // namespace
