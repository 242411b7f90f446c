// Documents that are damaged, hostile or none at all.
#include <gtest/gtest.h>

#include "RecordingTarget.h"

namespace {

using Ending = RtfParser::Ending;

const QByteArray Small =
    R"({\rtf1\ansi\deff0{\fonttbl{\f0\fswiss\fcharset0 Arial;}}{\colortbl;\red255\green0\blue0;})"
    R"({\stylesheet{\s1\sbasedon2\b A;}{\s2\i B;}}{\*\g{\x}\bin3 }}}}\s1\cf1 a\'e9\u8217\'92 \bin2 }}{\b c}\par})";

TEST(BadRtf, AFileThatIsCutAnywhereEnds) {
    for (qsizetype length = 0; length <= Small.size(); ++length) {
        const Reading reading(Small.left(length));
        EXPECT_TRUE(reading.isDone) << length;
        EXPECT_EQ(reading.ending, Ending::Whole) << length;
        EXPECT_TRUE(reading.target.isEnded);
        EXPECT_EQ(reading.clock.pendingWaits(), 0);
    }
}

TEST(BadRtf, ASurplusEndStopsTheReadAndAMissingOneDoesNot) {
    const Reading surplus("{a}}b");
    EXPECT_EQ(surplus.ending, Ending::TooManyEnds);
    EXPECT_FALSE(surplus.target.isEnded);
    EXPECT_EQ(surplus.target.record, "");
    const Reading missing("{a{b");
    EXPECT_EQ(missing.ending, Ending::Whole);
    EXPECT_EQ(missing.target.record, "ab");
}

// clang-format off
TEST(BadRtf, OddPlacesOfWords) {
    const std::pair<QByteArray, QByteArray> rows[] = {
        {"",                                    ""},
        {"\\",                                  ""},
        {"{\\*\\",                              ""},
        {"a\\bin-1 b",                          "a"},
        {"a\\bin99 b",                          "a"},
        {"a\\bin99999999999 b",                 "a"},
        {"\\fs99999999999999999999 a",          "[1.432e+09]a"},
        {"\\fs-99999999999999999999 a",         "[-1.432e+09]a"},
        {"\\b" + QByteArray(1 << 20, '0') + "1 a",       "[bold]a"},
        {"\\" + QByteArray(1 << 20, 'b') + " a",         "a"},
        {"\\" + QByteArray(100, 'b') + "1\\i b",         "[italic]b"},
        {R"(\u)",                               "\x01u"},  // the letter again
        {R"(\u65)",                             "A5"},
        {R"(\u65\)",                            "A"},
        {R"(\u65{b})",                          "Ab"},
        {R"(\u1114112 a)",                      "a"},
        {R"(\u-5 a)",                           "a"},
        {R"(\ansi\u99999999999\'41a)",          "?????a"},
        {R"({\stylesheet{\s1\u A;}}\s1\'42b)",  "\x01" "b"},
        {QByteArray("\xFF\xFE\\\0b\0 \0a\0", 10),   QByteArray("\xFF\xFE" "b\0 \0a\0", 8)},
    };
    for (const auto& [document, record] : rows)
        EXPECT_EQ(recordOf(document), record) << document.left(60).toStdString();
}
// clang-format on

TEST(BadRtf, GroupsBeyondTheDeepestHaveNoLookOfTheirOwn) {
    const qsizetype deep = 3 * static_cast<qsizetype>(RtfParser::DeepestGroup);
    const Reading reading("{a" + QByteArray(deep, '{') + "\\b b" + QByteArray(deep, '}') + "\\x c}d");
    EXPECT_EQ(reading.ending, Ending::Whole);
    EXPECT_EQ(reading.target.record, "a[bold]b[]cd");
    EXPECT_EQ(Reading(QByteArray(deep, '{') + QByteArray(deep + 1, '}')).ending, Ending::TooManyEnds);
}

TEST(BadRtf, StylesThatWouldBeReplayedForEverAreLeftOut) {
    QByteArray document = "{\\stylesheet";
    constexpr int Styles = 300;
    for (int i = 1; i <= Styles; ++i)
        document += "{\\s" + QByteArray::number(i) + "\\sbasedon" + QByteArray::number(i - 1) + "\\par a;}";
    document += "}";
    for (int i = 0; i < Styles; ++i)
        document += "\\s" + QByteArray::number(Styles);
    const Reading reading(document + " end");
    EXPECT_TRUE(reading.target.record.endsWith("end"));
    EXPECT_GT(reading.target.record.size(), Styles);
    EXPECT_LT(reading.target.record.size(), RtfParser::ReplayPerByte * document.size());
}

TEST(BadRtf, AReadCanBeGivenUpAnywhere) {
    // Each look of the clock is a turn of the event loop, so that the reader waits often.
    class SlowClock final : public Clock {
    public:
        Microseconds now() const override { return m_now += BreathLength; }
        QDateTime wallClock() const override { return {}; }
        void turn() { runDue(); }

    private:
        void wakeAt(std::optional<Microseconds>) override {}
        mutable Microseconds m_now{0};
    };
    const QByteArray long_ = "{\\*\\x " + QByteArray(3000, 'a') + "}{\\fonttbl{\\f0 " + Small.repeated(9);
    for (int turns = 0; turns < 20; ++turns) {
        SlowClock clock;
        const InstalledFonts none{{}};
        RtfParser parser(clock, none);
        RtfStream stream(long_, clock);
        RecordingTarget target;
        {
            const Task<Ending> flow = parser.Parse(stream, target);
            for (int i = 0; i < turns; ++i)
                clock.turn();
            EXPECT_EQ(flow.isDone(), clock.pendingWaits() == 0);
        }
        EXPECT_EQ(clock.pendingWaits(), 0);
    }
}

}  // namespace
