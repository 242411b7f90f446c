// The FTP route: what comes of every server, every refusal and every silence.
#include "DiskLimit.h"
#include "RetrievalBench.h"
#include "ScriptedServer.h"

namespace {

const QString NewImage = QStringLiteral("VLX720FP0125.hex");
const QString OldImage = QStringLiteral("VLX720FP0124.hex");
const QString NotesName = QStringLiteral("vlxfwnotes.rtf");
const QString MostRecent =
    QStringLiteral("Your folder has the most recent VLX firmware files from Tessarin.");

struct FTPBench : RetrievalBench {
    FTPBench() {
        writeFile(served(NewImage), GoodImage);
        writeFile(served(OldImage), GoodImage);
        writeFile(served(NotesName), Notes);
        writeFile(local(OldImage), GoodImage);
        writeFile(local(NotesName), "old notes");
        use(server.port());
    }
    bool hasLogged(const QString& text) const { return log.contains(text); }
    qsizetype sent(const QString& command) const { return server.commands.count(command); }

    ScriptedServer server{root()};
};

QStringList bothFiles() {
    return {OldImage + u'=' + QString::fromLatin1(GoodImage),
            NewImage + u'=' + QString::fromLatin1(GoodImage), NotesName + u'=' + QString::fromLatin1(Notes)};
}

TEST(FTPDownload, FetchesVerifiesTellsAndLogsOff) {
    FTPBench bench;
    bench.run(RetrievalBench::FTP);
    const QString& folder = bench.globals.m_FolderPath;
    EXPECT_EQ(bench.log,
              QStringList({QStringLiteral("Connecting to ftp.tessarin.example. Please be patient, this takes "
                                          "a few seconds."),
                           QStringLiteral("Connected to Tessarin server."),
                           QStringLiteral("Copying files to \"%1\"").arg(folder),
                           QStringLiteral("Copied \"VLX720FP0125.hex\" from Tessarin"),
                           QStringLiteral("Copied \"vlxfwnotes.rtf\" from Tessarin"),
                           QStringLiteral("Copied 2 files from Tessarin to \"%1\"").arg(folder),
                           QStringLiteral("Logoff Complete."),
                           QStringLiteral("VLX Version 01.23. ttyUSB0 RS232 speed is 38400 bps"),
                           QStringLiteral("New firmware is available for your VLX720")}));
    EXPECT_EQ(bench.files(), bothFiles());
    EXPECT_EQ(bench.panel.installed, QStringLiteral("01.23"));
    EXPECT_EQ(bench.panel.available, QStringLiteral("01.25"));
    EXPECT_EQ(bench.notices, 1);
    EXPECT_EQ(bench.dialogs.shown, QStringList());
    EXPECT_EQ(bench.progress.last(), QStringLiteral("Ready"));

    bench.log.clear();
    bench.server.commands.clear();
    bench.run(RetrievalBench::FTP);
    EXPECT_TRUE(bench.hasLogged(MostRecent));
    EXPECT_EQ(bench.server.commands.filter(QStringLiteral("RETR")), QStringList());
    EXPECT_EQ(bench.sent(QStringLiteral("QUIT")), 1);
}

TEST(FTPDownload, ChoosesAmongWhatTheServerNames) {
    const QByteArray slash = "VLX720FP0300/../../x.hex\r\n../VLX720FP0301.hex\r\n";
    const QByteArray control = "VLX720FP0302\x07.hex\r\nVLX720FP0303\x85.hex\r\n";
    const QByteArray tooLong = "VLX720FP0304" + QByteArray(4096, 'a') + ".hex\r\n";
    struct Row {
        const char* name;
        QByteArray listing;
        const char* fetched;
    };
    const Row rows[] = {
        {"odd ones", "VLX720FP0125.HEX\r\nVLX720FPabc.hex\r\nVLX720FP.hex\r\nVLX720FP0123.hex\r\n",
         "VLX720FP0125.HEX"},
        {"the first of equals, with blanks around", "  VLX720FP125.hex \r\nVLX720FP0125.hex",
         "VLX720FP125.hex"},
        {"equal to the local one", "VLX720FP124.hex\r\nVLX720FP0123.hex\r\n", nullptr},
        {"a very large number", "VLX720FP99999999999.hex\nVLX720FP0125.hex\n", "VLX720FP99999999999.hex"},
        {"no line ends", "VLX720FP0125.hexVLX720FP0126.hex", "VLX720FP0125.hexVLX720FP0126.hex"},
        {"names that are no names", slash + control + tooLong + "VLX720FP0125.hex\r\n", "VLX720FP0125.hex"},
        {"no names at all", "\r\n\r\n<html>\r\n", nullptr},
        {"bytes that are no text elsewhere", "VLX720FP0126\xE9\xFF.hex\r\n", "VLX720FP0126\xE9\xFF.hex"},
    };
    for (const Row& row : rows) {
        FTPBench bench;
        bench.server.fixedListing = row.listing;
        const QString name = QString::fromLatin1(row.fetched);
        if (row.fetched)
            writeFile(bench.served(name), GoodImage);
        const QStringList outside = tree(bench.root());
        bench.run(RetrievalBench::FTP);
        const QStringList asked = bench.server.commands.filter(QStringLiteral("RETR VLX"));
        EXPECT_EQ(asked, row.fetched ? QStringList(QStringLiteral("RETR ") + name) : QStringList())
            << row.name;
        EXPECT_EQ(QFileInfo::exists(bench.local(name)), true) << row.name;
        EXPECT_EQ(bench.hasLogged(MostRecent), !row.fetched) << row.name;
        EXPECT_EQ(tree(bench.root()), outside) << row.name;
    }
}

// One run for each reply that fails, in each way in which it can.
TEST(FTPDownload, EndsAtEachStepThatFailsAndRunsAgain) {
    const QStringList before{OldImage + u'=' + QString::fromLatin1(GoodImage),
                             NotesName + QStringLiteral("=old notes")};
    int replies = 0;
    {
        FTPBench clean;
        clean.run(RetrievalBench::FTP);
        replies = clean.server.replies;
    }
    ASSERT_GT(replies, 15);
    enum class Fault { Refusal, Silence, Close };
    for (const Fault fault : {Fault::Refusal, Fault::Silence, Fault::Close}) {
        for (int number = 0; number < replies; ++number) {
            SCOPED_TRACE(std::to_string(number) + " fails in way " + std::to_string(static_cast<int>(fault)));
            FTPBench bench;
            bool hasFailed = false;
            bench.server.intercept = [&](int reply, QByteArray& text) {
                if (reply != number)
                    return;
                hasFailed = true;
                if (fault == Fault::Refusal)
                    text = "550 No.\r\n";
                else
                    text = fault == Fault::Close ? QByteArray(ScriptedServer::Hang) : QByteArray();
            };
            bench.start(RetrievalBench::FTP);
            EXPECT_TRUE(bench.turnUntil([&] { return hasFailed || bench.isDone(); }));
            settle(5);
            if (fault == Fault::Silence)
                bench.clock.advance(std::chrono::seconds(61));
            bench.finish();
            const QString boxes = bench.dialogs.shown.join(u'|');
            const bool hasImage = QFileInfo::exists(bench.local(NewImage));
            if (!boxes.isEmpty()) {
                EXPECT_EQ(bench.dialogs.shown.size(), 1);
                EXPECT_EQ(bench.files(), before);
                EXPECT_EQ(bench.notices, 0);
            } else if (hasImage) {
                EXPECT_EQ(readFile(bench.local(NewImage)), GoodImage);
                EXPECT_EQ(bench.notices, 1);
            } else {
                EXPECT_TRUE(bench.hasLogged(QStringLiteral("Unable to copy file \"VLX720FP0125.hex\"")));
                EXPECT_FALSE(bench.hasLogged(MostRecent));
                EXPECT_EQ(bench.files(), before);
            }
            const QByteArray notes = readFile(bench.local(NotesName));
            EXPECT_TRUE(notes == Notes || notes == "old notes") << notes.toStdString();

            bench.server.intercept = nullptr;
            bench.run(RetrievalBench::FTP);
            EXPECT_EQ(readFile(bench.local(NewImage)), GoodImage);
        }
    }
}

TEST(FTPDownload, ShowsTheBoxOfThePhaseThatFailed) {
    const struct {
        const char* command;
        const char* box;
    } rows[] = {
        {"PASS secret-word", "Logon to Tessarin FTP server failed"},
        {"CWD /VLX/firmware", "Could not find /VLX/firmware directory on Tessarin server"},
        {"PASV", "Error getting directory listing from ftp server."},
        {"NLST", "Error getting directory listing from ftp server."},
    };
    for (const auto& row : rows) {
        FTPBench bench;
        bench.server.answer = [&](const QString& command) -> std::optional<QByteArray> {
            if (command != QLatin1String(row.command))
                return std::nullopt;
            return QByteArray("550 Not here.\r\n");
        };
        bench.run(RetrievalBench::FTP);
        EXPECT_EQ(bench.dialogs.shown, QStringList(QString::fromLatin1(row.box))) << row.command;
        EXPECT_EQ(bench.log.last().section(u'\n', 0, 0), QStringLiteral("Error: 550 Not here."))
            << row.command;
    }
}

TEST(FTPDownload, FetchesADamagedImageThreeTimesAndNoMore) {
    FTPBench bench;
    writeFile(bench.served(NewImage), DamagedImage);
    bench.run(RetrievalBench::FTP);
    EXPECT_EQ(bench.sent(QStringLiteral("RETR VLX720FP0125.hex")), 3);
    EXPECT_EQ(bench.log.count(QStringLiteral("\"VLX720FP0125.hex\" verification failed")), 3);
    EXPECT_EQ(bench.log.count(QStringLiteral("Deleted file \"VLX720FP0125.hex\"")), 3);
    EXPECT_EQ(bench.log.count(QStringLiteral("Unable to copy file \"VLX720FP0125.hex\"")), 1);
    EXPECT_TRUE(bench.hasLogged(
        QStringLiteral("Copied 4 files from Tessarin to \"%1\"").arg(bench.globals.m_FolderPath)));
    EXPECT_FALSE(QFileInfo::exists(bench.local(NewImage)));
    EXPECT_EQ(readFile(bench.local(NotesName)), Notes);
    EXPECT_EQ(bench.panel.available, QStringLiteral("01.24"));
}

TEST(FTPDownload, ADamagedImageThatComesGoodIsTaken) {
    FTPBench bench;
    writeFile(bench.served(NewImage), DamagedImage);
    bench.server.answer = [&](const QString& command) -> std::optional<QByteArray> {
        if (command.startsWith(u"RETR") && bench.sent(QStringLiteral("RETR VLX720FP0125.hex")) == 2)
            writeFile(bench.served(NewImage), GoodImage);
        return std::nullopt;
    };
    bench.run(RetrievalBench::FTP);
    EXPECT_EQ(bench.files(), bothFiles());
    EXPECT_FALSE(bench.hasLogged(QStringLiteral("Unable to copy file \"VLX720FP0125.hex\"")));
}

TEST(FTPDownload, RefusesALiveSyncFolderWithoutAnyTraffic) {
    RetrievalBench bench(QStringLiteral("sync m7ft/images/"));
    ScriptedServer server(bench.root());
    bench.use(server.port());
    bench.run(RetrievalBench::FTP);
    EXPECT_EQ(server.replies, 0);
    EXPECT_EQ(bench.dialogs.beeps, 1);
    EXPECT_EQ(
        bench.dialogs.shown,
        QStringList(QStringLiteral(
            "The VLX Utility cannot copy files into a Live Sync folder. Change to a folder that does not "
            "have \"M7FT\" in its path.")));
    EXPECT_EQ(bench.log,
              QStringList({QStringLiteral("The VLX Utility cannot copy files into a Live Sync folder."),
                           QStringLiteral("Change to a folder that does not have \"M7FT\" in its path.")}));
}

TEST(FTPDownload, LeavesTheFolderAsItWasWhenItCannotBeWritten) {
    {
        FTPBench bench;
        const DiskLimit full(8);
        bench.run(RetrievalBench::FTP);
        EXPECT_TRUE(bench.hasLogged(QStringLiteral("Unable to copy file \"VLX720FP0125.hex\"")));
        EXPECT_EQ(bench.log.filter(QStringLiteral("Error writing local file")).size(), 1);
        EXPECT_EQ(readFile(bench.local(NotesName)), "old notes");
    }
    FTPBench bench;
    bench.server.answer = [&](const QString& command) -> std::optional<QByteArray> {
        if (command == u"NLST") {
            EXPECT_TRUE(QDir(bench.globals.m_FolderPath).removeRecursively());
        }
        return std::nullopt;
    };
    bench.run(RetrievalBench::FTP);
    EXPECT_TRUE(bench.hasLogged(QStringLiteral("Unable to copy file \"VLX720FP0125.hex\"")));
    EXPECT_FALSE(QFileInfo::exists(bench.globals.m_FolderPath));

    FTPBench nobodys;
    nobodys.globals.m_FolderPath = QStringLiteral("/sys/kernel/");
    nobodys.run(RetrievalBench::FTP);
    EXPECT_EQ(nobodys.log.filter(QStringLiteral("Cannot write into the folder \"/sys/kernel/\".")).size(), 1);
    EXPECT_EQ(nobodys.sent(QStringLiteral("RETR VLX720FP0125.hex")), 0);
}

TEST(FTPDownload, KeepsNothingOfAServerThatSendsTooMuch) {
    const QByteArray record = ":0108000000F7\r\n";
    {
        FTPBench grown;
        grown.server.transferNote = " (" + QByteArray::number(GoodImage.size() - 1) + " bytes)";
        grown.run(RetrievalBench::FTP);
        EXPECT_TRUE(grown.hasLogged(QStringLiteral("Unable to copy file \"VLX720FP0125.hex\"")));
        EXPECT_FALSE(QFileInfo::exists(grown.local(NewImage)));
    }
    FTPBench endless;
    writeFile(endless.served(NewImage), record.repeated(FetchedFiles::MaxSize / record.size() + 100'000));
    endless.run(RetrievalBench::FTP);
    EXPECT_TRUE(endless.hasLogged(QStringLiteral("Error: The server sends more than can be wanted.")));
    EXPECT_FALSE(QFileInfo::exists(endless.local(NewImage)));
    endless.server.fixedListing = QByteArray("VLX720FP0125.hex\r\n").repeated(400'000);
    endless.run(RetrievalBench::FTP);
    EXPECT_EQ(endless.dialogs.shown,
              QStringList(QStringLiteral("Error getting directory listing from ftp server.")));
}

TEST(FTPDownload, SweepsWhatARunThatWasKilledLeft) {
    FTPBench bench;
    const QString rest = bench.local(QStringLiteral(".vlxcopying/VLX720FP0999.hex"));
    const QString elsewhere = bench.world.filePath(QStringLiteral("elsewhere/file"));
    writeFile(rest, GoodImage);
    EXPECT_TRUE(bench.clock.run(bench.folder.Checklocalfiles()));
    EXPECT_EQ(bench.panel.available, QStringLiteral("01.24"));
    FetchedFiles::sweep(bench.globals.m_FolderPath.chopped(1));
    EXPECT_FALSE(QFileInfo::exists(rest));

    writeFile(elsewhere, "mine");
    EXPECT_TRUE(QFile::link(QFileInfo(elsewhere).path(), bench.local(QStringLiteral(".vlxcopying"))));
    bench.run(RetrievalBench::FTP);
    EXPECT_EQ(readFile(elsewhere), "mine");
    EXPECT_EQ(bench.files(), bothFiles());
}

TEST(FTPDownload, WaitsForTheLineAndLeavesItAloneMeanwhile) {
    FTPBench bench;
    std::optional<LineOwner::Guard> load(bench.line.take());
    bench.start(RetrievalBench::FTP);
    EXPECT_TRUE(bench.turnUntil([&] { return bench.hasLogged(QStringLiteral("Logoff Complete.")); }));
    bench.clock.advance(std::chrono::seconds(10));
    EXPECT_EQ(bench.line_and_log.filter(QStringLiteral("out ")), QStringList());
    load.reset();
    bench.finish();
    EXPECT_EQ(bench.notices, 1);
}

TEST(FTPDownload, OneRunAtATimeAndItCanBeGivenUp) {
    for (const char* command : {"USER anonymous", "CWD /VLX/firmware", "NLST", "RETR VLX720FP0125.hex"}) {
        FTPBench bench;
        bench.server.answer = [&](const QString& text) -> std::optional<QByteArray> {
            if (text != QLatin1String(command))
                return std::nullopt;
            return QByteArray();
        };
        bench.start(RetrievalBench::FTP);
        EXPECT_TRUE(bench.turnUntil([&] { return bench.sent(QString::fromLatin1(command)) > 0; }));
        EXPECT_TRUE(bench.panel.canCopy) << "enabled during the run";
        EXPECT_TRUE(bench.panel.isCopying);
        for (const auto route : {RetrievalBench::FTP, RetrievalBench::curl})
            EXPECT_TRUE(((*bench.retrieval).*route)().isDone());
        EXPECT_EQ(bench.log.count(QStringLiteral("Files are being copied from Tessarin already.")), 2);
        bench.retrieval->giveUp();
        bench.retrieval->giveUp();
        bench.finish();
        EXPECT_EQ(bench.log.last(), QStringLiteral("Copying from Tessarin was given up.")) << command;
        EXPECT_EQ(bench.dialogs.shown, QStringList());
        EXPECT_EQ(readFile(bench.local(NotesName)), "old notes");
    }
}

// The bench's end asserts that no wait, session or file is left.
TEST(FTPDownload, CanBeCancelledAtEachStep) {
    for (int number = 0; number < 24; ++number) {
        FTPBench bench;
        bench.start(RetrievalBench::FTP);
        EXPECT_TRUE(bench.turnUntil([&] { return bench.server.replies > number || bench.isDone(); }));
        bench.cancel();
    }
}

}  // namespace
