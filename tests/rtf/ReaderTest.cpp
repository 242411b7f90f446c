// What the reader makes of a document.
#include <set>

#include <QLocale>

#include <gtest/gtest.h>

#include "Errors.h"
#include "RecordingTarget.h"
#include "RtfEncoding.h"
#include "RtfWords.h"

namespace {

struct Row {
    const char* document;
    QByteArray record;
};

void expectRecords(std::initializer_list<Row> rows) {
    for (const Row& row : rows)
        EXPECT_EQ(recordOf(row.document), row.record) << row.document;
}

// clang-format off
TEST(RtfReader, Looks) {
    expectRecords({
        {R"({\rtf1 a{\b b} c\par})",              "a[bold]b c\r"},  // until the next word
        {R"({\b bold}\i0  plain)",                "[bold]bold[] plain"},
        {R"(\b\i\ul a\b0 b\plain c)",             "[bold italic underline]a[italic underline]b[]c"},
        {R"(\b2 a\B1 b)",                         "a[bold]b"},
        {R"(\outl a\shad b\outl0 c)",             "[outline]a[outline shadow]b[shadow]c"},
        {R"(\caps a\caps0\smcaps b)",             "[capitals]a[smallcapitals]b"},
        {R"(\uld a\ulnone b\ulw c\ul0 d\uldb e)", "[underline]a[]b[underline]c[]d[underline]e"},
        {R"(\expnd8 a\expnd-6 b)",                "[expanded 2]a[expanded -1.5]b"},
        {R"(\fs24 a\fs b\fs20-5 c\fs-3 d)",       "[16]a[0.6667]b[13.33]c[-2]d"},
        {R"(\qc a\qr b\qj c\ql d\qr e\pard f)",   "[align 2]a[align 3]b[align 4]c[]d[align 3]e[]f"},
        {R"(a\unknown b)",                        "ab"},
        {R"({\b{\i a}\x b}\x c)",                 "[bold italic]a[bold]b[]c"},
        // The end of the outer group takes away the entry of the skipped one, and no more.
        {R"({\b{\*\x y}\i z}\x a)",               "[bold italic]z[bold]a"},
    });
}

TEST(RtfReader, Text) {
    expectRecords({
        {"no brace\r\n at\x03 all",               "no brace at all"},
        {R"(a\par b\line c\tab d)",               "a\rb\rc d"},
        {"a\\\nb\\\r\\\x03" "c",                  "a\rb\r\rc"},
        {R"(\emdash\endash\bullet\lquote\rquote\ldblquote\rdblquote)"
         " ",                                     "\xD0\xD1\xA5\xD4\xD5\xD2\xD3"},
        {R"(\{\}\\\~\-\_)",                       "{}\\"},
        {R"(a\cell b\row c)",                     "abc"},
        {"\xE9\\'e9",                             "\xE9\xE9"},       // nothing says what they mean
        {"\\ansi\\'e9 \xE9",                      "\x8E \xE9"},      // only the coded one is converted
        {R"(\pc\'e9\mac\'e9\pca\'e9)",            "\x8E\xE9\x8E"},
        {R"(\ansi\'93x\'94\'D0)",                 "\xD2x\xD3?"},     // Mac Roman has no Eth
        {R"(\ansicp1251\'e9\ansicp1250\'e9)",     "?\x8E"},
        {R"(\ansicp1251\ansicp437\ansicpg1252\'e9)", "?"},           // neither of the two changes it
        {R"(\ansicp1361\'e9)",                    ""},               // no converter
        {R"(\ansicp932\'83\'41)",                 "?A"},
        {R"(\ansicp865\'e6)",                     "\xB5"},           // a micro sign, not the Greek letter
        {"\\'zz\\'4zx",                           QByteArray("\0\4x", 3)},
        {R"(\u8217\'92 x)",                       "\xD5 x"},         // encoding 0: the character
        {R"(\u65 x)",                             "Ax"},
        {R"(\u65?x)",                             "A?x"},            // a plain fallback is text
        {R"(\ansi\u8217\'92x\u-3 y)",             "??x?y"},          // the digits, two to a character
        {R"(\ansi\u5 x\u-3 y)",                  "?x?y"},           // half a character does not wait
        {R"(a\bin5 }}{\\b)",                      "ab"},
        {R"({\*\x\bin5 }}}}}y}a)",                "a"},
        {R"({\*\fonttbl{\f0 Arial;}}\f0 a)",      "a"},
        {R"({\info{\title T}{\b x}}a)",           "a"},
        {R"({\header H}{\field{\*\fldinst I}{\fldrslt R}}{\object O}a)", "a"},
        {R"({\pict 00ff}a)",                      "00ffa"},          // not among the groups that are skipped
        {R"(x\par)",                              "x\rr"},           // the last letter is read again
    });
}
// clang-format on

TEST(RtfReader, DatesAreThoseOfTheUser) {
    const QLocale former;
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    EXPECT_EQ(recordOf(R"(\chdate |\chdpl |\chdpa |\chtime )"),
              "Saturday, March 9, 2024|Saturday, March 9, 2024|3/9/24|2:05 PM");
    QLocale::setDefault(former);
}

// clang-format off
TEST(RtfReader, FontTable) {
    expectRecords({
        {R"({\fonttbl{\f0\fswiss Arial;}{\f1\froman Garamond;}}\f1 a\f0 b)", "[Times]a[Arial]b"},
        {R"({\fonttbl\f0 Arial;\f1\fmodern Mono;}\f1 a)",                    "[Courier]a"},
        {R"(\deff1{\fonttbl{\f0 Times;}{\f1 Arial;}}a\x b)",                 "[Arial]ab"},
        {R"({\fonttbl{\f0\fswiss None;}}\f0 a)",                             "a"},  // no substitute either
        {R"({\fonttbl{\f0 Times;}}\f7 a)",                                   "a"},
        {R"({\fonttbl{\f0{\*\falt Times}arial;}}\f0 a)",                    "[arial]a"},
        {R"({\fonttbl{\f0 Times\x Arial;}}\f0 a)",                           "[Arial]a"},
        {R"({\fonttbl{\f0 Times;}{\f0 Arial;}}\f0 a)",                       "[Times]a"},
        {R"(\ansi{\fonttbl{\f0\fcharset77 Arial;}{\f1\fcharset0 Arial;}{\f2\fcharset204 Arial;}{\f3 Arial;}})"
         R"(\f0\'e9\f1\'e9\f2\'e9\f3\'e9\f9\'e9)", "[Arial]\xE9\x8E\x8E\x8E[]\x8E"},
        {R"({\fonttbl{\f0 Arial;})",                                         ""},
        {R"(\f0 a)",                                                         "a"},
        // The ";" behind a group is a name of its own, an empty one.
        {R"({\fonttbl{\f0\froman Arial{\*\falt X};}}\f0 a)",                 "[Times]a"},
    });
}

TEST(RtfReader, ColorTable) {
    expectRecords({
        {R"({\colortbl;\red255;\green255;}\cf1 a\cf2 b\cf0 c\cf9 d\cf-1 e)", "[#ff0000]a[#ffff00]b[]cde"},
        {R"({\colortbl;\red1;}\cf2 a)",                                      "[#010000]a"},  // the last, twice
        {R"({\colortbl;}\cf1 a\cb1 b)",                                      "a[on #000000]b"},
        {R"({\colortbl\red9;{\red7}\blue300 x;}\cf1 a)",                     "[#0900ff]a"},
    });
    // Also when the file ends in it.
    EXPECT_TRUE(Reading(R"({\colortbl;\red1;)").target.isEnded);
}

TEST(RtfReader, Styles) {
    expectRecords({
        {R"({\stylesheet{\s1\b Head;}{\s2\sbasedon1\i Sub;}}\s2 a\plain\s1 b)", "[bold italic]a[bold]b"},
        {R"({\stylesheet{\s1\b Head;}{\s2\i\snext1 Sub;}}\s2 a)",  "[bold italic]a"},  // the next is the base
        {R"({\stylesheet{\s2\sbasedon1\b0 Sub;}{\s1\b Head;}}\s2 a\i b)", "a[italic]b"},
        {R"({\stylesheet{\s1\b A;}{\s1\i B;}}\s1 a)",                 "[bold]a"},
        {R"({\stylesheet{\*\cs10\b C;}{\s1 {\*\x y}\i A;}}\s1 a)",    "[italic]a"},
        {R"({\stylesheet{\b Normal;}}\s222 a)",                       "[bold]a"},
        {R"({\stylesheet{\s1\b A;}}\s3 a)",                           "a"},
        {R"({\stylesheet{\s1\sbasedon2\b A;}{\s2\sbasedon1\i B;}}\s1 a)", "[bold italic]a"},
        {R"({\stylesheet{\s1\par\'41 A;}}x\s1 y)",                    "x\rAy"},
        {R"({\stylesheet{\s1\stylesheet A;}}\s1{\s2\b B;}}\s2 y)",    "[bold]y"},
    });
    const Reading unknown(R"(\s3 a)");
    EXPECT_EQ(unknown.target.states, 1);
}
// clang-format on

TEST(RtfReader, EveryKnownWordIsThereOnceAndTellsTheLook) {
    // 277 words were ever compared, and two of them twice.
    EXPECT_EQ(allRtfWords().size(), 275U);
    std::set<std::string_view> names;
    int idle = 0;
    for (const RtfWord& word : allRtfWords()) {
        EXPECT_TRUE(names.insert(word.name).second) << word.name;
        EXPECT_EQ(findRtfWord(word.name), &word);
        if (word.act || word.read)
            continue;
        ++idle;
        const Reading reading("\\" + QByteArray(word.name.data(), static_cast<qsizetype>(word.name.size())) +
                              " ");
        EXPECT_EQ(reading.target.states, 1) << word.name;
        EXPECT_EQ(reading.target.record.trimmed(), "") << word.name;
    }
    EXPECT_EQ(idle, 200);
    for (const char* odd : {"pgwxxn", "lndscpxcsn", "bgkfdiag", "BGBKBDIAG"})
        EXPECT_TRUE(findRtfWord(odd)) << odd;
    EXPECT_FALSE(findRtfWord("ansicpg"));
}

TEST(RtfReader, ADumpNamesTheTables) {
    const std::pair<const char*, const char*> rows[] = {
        {"", "\r\rFonttable\r\r\rColortable\r\r\rStylesheets\r\r\rEncoding ansi"},
        {R"({\fonttbl{\f3\fswiss Arial;}}{\colortbl;\red255;}{\stylesheet{\s1\b\i Head;}{\s2 Sub;}})",
         "\r\rFonttable\r3 fswiss Arial\r\rColortable\rFF0000\rFF0000"
         "\r\rStylesheets\r1 Head1\rb\ri\r2 Sub-1\r\rEncoding ansi"},
    };
    for (const auto& [document, dump] : rows) {
        Reading reading(document);
        reading.parser.Test();
        reading.target.SetState({});
        EXPECT_EQ(reading.target.record.mid(reading.target.record.indexOf("\r\r")), dump);
    }
}

TEST(RtfTables, AreBuiltByHandAndWrittenAsRtf) {
    const InstalledFonts none{{}};
    RtfFont fonts(none);
    for (const char* name : {"Times", "helvetica", "Courier", "Monaco"})
        fonts.addfont(name);
    EXPECT_EQ(fonts.count(), 4);
    EXPECT_EQ(fonts.getid("monaco"), 4);
    EXPECT_EQ(fonts.getid("none"), 0);
    EXPECT_EQ(fonts.getcharset(9), 0);
    EXPECT_EQ(
        fonts.getstring(),
        R"({\fonttbl{\f1\froman Times;}{\f2\fswiss helvetica;}{\f3\fmodern Courier;}{\f4\fnil Monaco;}})");
    RtfColor colors;
    colors.addcolor({1, 2, 3});
    EXPECT_EQ(colors.getid({1, 2, 3}), 1);
    EXPECT_EQ(colors.getid({3, 2, 1}), 2);
    EXPECT_EQ(colors.getstring(), R"({\colortbl;\red1\green2\blue3;})");
}

TEST(RtfReader, AColourWithoutATableIsAnError) {
    for (const char* document : {R"(\cf1 a)", R"(\cb0 a)"})
        EXPECT_THROW(Reading{document}, NilObjectError);
}

TEST(RtfReader, ARefusalReadsNothing) {
    const Reading reading("a", true);
    EXPECT_EQ(reading.ending, RtfParser::Ending::Refused);
    EXPECT_EQ(reading.stream.position(), 0);
    EXPECT_FALSE(reading.target.isEnded);
}

TEST(RtfReader, ProgressAndCancelKey) {
    struct Bar final : ProgressBar {
        void setMaximum(int value) override { maximum = value; }
        void setValue(int value) override { values.push_back(value); }
        int maximum = 0;
        std::vector<int> values;
    } bar;
    SimClock clock;
    const InstalledFonts none{{}};
    int looks = 0;
    RtfParser parser(clock, none, [&looks] { return ++looks > 25; });
    parser.SetProgressBar(&bar);
    RtfStream stream(QByteArray(1000, 'a'), clock);
    RecordingTarget target;
    EXPECT_EQ(parser.Parse(stream, target).result(), RtfParser::Ending::Cancelled);
    EXPECT_EQ(target.record, QByteArray(25, 'a'));
    EXPECT_TRUE(target.isEnded);
    EXPECT_EQ(bar.maximum, 100);
    EXPECT_EQ(bar.values, (std::vector<int>{1, 2}));
}

TEST(RtfEncodings, HaveTheirNumbers) {
    QString told;
    for (std::int32_t page = -1; page < 3000; ++page)
        if (const std::int32_t number = RtfEncoding::ofCodePage(page, -7); number != -7)
            told += QStringLiteral("%1=%2 ").arg(page).arg(number);
    for (std::int32_t set = -1; set < 300; ++set)
        if (const std::int32_t number = RtfEncoding::ofCharset(set, -7); number != -7)
            told += QStringLiteral("%1:%2 ").arg(set).arg(number);
    EXPECT_EQ(
        told.toStdString(),
        "860=1045 862=1047 863=1048 864=1049 865=1050 866=1051 874=1053 932=1056 936=1057 949=1058 950=1059 "
        "1250=1281 1251=1282 1252=1280 1253=1283 1254=1284 1255=1285 1256=1286 1257=1287 1258=1288 1361=1296 "
        "0:1280 77:0 136:2563 ");
}

}  // namespace
