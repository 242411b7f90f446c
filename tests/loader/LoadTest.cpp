// Whole loads: what passes the line, what the user reads, and what then stands in the amplifier.
#include "LoadBench.h"

using State = Vlx720::State;
using Kind = Misbehaviour::Kind;

namespace {

struct WholeLoad : LoadBench, LoadView {
    using LoadBench::LoadBench;

    // As the user sees it: from the button to the last message.
    bool load() {
        log.clear();
        port.clearWritten();
        Task<bool> flow = loader.Load(*this);
        EXPECT_TRUE(clock.run(flow));
        EXPECT_FALSE(line.isTaken());
        return flow.result();
    }
    // What the messages tell the user to do after a failure.
    bool removePowerAndLoadAgain() {
        amplifier.behave();
        amplifier.powerOff();
        clock.advance(std::chrono::seconds(1));
        amplifier.powerOn();
        clock.advance(std::chrono::seconds(1));
        return load();
    }

    void setProgressBar1Maximum(int maximum) override { progress += QStringLiteral("of %1").arg(maximum); }
    void setProgressBar1Value(int value) override { progress += QString::number(value); }

    QStringList progress;
};

// A build without optimisation tries every seventh place only where all places are tried.
#ifdef NDEBUG
constexpr int Thinning = 1;
#else
constexpr int Thinning = 7;
#endif

const QString ProgrammingFailed =
    QStringLiteral("VLX programming failed.\n\nRemove power and re-try the firmware load.");
const QString FinalBlockFailed = QStringLiteral("VLX firmware final block load failed.");

TEST(Load, TellsTheWholeConversation) {
    WholeLoad bench(State::Main);
    bench.globals.m_Verbose = true;
    bench.globals.m_loadingfirmware = true;
    QStringList said;
    bench.globals.ActivityLog = [&](const QString& line) { said += line.chopped(1); };
    bench.port.Written = [&](const QByteArray& bytes) {
        said += bytes.size() == ImageBlock::Length ? QStringLiteral("> block")
                                                   : QStringLiteral("> ") + QString::fromLatin1(bytes);
    };
    const QByteArray image = QByteArray(16, '\0') + "VLX720FP0105" + QByteArray(99, '\x11') + '\0';
    bench.install(HexText::file(image));
    EXPECT_TRUE(bench.load());

    const auto hex = [](const QByteArray& block) { return QString::fromLatin1(block.toHex().toUpper()); };
    const QByteArray blocks = Image::wireBlocks(image);
    const QStringList expected{
        QStringLiteral("VLX firmware file \"VLX720FP0105.hex\" verified"),
        QStringLiteral("> ^LDM;"),
        QStringLiteral("Send \"D\""),
        QStringLiteral("> D"),
        QStringLiteral("Response \"D\"   \"-5 msec"),
        QStringLiteral("Sending firmware file \"VLX720FP0105.hex\" to VLX"),
        QStringLiteral("VLX firmware file checksum word is x0000"),
        QStringLiteral("Send 68 bytes x") + hex(blocks.left(68)),
        QStringLiteral("> block"),
        QStringLiteral("Response \"A\"    \"20 msec"),
        QStringLiteral("Send 68 bytes x") + hex(blocks.mid(68, 68)),
        QStringLiteral("> block"),
        QStringLiteral("Response \"A\"    \"20 msec"),
        QStringLiteral("VLX checksum was replaced with computed value 0x") +
            hex(Image::loaded(image).left(2)),
        QStringLiteral("Send 68 bytes x") + hex(blocks.right(68)),
        QStringLiteral("> block"),
        QStringLiteral("Response \"B\"    \"20 msec"),
        QStringLiteral("> P;"),
        QStringLiteral("Waiting for VLX reset to complete"),
        QStringLiteral("> ;"),
        QStringLiteral("> ;;;;;"),
        QStringLiteral("> I;"),
        QStringLiteral("Send \"^RVM;\""),
        QStringLiteral("> ^RVM;"),
        QStringLiteral("Response \"^RVM01.05;\"   5 msec"),
        QStringLiteral("Loaded VLX firmware version 01.05\nVLX responded with version 01.05"),
        QStringLiteral("VLX firmware load is complete"),
    };
    EXPECT_EQ(said.join(u'\n'), expected.join(u'\n'));
    EXPECT_EQ(bench.panel.installedHistory,
              QStringList({QStringLiteral("Loading"), QStringLiteral("01.05")}));
    EXPECT_EQ(bench.clock.pendingWaits(), 0);
}

struct WireCase {
    const char* name;
    QByteArray hexText;
    QByteArray image;  // what must arrive
};

std::vector<WireCase> wireCases() {
    using namespace HexText;
    const QByteArray full = Image::make(Image::FullBlocks);
    const QByteArray small = Image::make(3);
    const QByteArray sixteen(16, '\x77');
    const QByteArray opening = record(4, 0, QByteArray(2, '\0'));
    return {
        {"full image", file(full), full},
        {"word in the file", file(Image::loaded(small)), Image::loaded(small)},
        {"boot loader below is not sent", dataRecords(0, QByteArray(0x800, '\x55')) + file(small), small},
        {"nothing beyond the window", dataRecords(0x800, full + QByteArray(0x280, '\x66')) + end(), full},
        {"records of other lengths",
         opening + record(0, 0x800, sixteen.left(15)) + record(0, 0x800, QByteArray(17, 'x')) + file(small),
         small},
        {"half a block at the end", dataRecords(0x800, small + sixteen.repeated(3)) + end(), small},
        {"records from 0x20000 on end it",
         dataRecords(0x800, small) + record(4, 0, QByteArray::fromHex("0002")) + record(0, 0x800, sixteen) +
             file(small),
         small},
        {"no end record", file(small).chopped(15), small},
    };
}

TEST(Load, SendsExactlyTheImage) {
    for (const WireCase& row : wireCases()) {
        WholeLoad bench(State::Waiting);
        bench.install(row.hexText);
        bench.load();
        const QByteArray expected = "D" + Image::wireBlocks(row.image) + "P;";
        EXPECT_TRUE(bench.port.written().startsWith(expected)) << row.name;
        // Sensing follows, and not one block more.
        EXPECT_LT(bench.port.written().size(), expected.size() + ImageBlock::Length) << row.name;
        EXPECT_EQ(bench.clock.pendingWaits(), 0) << row.name;
    }
}

TEST(Load, SendsNothingUnlessTheFileIsGood) {
    const QByteArray good = HexText::file(Image::make(3));
    struct Row {
        const char* name;
        std::optional<QByteArray> file;
        QStringList said;
    };
    const Row rows[] = {
        {"last checksum",
         good.chopped(4) + "00\r\n",
         {QStringLiteral("Intel Hex checksum verification failed")}},
        {"no such file", std::nullopt, {}},
    };
    for (const Row& row : rows) {
        WholeLoad bench(State::Main);
        if (row.file)
            bench.install(*row.file);
        const QString name = bench.versionedFilename.m_mstrPath;
        EXPECT_FALSE(bench.load());
        EXPECT_EQ(bench.port.written(), QByteArray()) << row.name;
        EXPECT_EQ(bench.log,
                  row.said + QStringList(
                                 {QStringLiteral("Verification of VLX firmware file \"%1\" failed").arg(name),
                                  ProgrammingFailed}));
    }
}

TEST(Load, ReachesTheAmplifierWhateverItsSpeedAndState) {
    const QByteArray image = Image::make(5);
    for (const int speed : {38400, 19200, 9600, 4800}) {
        WholeLoad bench(State::Main);
        bench.amplifier.setSpeed(speed);
        bench.install(HexText::file(image));
        Task<bool> sensing = bench.radioState.Refresh(1);
        ASSERT_TRUE(bench.clock.run(sensing));
        EXPECT_TRUE(bench.load()) << speed;
        EXPECT_TRUE(bench.holds(image)) << speed;
        EXPECT_TRUE(bench.port.written().startsWith("^LDM;D")) << speed;
        EXPECT_EQ(bench.globals.m_FirmwareStatus, FirmwareStatus::Main) << speed;
    }
}

TEST(Load, NeedsAnEcho) {
    WholeLoad bench(State::Off);
    bench.globals.m_Verbose = true;
    bench.install(HexText::file(Image::make(3)));
    EXPECT_FALSE(bench.load());
    EXPECT_EQ(bench.port.written(), "^LDM;D");
    EXPECT_EQ(bench.log.mid(1),
              QStringList({QStringLiteral("Send \"D\""), QStringLiteral("Response \"\"   \"-20020 msec"),
                           QStringLiteral("VLX Bootstrap Loader did not echo \"D\""),
                           QStringLiteral("Remove VLX power and retry firmware load"), ProgrammingFailed}));
}

TEST(Load, WorksOutTheChecksumWordWhereItCan) {
    QByteArray zeroSum(128, '\0');
    zeroSum[2] = '\x01';
    zeroSum[64] = '\xFF';
    const QByteArray second(64, '\x11');
    QByteArray otherwiseEmpty(64, '\0');
    otherwiseEmpty.replace(0, 2, Image::loaded(QByteArray(2, '\0') + second).left(2));
    struct Row {
        const char* name;
        QByteArray records;
        QByteArray blocks;
        QString lastButOne;
    };
    const Row rows[] = {
        {"sums to 0 without it", HexText::dataRecords(0x800, zeroSum),
         Image::wireBlocks(zeroSum).left(2 * 68), QStringLiteral("VLX checksum error")},
        {"no block at 0x800", HexText::dataRecords(0x840, second),
         Image::wireBlock(second, 0x840, 0) + Image::wireBlock(otherwiseEmpty, 0, 2), FinalBlockFailed},
    };
    for (const Row& row : rows) {
        WholeLoad bench(State::Waiting);
        bench.install(row.records + HexText::end());
        EXPECT_FALSE(bench.load()) << row.name;
        EXPECT_EQ(bench.log.mid(bench.log.size() - 2), QStringList({row.lastButOne, ProgrammingFailed}));
        EXPECT_EQ(bench.port.written().left(1 + row.blocks.size()), "D" + row.blocks) << row.name;
    }
}

TEST(Load, JudgesByTheVersionThatComesBack) {
    const QByteArray unstamped = QByteArray(2, '\0') + QByteArray(62, '\x42');
    struct Row {
        const char* name;
        QString available;
        Clock::Microseconds startTime;
        bool isGood;
        QString lastMessage;
    };
    const QString mismatch = QStringLiteral("VLX verification failed. Reload VLX firmware.");
    const Row rows[] = {
        {"the same", QStringLiteral("01.23"), std::chrono::seconds(1), true,
         QStringLiteral("VLX firmware load is complete")},
        {"after a slow start", QStringLiteral("01.23"), std::chrono::seconds(9), true,
         QStringLiteral("VLX firmware load is complete")},
        {"another one counts as success", QStringLiteral("01.24"), std::chrono::seconds(1), true, mismatch},
        {"no answer", QStringLiteral("01.23"), std::chrono::hours(1), false, ProgrammingFailed},
    };
    for (const Row& row : rows) {
        WholeLoad bench(State::Waiting);
        bench.amplifier.settings().mainStartTime = row.startTime;
        bench.install(HexText::file(unstamped));
        bench.panel.available = row.available;
        EXPECT_EQ(bench.load(), row.isGood) << row.name;
        EXPECT_EQ(bench.log.last(), row.lastMessage) << row.name;
        EXPECT_EQ(bench.log.contains(mismatch),
                  row.lastMessage != QStringLiteral("VLX firmware load is complete"));
    }
}

TEST(Load, MovesTheBarWithTheImage) {
    WholeLoad bench(State::Waiting);
    const QByteArray text = HexText::file(Image::make(9));
    bench.install(text);
    bench.load();
    EXPECT_EQ(bench.progress,
              QStringList({QStringLiteral("of %1").arg(text.size() / 128), QStringLiteral("44"),
                           QStringLiteral("50"), QStringLiteral("55"), QStringLiteral("of 0")}));
}

// One answer goes wrong, whichever it is and however: the load succeeds, or the next one does.
TEST(Load, SurvivesAnyOneBadAcknowledgement) {
    constexpr int blocks = 6;
    const QByteArray image = Image::make(blocks);
    for (const NamedMisbehaviour& named : namedMisbehaviours()) {
        for (int nth = 1; nth <= 1 + blocks + 1; ++nth) {
            WholeLoad bench(State::Waiting);
            bench.install(HexText::file(image));
            Misbehaviour misbehaviour = named.example;
            misbehaviour.nth = nth;
            bench.amplifier.misbehave(misbehaviour);
            const bool isGood = bench.load() || bench.removePowerAndLoadAgain();
            EXPECT_TRUE(isGood) << named.name.data() << ' ' << nth;
            EXPECT_TRUE(bench.holds(image)) << named.name.data() << ' ' << nth;
            EXPECT_EQ(bench.clock.pendingWaits(), 0);
        }
    }
}

TEST(Load, TellsOfRetries) {
    WholeLoad bench(State::Waiting);
    bench.globals.m_Verbose = true;
    bench.install(HexText::file(Image::make(3)));
    bench.amplifier.misbehave({.kind = Kind::ByteLost, .nth = 1 + 68 + 10});
    EXPECT_TRUE(bench.load());
    // No dump of the block: it is for the log of the window of a load.
    EXPECT_EQ(bench.log.mid(7, 5),
              QStringList({QStringLiteral("Send 68 bytes x"), QStringLiteral("Response \"\"    \"2510 msec"),
                           QStringLiteral("Retry 1 successful at addresss x870, 0 fill bytes"),
                           QStringLiteral("Response \"A\"    \"20 msec"),
                           QStringLiteral("Retry 1 successful at address 2160")}));
}

TEST(Load, SendsEachBlockTenTimesAtMost) {
    WholeLoad bench(State::Waiting);
    const QByteArray image = Image::make(1);
    bench.install(HexText::file(image));
    bench.port.Written = [&bench](const QByteArray& bytes) {
        if (bytes.size() == ImageBlock::Length && bench.log.size() == 2)
            bench.amplifier.misbehave({.kind = Kind::WrongBytes});
    };
    EXPECT_FALSE(bench.load());
    const QByteArray blocks = Image::wireBlocks(image);
    const QByteArray fill(68, 'N');
    EXPECT_EQ(bench.port.written(),
              "D" + (blocks.left(68) + fill).repeated(10) + (blocks.right(68) + fill).repeated(10));
    const QStringList retries =
        bench.log.filter(QStringLiteral(" successful at addresss x830, 67 fill bytes"));
    EXPECT_EQ(retries.size(), 20);
    EXPECT_TRUE(retries.last().startsWith(QStringLiteral("Retry 10 ")));
    EXPECT_TRUE(bench.log.contains(QStringLiteral("VLX Block write failed at address: 2048")));
}

TEST(Load, EndsWhenTheFileShrinksUnderIt) {
    const QByteArray image = Image::make(2000);
    const QByteArray hexText = HexText::file(image);
    WholeLoad bench(State::Waiting);
    bench.install(hexText);
    bench.port.Written = [&bench](const QByteArray& bytes) {
        if (bytes == "D") {
            EXPECT_TRUE(QFile::resize(bench.globals.m_FolderPath + bench.versionedFilename.m_mstrPath, 1000));
        }
    };
    bench.load();
    EXPECT_EQ(bench.log.at(2), QStringLiteral("End File record was not found"));
    bench.port.Written = nullptr;
    bench.install(hexText);
    EXPECT_TRUE(bench.removePowerAndLoadAgain());
    EXPECT_TRUE(bench.holds(image));
}

// Whatever byte goes wrong on its way out, or is the last that the amplifier hears.
TEST(Load, SurvivesAnyOneByteLostFlippedOrLast) {
    const QByteArray image = Image::make(2);
    const int bytes = 1 + 3 * 68 + 2;
    for (const Kind kind : {Kind::ByteLost, Kind::ByteFlipped, Kind::PowerLoss}) {
        for (int nth = 1; nth <= bytes; nth += Thinning) {
            WholeLoad bench(State::Waiting);
            bench.install(HexText::file(image));
            bench.amplifier.misbehave({.kind = kind, .nth = nth});
            const bool isGood = bench.load() || bench.removePowerAndLoadAgain();
            EXPECT_TRUE(isGood) << nth;
            EXPECT_TRUE(bench.holds(image)) << nth;
        }
    }
}

// Power goes in the middle of each block of a full image, and of the final one. In shards, so that all cores
// of the test machine have their share.
constexpr int Shards = 16;

class PowerLoss : public testing::TestWithParam<int> {};

TEST_P(PowerLoss, AtAnyBlockIsMendedByTheNextLoad) {
    const QByteArray image = Image::make(Image::FullBlocks);
    const QByteArray hexText = HexText::file(image);
    for (int block = GetParam(); block <= Image::FullBlocks; block += Thinning * Shards) {
        WholeLoad bench(State::Waiting);
        bench.port.setInstantLine(true);
        bench.install(hexText);
        bench.amplifier.misbehave({.kind = Kind::PowerLoss, .nth = 1 + 68 * block + 34});
        ASSERT_FALSE(bench.load()) << block;
        QStringList expected = bench.log.mid(0, 2);
        if (block < Image::FullBlocks)
            expected += QStringLiteral("VLX Block write failed at address: %1").arg(0x800 + 64 * block);
        ASSERT_EQ(bench.log, expected << FinalBlockFailed << ProgrammingFailed);
        ASSERT_TRUE(bench.removePowerAndLoadAgain()) << block;
        ASSERT_TRUE(bench.holds(image)) << block;
        ASSERT_EQ(bench.clock.pendingWaits(), 0);
    }
}

INSTANTIATE_TEST_SUITE_P(Shard, PowerLoss, testing::Range(0, Shards));

}  // namespace
