// Servers that reply late, oddly or not at all.
#include "OddServer.h"

namespace {

using testing::StartsWith;

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

TEST_F(OddServer, LeavesAnAbortUnanswered) {
    logon();
    answerTo("ABOR", "");
    session.AbortTransfer();
    EXPECT_TRUE(waitUntil([&] { return server.commands.constLast() == u"ABOR"; }));
    for (int next = 0; next < 3; ++next)
        EXPECT_EQ(bench.run(&FTPSessionClass::GetWorkingDir),
                  "ok: The working directory has been transferred.");
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

TEST(SingleStep, EndsAnyOperationButALogonWhenItIsUnknown) {
    for (const auto& [type, report] :
         {std::pair{"Logon", ""}, {"changedir", "error: Unknown error during (nowhere)."}, {"Dance", ""}}) {
        SessionBench<SimClock> bench;
        bench.session->FTPSessionType = QString::fromLatin1(type);
        bench.session->CurrentFTPStep = QStringLiteral("nowhere");
        bench.session->ParseCommandBuffer(200);
        EXPECT_EQ(bench.session->CurrentFTPStep, QStringLiteral("nowhere"));
        EXPECT_EQ(bench.status->ends.join(u'|').toStdString(), report) << type;
    }
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

}  // namespace
