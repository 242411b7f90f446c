// Both routes against the FTP servers of the distribution, and against the demo's own.
#include "FtpServer.h"
#include "RealServers.h"
#include "RetrievalBench.h"

namespace {

const QString NewImage = QStringLiteral("VLX720FP0126.hex");

// curl reads the password from its own configuration: it logs on with none of the program's.
struct CurlPassword {
    CurlPassword() {
        writeFile(m_home.filePath(QStringLiteral(".curlrc")), "user = \"anonymous:secret-word\"\n");
        qputenv("CURL_HOME", m_home.path().toUtf8());
    }
    CurlPassword(const CurlPassword&) = delete;
    CurlPassword& operator=(const CurlPassword&) = delete;
    ~CurlPassword() { qunsetenv("CURL_HOME"); }

private:
    QTemporaryDir m_home;
};

void serve(const QString& root) {
    const QString folder = root + QStringLiteral("/VLX/firmware/");
    // 300 KB, so that more than one block comes.
    QByteArray large;
    while (large.size() < 300 * 1024)
        large += ":0108000000F7\r\n";
    for (const char* name : {"VLX720FP0124.HEX", "VLX720FP0125.hex", "VLX720FPabc.hex", "VLX720FP.hex"})
        writeFile(folder + QString::fromLatin1(name), GoodImage);
    writeFile(folder + NewImage, large + ":00000001FF\r\n");
    writeFile(folder + QStringLiteral("vlxfwnotes.rtf"), Notes);
    for (const char* path : {"/VLX", "/VLX/firmware"})
        QFile::setPermissions(root + QString::fromLatin1(path), QFile::Permissions(0x7755));
}

struct ServerAndRoute {
    RealServer::Kind kind;
    const char* name;
    RetrievalBench::Route route;
};

class RealServerRetrieval : public testing::TestWithParam<ServerAndRoute> {};

TEST_P(RealServerRetrieval, FetchesTheNewestImage) {
    const CurlPassword password;
    RealServer server(GetParam().kind);
    if (!server.isInstalled())
        GTEST_SKIP() << server.problem().toStdString();
    ASSERT_EQ(server.problem().toStdString(), "");
    serve(server.root());
    RetrievalBench bench;
    writeFile(bench.local(QStringLiteral("VLX720FP0125.hex")), GoodImage);
    bench.use(server.port());
    bench.run(GetParam().route);
    const QByteArray image = readFile(server.root() + QStringLiteral("/VLX/firmware/") + NewImage);
    EXPECT_EQ(readFile(bench.local(NewImage)), image);
    EXPECT_EQ(readFile(bench.local(QStringLiteral("vlxfwnotes.rtf"))), Notes);
    EXPECT_EQ(bench.notices, 1);
    EXPECT_EQ(bench.log.filter(QStringLiteral("Copied 2 files from Tessarin")).size(), 1)
        << bench.log.join(u'\n').toStdString();
    bench.run(GetParam().route);
    EXPECT_EQ(bench.log.filter(QStringLiteral("Your folder has the most recent")).size(), 1);
}

INSTANTIATE_TEST_SUITE_P(
    Servers, RealServerRetrieval,
    testing::Values(ServerAndRoute{RealServer::Kind::vsftpd, "vsftpd", RetrievalBench::FTP},
                    ServerAndRoute{RealServer::Kind::vsftpd, "vsftpdByCurl", RetrievalBench::curl},
                    ServerAndRoute{RealServer::Kind::proftpd, "proftpd", RetrievalBench::FTP},
                    ServerAndRoute{RealServer::Kind::proftpd, "proftpdByCurl", RetrievalBench::curl},
                    ServerAndRoute{RealServer::Kind::pureftpd, "pureftpdByCurl", RetrievalBench::curl}),
    [](const auto& each) { return std::string(each.param.name); });

TEST(DemoServer, ServesBothRoutesAndMisbehavesOnDemand) {
    using Behaviour = FtpServer::Behaviour;
    const struct {
        Behaviour behaviour;
        const char* logged;  // by the FTP route
        const char* byCurl;
        bool isFetched;
    } rows[] = {
        {Behaviour::Works, "Copied \"VLX720FP0126.hex\" from Tessarin", "Copied 2 files from Tessarin.",
         true},
        {Behaviour::Refuses, "Error: 530 Not today.", "Unable to connect to Tessarin server. Error: 67",
         false},
        {Behaviour::Stalls, "Error: The connection timed out. Ending session.",
         "curl was ended: next to nothing came for 60 seconds.", false},
        {Behaviour::CutsTransfers, "Unable to copy file \"VLX720FP0126.hex\"",
         "Unable to copy file \"VLX720FP0126.hex\"", false},
        {Behaviour::DamagesImages, "\"VLX720FP0126.hex\" verification failed",
         "\"VLX720FP0126.hex\" verification failed", false},
    };
    for (const auto& row : rows) {
        for (const auto route : {RetrievalBench::FTP, RetrievalBench::curl}) {
            RetrievalBench bench;
            serve(bench.root());
            FtpServer server(bench.root());
            server.behaviour = row.behaviour;
            bench.use(server.port());
            bench.start(route);
            settle(100);
            if (row.behaviour == Behaviour::Stalls)
                bench.clock.advance(std::chrono::seconds(61));
            bench.finish();
            const QString line = QString::fromLatin1(route == RetrievalBench::FTP ? row.logged : row.byCurl);
            EXPECT_TRUE(bench.log.join(u'\n').split(u'\n').contains(line))
                << bench.log.join(u'\n').toStdString();
            EXPECT_EQ(QFileInfo::exists(bench.local(NewImage)), row.isFetched);
        }
    }
}

}  // namespace
