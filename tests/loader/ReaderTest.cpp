// What the reader makes of firmware files, good and bad.
#include <sys/stat.h>

#include "AmplifierBench.h"
#include "HexText.h"
#include "IntelHexReader.h"
#include "LoopGap.h"
#include "SystemClock.h"

using HexText::end;
using HexText::record;

namespace {

const QByteArray SixteenBytes = QByteArray::fromHex("000102030405060708090A0B0C0D0E0F");
const QString NoStart = QStringLiteral("Expected start character \":\" not found");
const QString NoEnd = QStringLiteral("End File record was not found");
const QString BadSum = QStringLiteral("Intel Hex checksum verification failed");
const QString BadType = QStringLiteral("Intel Hex file contains an unrecognized record type");
const QString BadDigit = QStringLiteral("ERROR: Bad character in BIN file");

// The reader, and all it said: boxes and log lines in one order.
struct ReaderBench : AmplifierBench {
    ReaderBench() {
        globals.StatusField = [this](const QString& text) {
            m_said = everythingSaid() << text.mid(9).chopped(1);
            m_boxesNoted = dialogs.shown.size();
        };
    }

    QString write(const QByteArray& contents) const {
        QFile file(world.filePath(QStringLiteral("image.hex")));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(contents);
        return file.fileName();
    }
    bool verify(const QString& path) {
        Task<bool> pass = reader.Verify(path);
        EXPECT_TRUE(clock.run(pass));
        EXPECT_EQ(clock.pendingWaits(), 0);
        return pass.result();
    }
    QStringList everythingSaid() const { return m_said + dialogs.shown.mid(m_boxesNoted); }

    IntelHexReader reader{platform, globals};

private:
    QStringList m_said;
    qsizetype m_boxesNoted = 0;
};

QByteArray without(const char* part, QByteArray text) {
    return text.replace(part, "");
}

const QByteArray Data = record(0, 0x800, SixteenBytes);

TEST(Reader, TellsGoodFilesFromBadOnes) {
    struct Row {
        const char* name;
        QByteArray file;
        bool isGood;
        QStringList said = {};
    };
    // clang-format off
    const Row rows[] = {
        {"whole",                     Data + end(), true},
        {"lower case",                (Data + end()).toLower(), true},
        {"line ends inside records",  Data.left(20) + "\n\r\n" + Data.mid(20) + end(), true},
        {"no line ends at all",       without("\r\n", Data + Data + end()), true},
        {"carriage returns only",     without("\n", Data + "\r" + end()), true},
        {"no end record or line end", Data.chopped(2), true},
        {"no end record",             Data, false, {NoEnd, NoStart}},
        {"empty",                     {}, false, {NoEnd, NoStart}},
        {"line ends alone",           "\r\n\n", false, {NoEnd, NoStart}},
        {"end record is the end",     end() + "garbage", true},
        {"no colon",                  Data.mid(1), false, {NoStart}},
        {"ends inside a record",      Data + Data.left(17), false, {NoEnd}},
        {"wrong checksum",            Data.left(10) + "1" + Data.mid(11) + end(), false, {BadSum}},
        {"count 255",                 record(0, 0, QByteArray(255, '\x5A')) + end(), true},
        {"count 0",                   record(0, 0) + end(), true},
        {"types 3 and 5 are skipped", record(3, 0, "abcd") + record(5, 0, "abcd") + end(), true},
        {"type 5, wrong checksum",    QByteArray(":0000000500\r\n") + end(), false, {BadSum}},
        {"types 2 and 4 without data", record(2, 0) + record(4, 0) + end(), true},
        {"type 6",                    record(6, 0) + end(), false, {BadType}},
        // Bad digits count as 0, so this sum is right all the same.
        {"digits that should be 0",   ":GG0000:1FF", false, {BadDigit}},
        {"blank",                     Data.left(9) + ' ' + Data.mid(9) + end(), false, {BadDigit, BadSum}},
        {"bad digit, then the end",   Data.left(9) + 'x', false, {BadDigit, NoEnd}},
        {"binary",                    ":01" + QByteArray("\0\xFF\x80\n", 4).repeated(4), false,
            {BadDigit, BadSum}},
    };
    // clang-format on
    for (const Row& row : rows) {
        ReaderBench bench;
        EXPECT_EQ(bench.verify(bench.write(row.file)), row.isGood) << row.name;
        EXPECT_EQ(bench.everythingSaid(), row.said) << row.name;
        EXPECT_EQ(bench.reader.state().m_fIsReadOK, row.isGood) << row.name;
    }
}

TEST(Reader, PlacesDataByItsAddressRecords) {
    struct Row {
        const char* name;
        QByteArray records;
        std::uint32_t address;
    };
    const QByteArray at1234 = record(0, 0x1234, SixteenBytes);
    // Each row goes on with the offset that the one before it left.
    const Row rows[] = {
        {"type 4, 0001", record(4, 0, QByteArray::fromHex("0001")) + at1234, 0x11234},
        {"nothing: the offset stays", at1234, 0x11234},
        {"type 4, 0100", record(4, 0, QByteArray::fromHex("0100")) + at1234, 0x1334},
        {"type 4, FFFF", record(4, 0, QByteArray::fromHex("FFFF")) + at1234, 0xFFFF00 + 0x1234},
        {"type 4 of one byte and its checksum", record(4, 0, QByteArray::fromHex("02")) + at1234,
         0xF90200 + 0x1234},
        {"type 2 of the common kind", record(2, 0, QByteArray::fromHex("1000")) + at1234, 0x1234},
        {"type 2 with an address", record(2, 0xFFFF) + record(0, 0xFFFF, "x"), 0xFFFF0 + 0xFFFF},
        {"type 4, 0000", record(4, 0, QByteArray::fromHex("0000")) + at1234, 0x1234},
    };
    ReaderBench bench;
    for (const Row& row : rows) {
        EXPECT_TRUE(bench.verify(bench.write(row.records + end()))) << row.name;
        EXPECT_EQ(bench.reader.state().m_dwAddress, row.address) << row.name;
    }
}

TEST(Reader, WillNotOpenWhatIsNoFile) {
    ReaderBench bench;
    const QString pipe = bench.world.filePath(QStringLiteral("pipe.hex"));
    ASSERT_EQ(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    // Opening the pipe would wait for ever.
    const QString missing = bench.world.filePath(QStringLiteral("missing.hex"));
    QStringList said;
    for (const auto& [path, reason] : {std::pair{pipe, "Not a regular file"},
                                       {bench.world.path(), "Not a regular file"},
                                       {missing, "No such file or directory"}}) {
        EXPECT_FALSE(bench.verify(path)) << path.toStdString();
        said += QStringLiteral("Cannot read %1: %2").arg(path, QLatin1String(reason));
    }
    EXPECT_EQ(bench.everythingSaid(), said);
}

TEST(Reader, KeepsTheEventLoopTurning) {
    const QByteArray image = HexText::file(Image::make(Image::FullBlocks)).chopped(13);
    struct Row {
        const char* name;
        QByteArray file;
        bool isGood;
    };
    const Row rows[] = {
        {"records", image.repeated(4) + end(), true},
        {"one line", without("\r\n", image).repeated(4) + end(), true},
        {"line ends inside a record", ":00" + QByteArray(1 << 26, '\n') + "000001FF", true},
        {"line ends alone", QByteArray(1 << 26, '\r'), false},
    };
    ReaderBench bench;
    for (const Row& row : rows) {
        SystemClock clock;
        Platform platform{clock, bench.port, bench.ports, bench.dialogs, {}};
        IntelHexReader reader(platform, bench.globals);
        const QString path = bench.write(row.file);
        EXPECT_LT(longestGap([&] { return reader.Verify(path); }), std::chrono::milliseconds(50)) << row.name;
        EXPECT_EQ(reader.state().m_fIsReadOK, row.isGood) << row.name;
    }
}

}  // namespace
