// Whole loads: what passes the line, what the user reads, and what then stands in the amplifier.
#include "LoadBench.h"

using State = Vlx720::State;
using Kind = Misbehaviour::Kind;
using namespace std::chrono_literals;

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

    void setProgressBar1Maximum(int) override {}
    void setProgressBar1Value(int) override {}
    void showLongWait(const QString&, std::chrono::seconds) override {}
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

struct WireCase {
    const char* name;
    QByteArray hexText;
    QByteArray image;  // what must arrive
    const char* objection = nullptr;
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
         small, "The firmware file has a record of 15 bytes at address 0x800, which cannot be sent."},
        {"half a block at the end", dataRecords(0x800, small + sixteen.repeated(3)) + end(), small,
         "The firmware file ends with an incomplete block at address 0x8F0."},
        {"records from 0x20000 on end it",
         dataRecords(0x800, small) + record(4, 0, QByteArray::fromHex("0002")) + record(0, 0x800, sixteen) +
             file(small),
         small},
        {"no end record", file(small).chopped(15), small,
         "The firmware file has no end record. It may have been cut off."},
        {"no address record", file(small).mid(17), small,
         "The firmware file does not begin with an address record."},
        {"data of no bytes", opening + record(0, 0x800) + file(small), small},
    };
}

TEST(Load, SendsExactlyTheImage) {
    for (const WireCase& row : wireCases()) {
        WholeLoad bench(State::Waiting);
        bench.install(row.hexText);
        bench.dialogs.cautionAnswers = {false};
        EXPECT_TRUE(bench.load()) << row.name;
        EXPECT_EQ(bench.dialogs.shown.join(u' ').toStdString(),
                  row.objection ? row.objection + std::string("\nSend it anyway?") : "")
            << row.name;
        const QByteArray expected = "D" + Image::wireBlocks(row.image) + "P;";
        EXPECT_TRUE(bench.port.written().startsWith(expected)) << row.name;
        // Sensing follows, and not one block more.
        EXPECT_LT(bench.port.written().size(), expected.size() + ImageBlock::Length) << row.name;
        EXPECT_EQ(bench.clock.pendingWaits(), 0) << row.name;
    }
}

// What is sent then is told by the rows above; here the user takes the default.
TEST(Load, AsksBeforeItSendsWhatIsNoWholeImage) {
    using namespace HexText;
    const QByteArray four(64, '\x77');
    const auto at = [](int address, const QByteArray& data) { return dataRecords(address, data); };
    const std::pair<QByteArray, const char*> rows[] = {
        {end(), "The firmware file has no data at address 0x800, where the firmware begins."},
        {at(0x840, four) + end(),
         "The firmware file has no data at address 0x800, where the firmware begins."},
        {at(0x800, four) + at(0x880, four) + end(),
         "The firmware file has a gap from address 0x840 to 0x880."},
        {at(0x800, four) + at(0x800, four) + end(), "The firmware file is out of order at address 0x800."},
        {at(0x800, four.left(32)) + at(0x830, four.left(32)) + end(),
         "The firmware file has a gap from address 0x820 to 0x830."},
        {at(0x800, four) + record(0, 0x840, four.left(8)) + end(),
         "The firmware file has a record of 8 bytes at address 0x840, which cannot be sent."},
    };
    for (const auto& [file, objection] : rows) {
        WholeLoad bench(State::Main);
        bench.install(file);
        EXPECT_FALSE(bench.load()) << objection;
        EXPECT_EQ(bench.port.written(), QByteArray()) << objection;
        EXPECT_EQ(bench.dialogs.shown,
                  QStringList(QLatin1String(objection) + QStringLiteral("\nSend it anyway?")));
        EXPECT_EQ(
            bench.log.mid(1),
            QStringList({QLatin1String(objection) + QStringLiteral(" It was not sent."), ProgrammingFailed}));
    }
}

TEST(Load, SendsNothingUnlessTheFileIsGood) {
    for (const auto& [file, said] :
         {std::pair{std::optional(HexText::file(Image::make(3)).chopped(4) + "00\r\n"),
                    QStringLiteral("Intel Hex checksum verification failed")},
          {std::nullopt, QStringLiteral("Cannot read %1: No such file or directory")}}) {
        WholeLoad bench(State::Main);
        if (file)
            bench.install(*file);
        const QString name = bench.versionedFilename.m_mstrPath;
        EXPECT_FALSE(bench.load());
        EXPECT_EQ(bench.port.written(), QByteArray()) << said.toStdString();
        EXPECT_EQ(bench.log,
                  QStringList({QString(said).replace(QStringLiteral("%1"), bench.globals.m_FolderPath + name),
                               QStringLiteral("Verification of VLX firmware file \"%1\" failed").arg(name),
                               ProgrammingFailed}));
    }
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
        bench.dialogs.cautionAnswers = {false};
        EXPECT_FALSE(bench.load()) << row.name;
        EXPECT_EQ(bench.log.mid(bench.log.size() - 2), QStringList({row.lastButOne, ProgrammingFailed}));
        EXPECT_EQ(bench.port.written().left(1 + row.blocks.size()), "D" + row.blocks) << row.name;
    }
}

TEST(Load, JudgesByTheVersionThatComesBack) {
    const QByteArray unstamped = QByteArray(2, '\0') + QByteArray(62, '\x42');
    const QString complete = QStringLiteral("VLX firmware load is complete");
    const QString mismatch = QStringLiteral("VLX verification failed. Reload VLX firmware.");
    const struct {
        const char* available;
        Clock::Microseconds startTime;
        bool isGood;
        QString last;
    } rows[] = {{"01.23", 1s, true, complete},
                {"01.23", 9s, true, complete},
                {"01.24", 1s, true, mismatch},  // counts as success
                {"01.23", 1h, false, ProgrammingFailed}};
    for (const auto& [available, startTime, isGood, last] : rows) {
        WholeLoad bench(State::Waiting);
        bench.amplifier.settings().mainStartTime = startTime;
        bench.install(HexText::file(unstamped));
        bench.panel.available = QLatin1String(available);
        EXPECT_EQ(bench.load(), isGood) << last.toStdString();
        EXPECT_EQ(bench.log.last(), last);
        EXPECT_EQ(bench.log.contains(mismatch), last != complete);
    }
}

bool losesEcho(Kind kind) {
    return kind == Kind::Lost || kind == Kind::WrongBytes || kind == Kind::ByteLost ||
           kind == Kind::ByteFlipped;
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
            // Only power and the echo are not made good in the same load.
            const bool isMended =
                misbehaviour.kind != Kind::PowerLoss && (nth > 1 || !losesEcho(misbehaviour.kind));
            EXPECT_EQ(bench.load(), isMended) << named.name.data() << ' ' << nth;
            if (!isMended) {
                EXPECT_TRUE(bench.removePowerAndLoadAgain()) << named.name.data() << ' ' << nth;
            }
            EXPECT_TRUE(bench.holds(image)) << named.name.data() << ' ' << nth;
            EXPECT_EQ(bench.clock.pendingWaits(), 0);
        }
    }
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

// The file changes while it is sent: nothing of it is committed, and the next load mends it.
TEST(Load, CommitsOnlyWhatWasVerified) {
    const QByteArray image = Image::make(2000);
    const QByteArray hexText = HexText::file(image);
    QByteArray other = image;
    other[100000] = static_cast<char>(other[100000] + 1);
    const std::pair<const char*, QByteArray> rows[] = {
        {"cut inside a record", hexText.left(1000)},
        {"cut between two records", hexText.left(17 + 45 * 1600)},
        {"another image", HexText::file(other)},
        {"the end record alone is missing", hexText.chopped(13)},
    };
    for (const auto& [name, changed] : rows) {
        WholeLoad bench(State::Waiting);
        bench.port.setInstantLine(true);
        bench.install(hexText);
        bench.port.Written = [&bench, &content = changed](const QByteArray& bytes) {
            if (bytes == "D")
                bench.install(content);
        };
        EXPECT_FALSE(bench.load()) << name;
        EXPECT_FALSE(bench.amplifier.flash().isImageValid()) << name;
        EXPECT_EQ(
            bench.log.mid(bench.log.size() - 2),
            QStringList({QStringLiteral("The firmware file is no longer as it was verified. VLX was not "
                                        "told to use it."),
                         ProgrammingFailed}))
            << name;
        bench.port.Written = nullptr;
        bench.install(hexText);
        EXPECT_TRUE(bench.removePowerAndLoadAgain()) << name;
        EXPECT_TRUE(bench.holds(image)) << name;
    }
}

// Pulled out at any moment, the load fails in its own words at once, and the next one works.
TEST(Load, EndsWithThePort) {
    const QByteArray image = Image::make(3);
    for (const auto moment : {0ms, 1ms, 1000ms, 2001ms, 2010ms, 2030ms, 2080ms, 2100ms, 3000ms, 6000ms}) {
        WholeLoad bench(State::Main);
        bench.amplifier.settings().loader = {.echo = 10ms, .blockWrite = 10ms};
        bench.install(HexText::file(image));
        Task<bool> flow = bench.loader.Load(bench);
        bench.clock.advance(moment);
        ASSERT_FALSE(flow.isDone()) << moment.count();
        bench.port.unplug();
        EXPECT_TRUE(bench.clock.run(flow, 1s)) << moment.count();
        EXPECT_FALSE(flow.result()) << moment.count();
        EXPECT_EQ(bench.log.last(), ProgrammingFailed);
        bench.port.replug();
        bench.port.Open();
        EXPECT_TRUE(bench.removePowerAndLoadAgain()) << moment.count();
        EXPECT_TRUE(bench.holds(image)) << moment.count();
    }
}

TEST(Load, SendsAtMostTenTimes) {
    for (const int refusals : {9, 10}) {
        WholeLoad bench(State::Waiting);
        bench.install(HexText::file(Image::make(1)));
        // Each send of the block is refused, and each fill behind it answered by the loader.
        for (int send = 0; send < refusals; ++send)
            bench.amplifier.misbehave({Kind::WrongBytes, 2 + 2 * send});
        // The final block holds the whole of so small an image.
        EXPECT_TRUE(bench.load()) << refusals;
        EXPECT_EQ(bench.log.contains(QStringLiteral("Retry 9 successful at address 2096")), refusals < 10);
        EXPECT_EQ(bench.log.contains(QStringLiteral("VLX Block write failed at address: 2048")),
                  refusals == 10);
    }
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
            // The "D" and the "P;" are sent once. A lost ";" is made good by those of the sensing.
            const bool isVital = nth == 1 || nth == bytes - 1 || (nth == bytes && kind == Kind::ByteFlipped);
            const bool isMended = kind != Kind::PowerLoss && !isVital;
            EXPECT_EQ(bench.load(), isMended) << nth;
            if (!isMended) {
                EXPECT_TRUE(bench.removePowerAndLoadAgain()) << nth;
            }
            EXPECT_TRUE(bench.holds(image)) << nth;
        }
    }
}

// Power goes in the middle of a block of a full image: at its ends, where the bank changes and in between.
// The last is the final block.
TEST(Load, PowerLossInAnyBlockIsMendedByTheNextLoad) {
    const QByteArray image = Image::make(Image::FullBlocks);
    const QByteArray hexText = HexText::file(image);
    for (const int block : {0, 1, 2, 3, 500, 990, 991, 992, 993, 1500, 2003, 2004, 2005, Image::FullBlocks}) {
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

}  // namespace
