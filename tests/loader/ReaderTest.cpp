// What the reader makes of firmware files, good and bad.
#include <sys/stat.h>

#include <QDir>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include "HexText.h"
#include "IntelHexReader.h"
#include "LoopGap.h"
#include "ScriptedDialogs.h"
#include "SimClock.h"
#include "SimulatedPort.h"
#include "SystemClock.h"

using HexText::end;
using HexText::record;

namespace {

const QByteArray SixteenBytes = QByteArray::fromHex("000102030405060708090A0B0C0D0E0F");
const char* const NoStart = "Expected start character \":\" not found";
const char* const NoEnd = "End File record was not found";
const char* const BadSum = "Intel Hex checksum verification failed";
const char* const BadType = "Intel Hex file contains an unrecognized record type";
const char* const BadDigit = "ERROR: Bad character in BIN file";

// The reader on a clock of the test's choice, and all it said, boxes and log lines in one order.
template <typename ClockType>
struct ReaderBench {
    ReaderBench() {
        globals.StatusField = [this](const QString& line) {
            said += dialogs.shown.mid(m_boxesNoted) << line.mid(9).chopped(1);
            m_boxesNoted = dialogs.shown.size();
        };
    }

    QString write(const QByteArray& contents) {
        QFile file(folder.filePath(QStringLiteral("image.hex")));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(contents);
        return file.fileName();
    }
    QStringList everythingSaid() const { return said + dialogs.shown.mid(m_boxesNoted); }

    ClockType clock;
    Vlx720 amplifier{clock};
    SimulatedPort port{clock, amplifier};
    SimulatedPortList ports;
    ScriptedDialogs dialogs{clock};
    Platform platform{clock, port, ports, dialogs, {}};
    Globals globals{clock};
    IntelHexReader reader{platform, globals};
    QTemporaryDir folder{QDir::tempPath() + QStringLiteral("/with blank and ü XXXXXX")};
    QStringList said;

private:
    qsizetype m_boxesNoted = 0;
};

bool verify(ReaderBench<SimClock>& bench, const QString& path) {
    Task<bool> pass = bench.reader.Verify(path);
    EXPECT_TRUE(bench.clock.run(pass));
    EXPECT_EQ(bench.clock.pendingWaits(), 0);
    return pass.result();
}

struct VerifyCase {
    const char* name;
    QByteArray file;
    bool isGood;
    std::vector<const char*> said = {};
};

void PrintTo(const VerifyCase& testCase, std::ostream* out) {
    *out << testCase.name;
}

class Verify : public testing::TestWithParam<VerifyCase> {};

TEST_P(Verify, TellsGoodFilesFromBadOnes) {
    ReaderBench<SimClock> bench;
    EXPECT_EQ(verify(bench, bench.write(GetParam().file)), GetParam().isGood);
    QStringList expected;
    for (const char* message : GetParam().said)
        expected += QString::fromUtf8(message);
    EXPECT_EQ(bench.everythingSaid(), expected);
    EXPECT_EQ(bench.reader.m_fIsReadOK, GetParam().isGood);
}

QByteArray without(const char* part, QByteArray text) {
    return text.replace(part, "");
}

const QByteArray Data = record(0, 0x800, SixteenBytes);

// clang-format off
INSTANTIATE_TEST_SUITE_P(Files, Verify, testing::Values(
    VerifyCase{"whole",                     Data + end(), true},
    VerifyCase{"lower case",                (Data + end()).toLower(), true},
    VerifyCase{"line ends inside records",  Data.left(20) + "\n\r\n" + Data.mid(20) + end(), true},
    VerifyCase{"no line ends at all",       without("\r\n", Data + Data + end()), true},
    VerifyCase{"carriage returns only",     without("\n", Data + "\r" + end()), true},
    VerifyCase{"no end record or line end", Data.chopped(2), true},
    VerifyCase{"no end record",             Data, false, {NoEnd, NoStart}},
    VerifyCase{"empty",                     {}, false, {NoEnd, NoStart}},
    VerifyCase{"line ends alone",           "\r\n\n", false, {NoEnd, NoStart}},
    VerifyCase{"end record is the end",     end() + "garbage", true},
    VerifyCase{"no colon",                  Data.mid(1), false, {NoStart}},
    VerifyCase{"ends inside a record",      Data + Data.left(17), false, {NoEnd}},
    VerifyCase{"wrong checksum",            Data.left(10) + "1" + Data.mid(11) + end(), false, {BadSum}},
    VerifyCase{"count 255",                 record(0, 0, QByteArray(255, '\x5A')) + end(), true},
    VerifyCase{"count 0",                   record(0, 0) + end(), true},
    VerifyCase{"types 3 and 5 are skipped", record(3, 0, "abcd") + record(5, 0, "abcd") + end(), true},
    VerifyCase{"type 5, wrong checksum",    QByteArray(":0000000500\r\n") + end(), false, {BadSum}},
    VerifyCase{"types 2 and 4 without data", record(2, 0) + record(4, 0) + end(), true},
    VerifyCase{"type 6",                    record(6, 0) + end(), false, {BadType}},
    // Bad digits count as 0, so this sum is right all the same.
    VerifyCase{"digits that should be 0",   ":GG0000:1FF", false, {BadDigit, BadDigit, BadDigit}},
    VerifyCase{"blank",                     Data.left(9) + ' ' + Data.mid(9) + end(), false, {BadDigit, BadSum}},
    VerifyCase{"bad digit, then the end",   Data.left(9) + 'x', false, {BadDigit, NoEnd}},
    VerifyCase{"binary",                    ":01" + QByteArray("\0\xFF\x80\n", 4).repeated(4), false,
        {BadDigit, BadDigit, BadDigit, BadDigit, BadDigit, BadDigit, BadDigit, BadDigit, BadDigit, BadDigit, BadSum}}));
// clang-format on

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
    ReaderBench<SimClock> bench;
    for (const Row& row : rows) {
        EXPECT_TRUE(verify(bench, bench.write(row.records + end()))) << row.name;
        EXPECT_EQ(bench.reader.m_dwAddress, row.address) << row.name;
    }
}

TEST(Reader, WillNotOpenWhatIsNoFile) {
    ReaderBench<SimClock> bench;
    const QString pipe = bench.folder.filePath(QStringLiteral("pipe.hex"));
    ASSERT_EQ(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    // Opening the pipe would wait for ever.
    for (const QString& path :
         {pipe, bench.folder.path(), bench.folder.filePath(QStringLiteral("missing.hex"))})
        EXPECT_FALSE(verify(bench, path)) << path.toStdString();
    EXPECT_EQ(bench.everythingSaid(), QStringList());
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
    for (const Row& row : rows) {
        ReaderBench<SystemClock> bench;
        const QString path = bench.write(row.file);
        EXPECT_LT(longestGap([&] { return bench.reader.Verify(path); }), std::chrono::milliseconds(50))
            << row.name;
        EXPECT_EQ(bench.reader.m_fIsReadOK, row.isGood) << row.name;
    }
}

}  // namespace
