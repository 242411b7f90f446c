// Servers that flood, mislead or hold on.
#include "OddServer.h"

namespace {

using testing::StartsWith;

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
    qsizetype sent = 5;
    const auto minuteWith = [&](int bytes) {
        for (int half = 0; half < 2; ++half) {
            server.data()->write(QByteArray(bytes / 2, 'x'));
            sent += bytes / 2;
            EXPECT_TRUE(waitUntil([&] { return localFile("a.txt").size() == sent; }));
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

}  // namespace
