// The lines of a configuration file, each way that they may be wrong.
#include <QBuffer>

#include <gtest/gtest.h>

#include "ConfigurationLines.h"
#include "ConfigurationReader.h"
#include "SimClock.h"
#include "ZlibCrc.h"

namespace {

struct ReaderBench {
    SimClock clock;
    Globals globals{clock};
    ConfigurationReader reader{clock, globals};

    QStringList linesOf(const QByteArray& content) {
        auto buffer = std::make_unique<QBuffer>();
        buffer->setData(content);
        buffer->open(QIODevice::ReadOnly);
        reader.setFileInstream(std::move(buffer));
        globals.m_dwCrc32 = 0;
        QStringList lines;
        for (;;) {
            Task<bool> line = reader.GetLine();
            EXPECT_TRUE(clock.run(line));
            if (!line.result())
                break;
            lines += reader.line();
        }
        EXPECT_EQ(clock.pendingWaits(), 0);
        return lines;
    }
};

struct LineEndCase {
    const char* name;
    QByteArray content;
    QStringList lines;
    QByteArray hashed;
};

const LineEndCase LineEndCases[] = {
    {"CR LF", "ab\r\ncd\r\n", {"ab", "cd"}, "abcd"},
    {"CR alone", "ab\rcd\r", {"ab", "cd"}, "abcd"},
    {"LF alone: one line without an end", "ab\ncd\n", {}, "abcd"},
    {"LF inside a line", "a\nb\r\n", {"ab"}, "ab"},
    {"last line without an end", "ab\r\ncd", {"ab"}, "abcd"},
    {"empty lines", "\r\n\r\nab\r\n", {"", "", "ab"}, "ab"},
    {"CRC line is not hashed", "ab\r\ncrc32 = 0x1\r\ncd\r\n", {"ab", "crc32 = 0x1", "cd"}, "abcd"},
    {"CRC line without an end", "ab\r\nCRC32 = 0x1", {"ab"}, "ab"},
    {"NUL in a line", QByteArray("a\0b\r\n", 5), {QString::fromLatin1("a\0b", 3)}, QByteArray("a\0b", 3)},
    {"above ASCII", "\xE9\r\n", {QStringLiteral("\u00E9")}, "\xE9"},
    {"UTF-16",
     QByteArray("\xFF\xFE\x41\0\r\0\n\0", 8),
     {QString::fromLatin1("\xFF\xFE\x41\0", 4)},
     QByteArray("\xFF\xFE\x41\0\0\0", 6)},
    {"nothing", "", {}, ""},
};

TEST(ConfigurationReader, EndsLinesAtCarriageReturns) {
    for (const LineEndCase& c : LineEndCases) {
        SCOPED_TRACE(c.name);
        ReaderBench bench;
        EXPECT_EQ(bench.linesOf(c.content), c.lines);
        EXPECT_EQ(bench.globals.m_dwCrc32, zlibCrc(c.hashed));
    }
}

TEST(ConfigurationReader, KeepsLittleOfALongLine) {
    const QByteArray line(10'000'000, 'x');
    ReaderBench bench;
    EXPECT_EQ(bench.linesOf(line), QStringList());
    EXPECT_EQ(bench.reader.line().size(), ConfigurationReader::LineLimit);
    EXPECT_EQ(bench.globals.m_dwCrc32, zlibCrc(line));
}

TEST(ConfigurationReader, RefusesWhatIsNoRegularFile) {
    ReaderBench bench;
    EXPECT_FALSE(bench.reader.open(QStringLiteral("/dev/zero")));
    EXPECT_EQ(bench.reader.failure(), QStringLiteral("Cannot read /dev/zero: Not a regular file"));
    EXPECT_FALSE(bench.reader.open(QStringLiteral("/nowhere/at all.VLXConfig")));
    EXPECT_TRUE(bench.reader.failure().startsWith(QStringLiteral("Cannot read /nowhere/at all.VLXConfig: ")));
}

struct MemLineCase {
    const char* name;
    const char* line;
    bool isParsed;
    int address;
    const char* data;  // hexadecimal, as far as it is not 0
};

// clang-format off
const MemLineCase MemLineCases[] = {
    {"three bytes",                  "MEM2 00 20 03 0A0bFF",        true,  0x20, "0a0bff"},
    {"page 1",                       "MEM2 01 20 01 55",            true,  0x20, "55"},
    {"highest address of digits",    "MEM2 00 99 01 55",            true,  0x99, "55"},
    {"letter in the address",        "MEM2 00 A0 01 55",            false, 0,    ""},
    {"second letter in the address", "MEM2 00 0A 01 55",            false, 0,    ""},
    {"letter in the page",           "MEM2 0F 20 01 55",            false, 0,    ""},
    {"letter in the count",          "MEM2 00 20 1A 55",            false, 0,    ""},
    {"count FF",                     "MEM2 00 20 FF 55",            false, 0,    ""},
    {"three digits",                 "MEM2 00 200 01 55",           false, 0,    ""},
    {"blank and digit",              "MEM2 00  2 01 55",            false, 0,    ""},
    {"minus and digit",              "MEM2 00 -2 01 55",            false, 0,    ""},
    {"one digit",                    "MEM2 00 2 01 55",             false, 0,    ""},
    {"no blank behind the count",    "MEM2 00 20 01x55",            false, 0,    ""},
    {"ends behind the address",      "MEM2 00 20",                  false, 0,    ""},
    {"count 0",                      "MEM2 00 20 00 ",              true,  0x20, ""},
    {"data that is no number",       "MEM2 00 20 04 zz1z55",        true,  0x20, "000155"},
    {"less data than the count",     "MEM2 00 20 20 1234",          true,  0x20, "1234"},
    {"count beyond what is kept",    "MEM2 00 20 99 00000000000000000000000000000000000000000000000000000000000000000102030405",
                                                                    true,  0x20, "000000000000000000000000000000000000000000000000000000000000000001"},
};
// clang-format on

TEST(ConfigurationLines, ParsesMemoryLines) {
    for (const MemLineCase& c : MemLineCases) {
        SCOPED_TRACE(c.name);
        std::uint8_t page = 0;
        std::uint8_t address = 0;
        QByteArray data;
        EXPECT_EQ(ParseMemLine(QString::fromLatin1(c.line), page, address, data), c.isParsed);
        if (!c.isParsed)
            continue;
        EXPECT_EQ(address, c.address);
        EXPECT_EQ(data, QByteArray::fromHex(c.data).leftJustified(33, '\0'));
    }
}

}  // namespace
