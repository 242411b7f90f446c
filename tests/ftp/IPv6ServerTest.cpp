// Servers that are reached by IPv6.
#include <array>

#include <QHostInfo>
#include <QRegularExpression>

#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include "OddServer.h"

namespace {

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

}  // namespace
