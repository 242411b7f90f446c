// The curl route: the real program, and programs of its name that do what it must not.
#include "RetrievalBench.h"
#include "ScriptedServer.h"

namespace {

const QString NewImage = QStringLiteral("VLX720FP0125.hex");
const QString NotesName = QStringLiteral("vlxfwnotes.rtf");

struct CurlBench : RetrievalBench {
    CurlBench() {
        writeFile(served(NewImage), GoodImage);
        writeFile(served(QStringLiteral("VLX720FP0124.hex")), GoodImage);
        writeFile(served(NotesName), Notes);
        writeFile(local(QStringLiteral("VLX720FP0124.hex")), GoodImage);
        writeFile(local(NotesName), "old notes");
        use(server.port());
    }
    bool hasLogged(const QString& text) const { return log.contains(text); }

    ScriptedServer server{root()};
};

// A program called curl that is found before the real one, or alone.
class FakeCurl {
public:
    explicit FakeCurl(const QByteArray& script) : m_path(qgetenv("PATH")) {
        writeFile(m_folder.filePath(QStringLiteral("curl")), "#!/bin/sh\n" + script);
        QFile::setPermissions(m_folder.filePath(QStringLiteral("curl")), QFile::Permissions(0x7700));
        qputenv("PATH", m_folder.path().toUtf8() + ':' + m_path);
    }
    FakeCurl(const FakeCurl&) = delete;
    FakeCurl& operator=(const FakeCurl&) = delete;
    ~FakeCurl() { qputenv("PATH", m_path); }

    void remove() const { qputenv("PATH", m_folder.filePath(QStringLiteral("nowhere")).toUtf8()); }
    QString path(const QString& name) const { return m_folder.filePath(name); }

private:
    QTemporaryDir m_folder;
    QByteArray m_path;
};

TEST(cURLdownload, FetchesVerifiesAndTells) {
    CurlBench bench;
    bench.run(RetrievalBench::curl);
    EXPECT_EQ(
        bench.log,
        QStringList({QStringLiteral("Connecting to ftp.tessarin.example. Please be patient, this takes "
                                    "a few seconds."),
                     QStringLiteral("Connected to Tessarin server."),
                     QStringLiteral("Copying files to \"%1\"").arg(bench.globals.m_FolderPath),
                     QStringLiteral("Copied 2 files from Tessarin."),
                     QStringLiteral("New firmware is available for your VLX720"), QStringLiteral("Ready")}));
    EXPECT_EQ(readFile(bench.local(NewImage)), GoodImage);
    EXPECT_EQ(readFile(bench.local(NotesName)), Notes);
    EXPECT_EQ(bench.panel.installed, QStringLiteral("01.23"));
    EXPECT_EQ(bench.notices, 1);

    bench.log.clear();
    bench.server.commands.clear();
    bench.run(RetrievalBench::curl);
    EXPECT_EQ(bench.log.at(1),
              QStringLiteral("Your folder has the most recent VLX firmware files from Tessarin."));
    EXPECT_EQ(bench.server.commands.filter(QStringLiteral("RETR")), QStringList());
}

TEST(cURLdownload, ANameOfTheServerIsOnlyAName) {
    const QString name = QStringLiteral("VLX720FP0126 [1-9]{a,b}%41#?; touch y $(z) é.hex");
    CurlBench bench;
    writeFile(bench.served(name), GoodImage);
    bench.run(RetrievalBench::curl);
    EXPECT_EQ(readFile(bench.local(name)), GoodImage);
    EXPECT_EQ(bench.files().size(), 3);
    EXPECT_TRUE(bench.hasLogged(QStringLiteral("Copied 2 files from Tessarin.")));
}

TEST(cURLdownload, NothingHalfIsKept) {
    struct Row {
        const char* name;
        QByteArray image;
        const char* refused;  // a command of the client
        bool hasImage, hasNotes;
    };
    const Row rows[] = {
        {"damaged", DamagedImage, nullptr, false, true},
        {"cut between two records", GoodImage.first(15), nullptr, false, true},
        {"no image", GoodImage, "RETR VLX720FP0125.hex", false, true},
        {"no notes", GoodImage, "RETR vlxfwnotes.rtf", true, false},
    };
    for (const Row& row : rows) {
        CurlBench bench;
        writeFile(bench.served(NewImage), row.image);
        bench.server.answer = [&](const QString& command) -> std::optional<QByteArray> {
            if (!row.refused || command != QLatin1String(row.refused))
                return std::nullopt;
            return QByteArray("550 Not here.\r\n");
        };
        bench.run(RetrievalBench::curl);
        EXPECT_EQ(QFileInfo::exists(bench.local(NewImage)), row.hasImage) << row.name;
        EXPECT_EQ(readFile(bench.local(NotesName)), row.hasNotes ? Notes : QByteArray("old notes"))
            << row.name;
        EXPECT_EQ(bench.log.filter(QStringLiteral("Unable to copy file")),
                  QStringList(
                      QStringLiteral("Unable to copy file \"%1\"").arg(row.hasImage ? NotesName : NewImage)))
            << row.name;
        EXPECT_TRUE(bench.hasLogged(QStringLiteral("Copied 1 files from Tessarin."))) << row.name;
    }
}

TEST(cURLdownload, EndsWithAClearLineWhateverCurlDoes) {
    struct Row {
        const char* name;
        QByteArray script;
        QStringList lines;
    };
    const QString unable = QStringLiteral("Unable to connect to Tessarin server. Error: ");
    const QString slow = QStringLiteral("curl was ended: next to nothing came for 60 seconds.");
    const Row rows[] = {
        {"refused", "exit 7", {unable + u'7'}},
        {"killed", "kill -9 $$", {unable + QStringLiteral("137")}},
        {"a listing without an end",
         "exec head -c 67108864 /dev/zero | tr '\\0' 'a'",
         {QStringLiteral("The list of files from Tessarin is too long.")}},
        {"a page",
         "printf '\\r\\n <html><a href=\"VLX720FP0999.hex\">VLX720FP0999.hex</a></html>'",
         {QStringLiteral("The answer from Tessarin is no list of files.")}},
        {"never ends", "sleep 600", {slow}},
        {"dribbles", "while :; do printf '#' >&2; sleep 0.01; done", {slow}},
        {"bare Returns",
         "printf '####\\r##### 100.0%%\\r\\n' >&2; printf 'VLX720FP0001.hex\\rVLX720FP0124.hex\\r'",
         {QStringLiteral("Your folder has the most recent VLX firmware files from Tessarin."),
          QStringLiteral("New firmware is available for your VLX720")}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const FakeCurl curl(row.script + '\n');
        CurlBench bench;
        bench.start(RetrievalBench::curl);
        settle(30);
        if (row.script.contains("sleep"))
            bench.clock.advance(std::chrono::seconds(61));
        bench.finish();
        EXPECT_EQ(bench.log.mid(1, bench.log.size() - 2), row.lines);
        EXPECT_EQ(bench.log.last(), QStringLiteral("Ready"));
    }
    const FakeCurl curl("");
    curl.remove();
    CurlBench bench;
    bench.run(RetrievalBench::curl);
    EXPECT_EQ(bench.log.filter(QStringLiteral("The program \"curl\" cannot be started: ")).size(), 1);
    EXPECT_TRUE(bench.hasLogged(unable + QStringLiteral("127")));
}

// What curl tells of the downloads, in pieces and in another version's words.
TEST(cURLdownload, ReadsWhatCurlTells) {
    const FakeCurl curl(R"(case "$*" in *-l*) printf 'VLX720FP0125.hex\n'; exit 0;; esac
printf '* Trying...\r\n* Connec' >&2; sleep 0.05; printf 'ted to x port 21 (#0)\n* connected again to the host that was left before, it says\n' >&2
printf '< 150 Opening BINARY mode data connection for VLX720FP0125.hex (31 bytes).\r\n' >&2
printf '\r###   12.5%%\r#####   50.0%%' >&2; sleep 0.05; printf '\r##########  100.0%%\n' >&2
printf 'BINARY mode data\nhalf a line' >&2
printf ':0108000000F7\n:00000001FF\n' > VLX720FP0125.hex
printf 'notes' > vlxfwnotes.rtf
)");
    CurlBench bench;
    bench.globals.m_Verbose = true;
    bench.run(RetrievalBench::curl);
    const QStringList told = bench.log.mid(bench.log.indexOf(QStringLiteral("* Trying...")));
    EXPECT_EQ(
        told.first(9),
        QStringList(
            {QStringLiteral("* Trying..."), QStringLiteral("* Connected to x port 21 (#0)"),
             QStringLiteral("Connected to Tessarin server."),
             QStringLiteral("Copying files to \"%1\"").arg(bench.globals.m_FolderPath),
             QStringLiteral("* connected again to the host that was left before, it says"),
             QStringLiteral("< 150 Opening BINARY mode data connection for VLX720FP0125.hex (31 bytes)."),
             QStringLiteral("Copied \"VLX720FP0125.hex\" from Tessarin"), QStringLiteral("BINARY mode data"),
             QStringLiteral("\"VLX720FP0125.hex\" verification succeeded")}));
    EXPECT_TRUE(bench.hasLogged(QStringLiteral("Copied 2 files from Tessarin.")));
    EXPECT_TRUE(bench.progress.contains(QStringLiteral("Copying \"VLX720FP0125.hex\": 12.5%")))
        << bench.progress.join(u'|').toStdString();
}

TEST(cURLdownload, GivesCurlTheToldArgumentsInTheFolder) {
    const FakeCurl curl(
        "printf '%s\\n' \"$PWD\" \"$@\" >> \"$(dirname \"$0\")/calls\"; printf 'VLX720FP0125.hex\\n'\n");
    CurlBench bench;
    bench.run(RetrievalBench::curl);
    const QString url = QStringLiteral("ftp://127.0.0.1:%1/VLX/firmware/").arg(bench.server.port());
    const QStringList calls =
        QString::fromUtf8(readFile(curl.path(QStringLiteral("calls")))).split(u'\n', Qt::SkipEmptyParts);
    EXPECT_EQ(calls.mid(1, 3), QStringList({QStringLiteral("-#"), QStringLiteral("-l"), url}));
    EXPECT_EQ(calls.mid(4), QStringList({bench.local(QStringLiteral(".vlxcopying")), QStringLiteral("-#"),
                                         QStringLiteral("-v"), QStringLiteral("-O"), url + NewImage,
                                         QStringLiteral("-O"), url + NotesName}));
}

// Nor does it leave anything running that it has started itself.
TEST(cURLdownload, EndsACurlWhoseImageHasNoEnd) {
    const FakeCurl curl(R"(case "$*" in *-l*) echo VLX720FP0125.hex; exit 0;; esac
head -c 20000000 /dev/zero > VLX720FP0125.hex
sleep 600 & echo $! > "$(dirname "$0")/pid"; wait
)");
    CurlBench bench;
    bench.run(RetrievalBench::curl);
    EXPECT_TRUE(bench.hasLogged(QStringLiteral("curl was ended: more came than can be wanted.")));
    EXPECT_TRUE(bench.hasLogged(QStringLiteral("Unable to copy file \"VLX720FP0125.hex\"")));
    EXPECT_FALSE(QFileInfo::exists(bench.local(NewImage)));
    const QByteArray state =
        readFile(QStringLiteral("/proc/%1/stat").arg(readFile(curl.path(QStringLiteral("pid"))).toInt()));
    EXPECT_FALSE(state.contains(") S ")) << state.toStdString();
}

TEST(cURLdownload, CanBeGivenUpAndCancelledInBothCalls) {
    for (const bool isListing : {true, false}) {
        for (const bool isGivenUp : {true, false}) {
            const FakeCurl curl(isListing ? "exec sleep 600\n"
                                          : "case \"$*\" in *-l*) echo VLX720FP0125.hex; exit 0;; esac\n"
                                            "printf ':01' > VLX720FP0125.hex; exec sleep 600\n");
            CurlBench bench;
            bench.start(RetrievalBench::curl);
            EXPECT_FALSE(bench.panel.canCopy) << "disabled during the run";
            EXPECT_TRUE(bench.turnUntil([&] {
                return bench.retrieval->cURLdownload1.MyShell.IsRunning() &&
                       bench.retrieval->cURLdownload1.gettingDIR == isListing &&
                       (isListing ||
                        QFileInfo::exists(bench.local(QStringLiteral(".vlxcopying/") + NewImage)));
            }));
            if (isGivenUp) {
                bench.retrieval->giveUp();
                bench.finish();
                EXPECT_TRUE(bench.hasLogged(QStringLiteral("Copying from Tessarin was given up.")));
                EXPECT_EQ(bench.log.last(), QStringLiteral("Ready"));
            }
            bench.cancel();
            EXPECT_FALSE(QFileInfo::exists(bench.local(NewImage)));
            EXPECT_EQ(readFile(bench.local(NotesName)), "old notes");
        }
    }
}

}  // namespace
