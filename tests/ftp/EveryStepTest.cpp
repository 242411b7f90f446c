// Every operation, with the server failing at each of its replies in turn.
#include <string_view>

#include <QRegularExpression>

#include <gmock/gmock.h>

#include "GoldenFile.h"

#include "Operations.h"
#include "ScriptedServer.h"

namespace {

// An operation in a world of its own: a server, a local folder, and for an immediate one a session.
class World {
public:
    explicit World(const OperationCase& operation, bool isPassive = true) : m_operation(operation) {
        prepareServer(m_root.path());
        prepareLocal(bench.local.path());
        bench.connectTo(server.port());
        bench.session->PassiveMode = isPassive;
        if (!operation.isOneShot)
            logOnTo(bench);
        firstReply = server.replies;
        bench.status->ends.clear();
        bench.status->all.clear();
    }

    // Reply `number` of the operation becomes `text`.
    void replaceReply(int number, const char* text) {
        const int target = firstReply + number;
        server.intercept = [this, target, text](int count, QByteArray& reply) {
            if (count != target)
                return;
            replaced = reply;
            commandReplaced = server.commands.isEmpty() ? QString() : server.commands.constLast();
            reply = text;
        };
    }
    std::string run() {
        return bench.run([this](FTPSessionClass& s) { m_operation.start(s); });
    }

    QString root() const { return m_root.path(); }

    // What was told and what is left, without what differs from run to run.
    QStringList seen() const {
        QStringList lines = bench.status->all;
        lines += QStringLiteral("-- here");
        lines += tree(bench.local.path());
        lines += QStringLiteral("-- there");
        lines += tree(root());
        lines += QStringLiteral("-- listed");
        lines += bench.session->DirectoryFileList;
        static const QRegularExpression port(QStringLiteral("(,\\d+){2}(?=\\)|$)|(?<=port to: )\\d+"));
        lines.replaceInStrings(port, QStringLiteral("(port)"));
        lines.replaceInStrings(bench.local.path(), QStringLiteral("LOCAL"));
        return lines;
    }
    // Whether any reply would do for the step that the replaced one belongs to.
    bool takesAnyReply() const {
        return commandReplaced.startsWith(u"QUIT") ||
               (commandReplaced.startsWith(u"RNTO") && m_operation.isOneShot);
    }

    SessionBench<SimClock> bench;
    int firstReply = 0;
    QByteArray replaced;
    QString commandReplaced;

private:
    QTemporaryDir m_root;
    const OperationCase& m_operation;

public:
    ScriptedServer server{m_root.path()};
};

std::string success(const OperationCase& operation) {
    return std::string("ok: ") + operation.success;
}

// How many replies the healthy operation takes.
int replyCount(const OperationCase& operation) {
    World world(operation);
    EXPECT_EQ(world.run(), success(operation));
    return world.server.replies - world.firstReply;
}

class EveryStep : public testing::TestWithParam<OperationCase> {
protected:
    // The operation is begun once for each of its replies, which becomes `text`, and goes on up to it.
    template <typename Judge>
    void forEachReply(const char* text, Judge judge) {
        const int count = replyCount(GetParam());
        for (int number = 0; number < count; ++number) {
            World world(GetParam());
            world.replaceReply(number, text);
            GetParam().start(*world.bench.session);
            waitUntil([&] { return !world.replaced.isNull() || !world.bench.status->ends.isEmpty(); });
            SCOPED_TRACE(world.replaced.constData());
            judge(world, number);
        }
    }
};

TEST_P(EveryStep, TellsAndLeavesWhatItDid) {
    QStringList seen;
    for (const bool isPassive : {true, false}) {
        World world(GetParam(), isPassive);
        const std::string end = world.run();
        // These two set their port and do not wait on it.
        const bool waitsForNobody = !isPassive && (GetParam().name == std::string_view("PutSingleFile") ||
                                                   GetParam().name == std::string_view("StartPutFile"));
        EXPECT_EQ(end, waitsForNobody ? "error: Error: 425 Nobody there.\n" : success(GetParam()));
        seen += isPassive ? QStringLiteral("---- passive") : QStringLiteral("---- active");
        seen += world.seen();
    }
    compareWithGolden(QStringLiteral(VLX_FTP_GOLDENS "/%1.txt").arg(QLatin1String(GetParam().name)),
                      seen.join(u'\n').toUtf8() + '\n');
}

TEST_P(EveryStep, TakesRepliesByteByByte) {
    World world(GetParam());
    world.server.sendsByteByByte = true;
    EXPECT_EQ(world.run(), success(GetParam()));
}

TEST_P(EveryStep, EndsOnARefusalAtAnyReply) {
    const OperationCase& operation = GetParam();
    const int count = replyCount(operation);
    for (int number = 0; number < count; ++number) {
        World world(operation);
        world.replaceReply(number, "599 Refused.\r\n599 And more.\r\n");
        const std::string report = world.run();
        SCOPED_TRACE(world.replaced.constData());
        if (world.replaced.isNull() || world.takesAnyReply()) {
            EXPECT_EQ(report, success(operation));
            continue;
        }
        // What follows the refusal is shown with it.
        EXPECT_THAT(report, testing::StartsWith("error: Error: 599 Refused.\n599 And more.\r\n"));
        const bool staysOpen = !operation.isOneShot;
        EXPECT_EQ(world.bench.session->CommandSocket != nullptr, staysOpen);
        EXPECT_EQ(world.bench.session->DataSocket != nullptr, staysOpen);
        EXPECT_TRUE(waitUntil([&] { return world.server.isConnected() == staysOpen; }, 1000));
    }
}

TEST_P(EveryStep, TimesOutOnSilenceAtAnyReply) {
    forEachReply("", [](World& world, int) {
        settle(5);
        // Without the 150 an operation runs to its end all the same.
        if (world.replaced.isNull() || world.replaced.startsWith("150"))
            return;
        world.bench.clock.advance(std::chrono::milliseconds(19'999));
        EXPECT_EQ(world.bench.status->ends.join(u'|').toStdString(), "");
        world.bench.clock.advance(std::chrono::milliseconds(1));
        EXPECT_EQ(world.bench.status->ends.join(u'|').toStdString(),
                  "error: Error: The connection timed out. Ending session.");
        EXPECT_EQ(world.bench.session->CommandSocket != nullptr, !GetParam().isOneShot);
    });
}

TEST_P(EveryStep, SurvivesAServerThatHangsUpAtAnyReply) {
    forEachReply(ScriptedServer::Hang, [](World& world, int) {
        settle(5);
        // After QUIT the server may close without a word, and so it does here: no report comes.
        if (!world.replaced.isNull() && world.commandReplaced != u"QUIT") {
            EXPECT_EQ(world.bench.status->ends.value(0).toStdString(), "error: Error: 102");
        }
    });
}

TEST_P(EveryStep, CanBeDroppedAtAnyReply) {
    forEachReply("", [](World& world, int number) {
        if (number % 2 == 0)
            world.bench.session.reset();
        else
            world.bench.session->StartGetDirList();
        settle(2);
    });
}

// ---- The data connection: its bytes before, with or behind the reply, in one burst or in many, and its end

std::vector<OperationCase> operationsWithData() {
    std::vector<OperationCase> chosen;
    // clang-format off
    const std::string_view names[] = {
        "GetSingleFile", "PutSingleFile", "RestartGetSingleFile", "RestartPutSingleFile", "GetDirList", "GetDir", "PutDir",
        "DeleteDir", "StartGetFile", "StartPutFile", "StartGetDirList", "StartGetDir", "StartPutDir", "StartDeleteDir"};
    // clang-format on
    std::ranges::copy_if(AllOperations, std::back_inserter(chosen), [&](const OperationCase& operation) {
        return std::ranges::find(names, operation.name) != std::end(names);
    });
    return chosen;
}

class EveryTiming : public testing::TestWithParam<OperationCase> {
protected:
    using Reply = DataTiming::Reply;
    using End = DataTiming::End;

    static bool sends() { return std::string_view(GetParam().name).find("Put") != std::string_view::npos; }
    static void eachTiming(End end, const std::function<void(World&)>& check) {
        for (const Reply reply : {Reply::Behind, Reply::First, Reply::WithoutStart}) {
            for (const bool inBursts : {false, true}) {
                SCOPED_TRACE(testing::Message()
                             << "reply " << static_cast<int>(reply) << " bursts " << inBursts);
                World world(GetParam());
                world.server.timing = {reply, inBursts, end};
                check(world);
            }
        }
    }
};

TEST_P(EveryTiming, IsWholeWhenItsReportComes) {
    QStringList expected;
    eachTiming(End::Close, [&expected](World& world) {
        EXPECT_EQ(world.run(), success(GetParam()));
        const QStringList result = tree(world.bench.local.path()) + tree(world.root()) +
                                   QStringList(world.bench.session->DirectoryFileList);
        if (expected.isEmpty())
            expected = result;
        EXPECT_EQ(result, expected);
        EXPECT_EQ(world.bench.dialogs.shown, QStringList());
    });
}

TEST_P(EveryTiming, FailsOnAReset) {
    eachTiming(End::Reset, [](World& world) {
        // The server has taken an upload whole when it says so, whatever it does to the connection.
        if (sends() && world.server.timing.reply != Reply::Behind)
            return;
        EXPECT_THAT(world.run(), testing::StartsWith(sends() ? "error: Error" : "error: Error while "));
        const qsizetype sent = world.server.commands.size();
        settle(5);
        EXPECT_EQ(world.server.commands.size(), sent) << "nothing happens behind the error";
    });
}

TEST_P(EveryTiming, TimesOutOnAConnectionThatIsLeftOpen) {
    if (sends())
        return;  // it is the client that closes
    eachTiming(End::Open, [](World& world) {
        GetParam().start(*world.bench.session);
        EXPECT_TRUE(waitUntil([&] { return world.server.data() && world.server.timing.end == End::Open; }));
        settle(20);
        if (world.server.timing.reply == Reply::Behind)
            world.server.send("226 Transfer complete.\r\n");
        settle(20);
        EXPECT_EQ(world.bench.status->ends, QStringList());
        EXPECT_EQ(world.server.commands.count(QStringLiteral("NOOP")), 1);
        world.bench.clock.advance(std::chrono::milliseconds(250));
        settle(5);
        EXPECT_EQ(world.server.commands.count(QStringLiteral("NOOP")), 2);
        world.bench.clock.advance(std::chrono::seconds(20));
        EXPECT_EQ(world.bench.status->ends.join(u'|').toStdString(),
                  "error: Error: The connection timed out. Ending session.");
    });
}

INSTANTIATE_TEST_SUITE_P(Operations, EveryTiming, testing::ValuesIn(operationsWithData()),
                         [](const auto& tested) { return std::string(tested.param.name); });

INSTANTIATE_TEST_SUITE_P(Operations, EveryStep, testing::ValuesIn(AllOperations),
                         [](const auto& tested) { return std::string(tested.param.name); });

}  // namespace
