// The client against the FTP servers of the distribution.
#include <gmock/gmock.h>
#include <unistd.h>

#include <QSslCertificate>

#include "Operations.h"
#include "RealServers.h"

namespace {

using testing::HasSubstr;
using testing::StartsWith;

struct ServerAndMode {
    RealServer::Kind kind;
    const char* name;
    bool isPassive;
};

// The third server shows the same as these two in all but an abort and the encryption.
const ServerAndMode ServersAndModes[] = {
    {RealServer::Kind::vsftpd, "vsftpdPassive", true},
    {RealServer::Kind::vsftpd, "vsftpdActive", false},
    {RealServer::Kind::proftpd, "proftpdPassive", true},
    {RealServer::Kind::proftpd, "proftpdActive", false},
};

const ServerAndMode EveryServer[] = {
    {RealServer::Kind::vsftpd, "vsftpd", true},
    {RealServer::Kind::proftpd, "proftpd", true},
    {RealServer::Kind::pureftpd, "pureftpd", true},
};

class RealServerTest : public testing::TestWithParam<ServerAndMode> {
protected:
    explicit RealServerTest(bool withTls = false) : server(GetParam().kind, withTls) {}
    void SetUp() override {
        if (!server.isInstalled())
            GTEST_SKIP() << server.problem().toStdString();
        ASSERT_EQ(server.problem().toStdString(), "");
        prepareServer(server.root());
        server.openWork();
        prepareLocal(bench.local.path());
        begin();
    }

    void begin() {
        bench.renew();
        bench.session->PassiveMode = GetParam().isPassive;
        bench.connectTo(server.port());
    }
    // Back to the state that an immediate operation starts from.
    void continueSession() {
        bench.session->LocalDirectory = bench.local.path() + u'/';
        bench.session->Files.clear();
        if (bench.session->CommandSocket == nullptr)
            logOnTo(bench);
        else
            EXPECT_EQ(bench.runIn(QStringLiteral("/work"), &FTPSessionClass::ChangeDir),
                      "ok: Directory Change Complete.");
    }
    void renewWork() {
        // The folder itself stays: servers hold on to it.
        QDir work(server.root() + QStringLiteral("/work"));
        for (const QFileInfo& item :
             work.entryInfoList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot)) {
            if (item.isDir())
                QDir(item.filePath()).removeRecursively();
            else
                QFile::remove(item.filePath());
        }
        prepareServer(server.root());
        server.openWork();
    }
    QString work(const QString& path = QString()) const {
        return server.root() + QStringLiteral("/work/") + path;
    }
    QString localPath(const QString& path) const { return bench.local.path() + u'/' + path; }
    bool is(RealServer::Kind kind) const { return GetParam().kind == kind; }

    RealServer server;
    SessionBench<SystemClock> bench;
};

INSTANTIATE_TEST_SUITE_P(Servers, RealServerTest, testing::ValuesIn(ServersAndModes),
                         [](const auto& tested) { return std::string(tested.param.name); });

// Where a server's own ways end an operation otherwise by our rules: what the report begins with then.
struct OwnWay {
    RealServer::Kind kind;
    std::string_view operation;
    const char* report;
};

const OwnWay OwnWays[] = {
    // Anonymous users have no SITE commands.
    {RealServer::Kind::vsftpd, "ChmodSingleFile", "error: Error: 550 "},
    {RealServer::Kind::vsftpd, "SITECommand", "error: Error: 550 "},
    // Nothing to abort.
    {RealServer::Kind::vsftpd, "AbortTransfer", "error: Error: 225 "},
    // Help is 214, and only 200 will do.
    {RealServer::Kind::proftpd, "SITECommand", "error: Error: 214 "},
};

std::string expectedReport(const ServerAndMode& tested, const OperationCase& operation) {
    // An upload of a single file in active mode does not wait on its port.
    const std::string_view name = operation.name;
    if (!tested.isPassive && (name == "PutSingleFile" || name == "StartPutFile"))
        return "error: Error: 425 ";
    for (const OwnWay& way : OwnWays)
        if (way.kind == tested.kind && way.operation == name)
            return way.report;
    return std::string("ok: ") + operation.success;
}

TEST_P(RealServerTest, RunsEveryOperation) {
    for (const OperationCase& operation : AllOperations) {
        SCOPED_TRACE(operation.name);
        // An abort also ends what the operations before it left open.
        const bool needsFreshSession =
            operation.isOneShot || std::string_view(operation.name) == "AbortTransfer";
        if (needsFreshSession || !bench.session->CommandSocket || bench.session->CurrentFTPStep == u"QUIT")
            begin();
        if (!operation.isOneShot)
            continueSession();
        const std::string expected = expectedReport(GetParam(), operation);
        EXPECT_THAT(bench.run([&operation](FTPSessionClass& s) { operation.start(s); }),
                    StartsWith(expected));
        renewWork();
    }
}

// ---- Files

TEST_P(RealServerTest, FetchesFilesWithAnyNameAndNothingInThem) {
    const QStringList names{QStringLiteral("two words.txt"), QStringLiteral("caf\u00e9 \u00fcber.txt"),
                            QStringLiteral("empty"), QStringLiteral("-dash"), QStringLiteral("100%.txt")};
    for (const QString& name : names)
        writeFile(work(name), name == u"empty" ? QByteArray() : name.toUtf8());
    server.openWork();
    bench.session->SetServerEncoding(QStringConverter::Utf8);
    logOnTo(bench);
    for (const QString& name : names) {
        writeFile(localPath(name), "what was there before is gone");
        EXPECT_EQ(bench.runWith({name}, &FTPSessionClass::GetSingleFile), "ok: File Transfer Complete.");
        EXPECT_EQ(readFile(localPath(name)), readFile(work(name))) << name.toStdString();
    }
    bench.session->UseNameList = true;
    EXPECT_EQ(bench.run(&FTPSessionClass::GetDirList), "ok: The file list has been transferred.");
    const QStringList lines = bench.session->DirectoryFileList.split(QStringLiteral("\r\n"));
    for (const QString& name : names)
        EXPECT_TRUE(lines.contains(name)) << name.toStdString();
}

TEST_P(RealServerTest, SendsNamesInLatin1ByDefault) {
    const QString name = QStringLiteral("caf\u00e9.txt");
    writeFile(localPath(name), "coffee");
    bench.session->LocalDirectory += QStringLiteral("latin/");
    writeFile(bench.session->LocalDirectory + name, "coffee");
    EXPECT_EQ(bench.runIn(QStringLiteral("/work/latin"), &FTPSessionClass::StartPutDir),
              "ok: Directory Transfer Complete.");
    const QByteArray path = QFile::encodeName(work()) + "latin/caf\xe9.txt";
    EXPECT_EQ(::access(path.constData(), F_OK), 0);
    ::unlink(path.constData());
}

TEST_P(RealServerTest, MovesALargeFileBothWays) {
    QFile large(work(QStringLiteral("large")));
    ASSERT_TRUE(large.open(QIODevice::WriteOnly));
    large.seek(64 * 1024 * 1024 - 4);
    large.write("tail");
    large.close();
    server.openWork();
    logOnTo(bench);
    EXPECT_EQ(bench.runWith({QStringLiteral("large")}, &FTPSessionClass::GetSingleFile, 30'000),
              "ok: File Transfer Complete.");
    EXPECT_TRUE(readFile(localPath(QStringLiteral("large"))) == readFile(work(QStringLiteral("large"))));
    EXPECT_EQ(bench.status->progress, 64 * 1024 * 1024);
    if (!GetParam().isPassive)
        return;
    QFile::rename(localPath(QStringLiteral("large")), localPath(QStringLiteral("back")));
    bench.session->SendBufferSize = 64 * 1024;
    EXPECT_EQ(bench.runWith({QStringLiteral("back")}, &FTPSessionClass::PutSingleFile, 30'000),
              "ok: File Transfer Complete.");
    EXPECT_TRUE(readFile(work(QStringLiteral("back"))) == readFile(work(QStringLiteral("large"))));
}

TEST_P(RealServerTest, TakesUpWhatWasCut) {
    QByteArray whole(300'000, '\0');
    for (qsizetype i = 0; i < whole.size(); ++i)
        whole[i] = static_cast<char>(i * 7 >> 3);
    const QString cutName = QStringLiteral("cut");
    logOnTo(bench);
    for (const qsizetype cut : {0, 1, 65536, 299'999, 300'000}) {
        writeFile(work(cutName), whole);
        writeFile(localPath(cutName), whole.first(cut));
        server.openWork();
        EXPECT_EQ(bench.runWith({cutName}, &FTPSessionClass::RestartGetSingleFile),
                  "ok: File Transfer Complete.");
        EXPECT_TRUE(readFile(localPath(cutName)) == whole) << cut;
        writeFile(work(cutName), whole.first(cut));
        server.openWork();
        EXPECT_EQ(bench.runWith({cutName}, &FTPSessionClass::RestartPutSingleFile),
                  "ok: File Transfer Complete.");
        EXPECT_TRUE(readFile(work(cutName)) == whole) << cut;
    }
    if (!GetParam().isPassive)
        return;
    writeFile(localPath(cutName), QByteArray());
    EXPECT_EQ(bench.runWith({cutName}, &FTPSessionClass::PutSingleFile), "ok: File Transfer Complete.");
    EXPECT_EQ(readFile(work(cutName)), QByteArray());
}

// ---- Trees

// Ten folders deep, with siblings on the way.
void makeTree(const QString& top) {
    QString path = top;
    for (int depth = 0; depth < 10; ++depth) {
        path += QStringLiteral("/level %1").arg(depth);
        writeFile(path + QStringLiteral("/file.txt"), "at " + QByteArray::number(depth));
        writeFile(path + QStringLiteral("/side/other.txt"), QByteArray(5000 * depth + 1, 'o'));
    }
    writeFile(top + QStringLiteral("/top.txt"), "top");
    writeFile(top + QStringLiteral("/side/empty"), QByteArray());
}

TEST_P(RealServerTest, FetchesATree) {
    makeTree(work(QStringLiteral("deep")));
    QDir().mkpath(work(QStringLiteral("deep/hollow/inside")));
    server.openWork();
    logOnTo(bench);
    EXPECT_EQ(bench.runIn(QStringLiteral("/work/deep"), &FTPSessionClass::GetDir),
              "ok: Directory Transfer Complete.");
    EXPECT_EQ(tree(localPath(QStringLiteral("deep"))), tree(work(QStringLiteral("deep"))));
    EXPECT_EQ(bench.dialogs.shown, QStringList());
}

TEST_P(RealServerTest, SendsATreeAndDeletesIt) {
    makeTree(localPath(QStringLiteral("deep")));
    bench.session->LocalDirectory += QStringLiteral("deep/");
    EXPECT_EQ(bench.runIn(QStringLiteral("/work/sent"), &FTPSessionClass::StartPutDir),
              "ok: Directory Transfer Complete.");
    QStringList sent = tree(localPath(QStringLiteral("deep")));
    EXPECT_TRUE(sent.removeOne(QStringLiteral("side/empty="))) << "an empty file is passed over";
    EXPECT_EQ(tree(work(QStringLiteral("sent"))), sent);
    begin();
    EXPECT_EQ(bench.runIn(QStringLiteral("work/sent"), &FTPSessionClass::StartDeleteDir),
              "ok: The directory has been deleted.");
    EXPECT_FALSE(QFileInfo::exists(work(QStringLiteral("sent"))));
    EXPECT_TRUE(QFileInfo::exists(work(QStringLiteral("pub/one.txt"))));
    EXPECT_EQ(bench.dialogs.shown, QStringList());
}

// ---- In the middle of things

class InTheMiddle : public RealServerTest {
protected:
    // A download that has begun and cannot be over yet.
    void beginDownload() {
        QFile large(work(QStringLiteral("large")));
        ASSERT_TRUE(large.open(QIODevice::WriteOnly));
        large.resize(qint64{512} * 1024 * 1024);
        large.close();
        server.openWork();
        logOnTo(bench);
        bench.status->ends.clear();
        bench.session->Files = QStringList(QStringLiteral("large"));
        bench.session->GetSingleFile();
        ASSERT_TRUE(waitUntil([this] { return bench.status->progress > 1'000'000; }));
    }
};

INSTANTIATE_TEST_SUITE_P(Servers, InTheMiddle, testing::ValuesIn(EveryServer),
                         [](const auto& tested) { return std::string(tested.param.name); });

TEST_P(InTheMiddle, ADownloadIsAborted) {
    beginDownload();
    // Servers differ in what they answer; some say so little that nothing is reported.
    bench.run(&FTPSessionClass::AbortTransfer, 500);
    EXPECT_FALSE(bench.status->ends.contains(QStringLiteral("ok: File Transfer Complete.")));
    const qint64 size = QFileInfo(localPath(QStringLiteral("large"))).size();
    EXPECT_GT(size, 1'000'000);
    // What belongs to the aborted transfer does not reach the operations behind it.
    EXPECT_EQ(bench.run(&FTPSessionClass::GetWorkingDir), "ok: The working directory has been transferred.");
    EXPECT_EQ(bench.runWith({QStringLiteral("a.txt")}, &FTPSessionClass::GetSingleFile),
              "ok: File Transfer Complete.");
    EXPECT_EQ(readFile(localPath(QStringLiteral("a.txt"))), "alpha");
    EXPECT_EQ(QFileInfo(localPath(QStringLiteral("large"))).size(), size);
}

TEST_P(InTheMiddle, TheSessionIsDropped) {
    beginDownload();
    bench.session.reset();
    settle(20);
    const QString path = QStringLiteral("/proc/self/fd");
    for (const QFileInfo& open :
         QDir(path).entryInfoList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot))
        EXPECT_FALSE(open.symLinkTarget().endsWith(u"large"));
}

TEST_P(InTheMiddle, AnUploadIsAborted) {
    QFile large(localPath(QStringLiteral("large")));
    ASSERT_TRUE(large.open(QIODevice::WriteOnly));
    large.resize(qint64{512} * 1024 * 1024);
    large.close();
    if (!GetParam().isPassive)
        return;
    logOnTo(bench);
    bench.session->Files = QStringList(QStringLiteral("large"));
    bench.session->PutSingleFile();
    ASSERT_TRUE(waitUntil([this] { return bench.status->progress > 100'000; }));
    bench.session->AbortTransfer();
    EXPECT_TRUE(waitUntil([this] { return !bench.session->DataSocket->DataStream.isOpen(); }));
    EXPECT_FALSE(bench.session->DataSocket->IsConnected());
    EXPECT_LT(QFileInfo(work(QStringLiteral("large"))).size(), large.size());
    settle(200);
    EXPECT_EQ(bench.run(&FTPSessionClass::GetWorkingDir), "ok: The working directory has been transferred.");
    EXPECT_EQ(bench.run(&FTPSessionClass::GetDirList), "ok: The file list has been transferred.");
}

// ---- TLS

class TlsLogon : public RealServerTest {
protected:
    TlsLogon() : RealServerTest(true) {}
    void SetUp() override {
        RealServerTest::SetUp();
        bench.session->FTPS = true;
    }
};

INSTANTIATE_TEST_SUITE_P(Servers, TlsLogon, testing::ValuesIn(EveryServer),
                         [](const auto& tested) { return std::string(tested.param.name); });

TEST_P(TlsLogon, EncryptsTheControlConnection) {
    bench.session->SslConfiguration.setCaCertificates(QSslCertificate::fromPath(server.certificatePath()));
    logOnTo(bench);
    EXPECT_TRUE(bench.session->CommandSocket->SSLConnected());
    EXPECT_TRUE(bench.status->statuses.contains(QStringLiteral("\"Sending AUTH\"")));
    EXPECT_EQ(bench.run(&FTPSessionClass::GetWorkingDir), "ok: The working directory has been transferred.");
}

TEST_P(TlsLogon, RefusesAnUnknownCertificateWithTheReason) {
    const std::string report = bench.run(&FTPSessionClass::Logon);
    EXPECT_THAT(report, StartsWith("error: Error: "));
    EXPECT_THAT(report, HasSubstr("13 "));  // the code, and the words
    EXPECT_THAT(report, HasSubstr("self"));
    EXPECT_FALSE(bench.status->responses.contains(QStringLiteral("PASS"))) << "nothing goes out in the clear";
    EXPECT_EQ(bench.session->CommandSocket, nullptr);
}

}  // namespace
