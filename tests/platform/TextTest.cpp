#include "Text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include <QStringList>

namespace {

std::string shown(const QString& text) {
    return text.toStdString();
}

TEST(Text, NumbersAreReadLeniently) {
    struct {
        const char16_t* text;
        double value;
    } const rows[] = {
        // clang-format off
        {u"", 0}, {u"abc", 0}, {u"12abc", 12}, {u"  \t7", 7},
        {u"+5", 5}, {u"-5", -5}, {u"+-5", 0}, {u"- 5", 0},
        {u".5", 0.5}, {u"5.", 5}, {u"-.25V", -0.25}, {u".", 0},
        {u"1.2.3", 1.2},
        {u"1,5", 1}, // the comma is no decimal point, whatever the user's country
        {u"1e3", 1000}, {u"1e", 1}, {u"1e+", 1}, {u"007", 7},
        {u"&hFF", 255}, {u"&HfF;", 255}, {u"&hG", 0}, {u"&h", 0},
        {u"\u0663", 0}, // a digit, but not one of ours
        {u"nan", 0}, {u"inf", 0},
        // clang-format on
    };
    for (const auto& row : rows)
        EXPECT_EQ(Text::Val(QStringView(row.text)), row.value) << shown(QString::fromUtf16(row.text));
}

TEST(Text, NumbersPastEveryRangeStayNumbers) {
    const QString huge = QString(400, u'9');
    EXPECT_EQ(Text::Val(huge), 0);
    EXPECT_TRUE(std::isfinite(Text::Val(QStringLiteral("&h") + QString(400, u'F'))));
    EXPECT_EQ(Text::IntVal(u"4294967295"), std::numeric_limits<std::int32_t>::max());
    EXPECT_EQ(Text::IntVal(u"-1e300"), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(Text::IntVal(u"-1.9"), -1);
    EXPECT_EQ(Text::Format(1e300, u"0.0").size(), 303);
}

TEST(Text, NumbersFollowTheirPattern) {
    struct {
        double value;
        const char16_t* pattern;
        const char* text;
    } const rows[] = {
        // clang-format off
        {123, u"00\\.00", "01.23"}, {9999, u"00\\.00", "99.99"}, {0, u"00\\.00", "00.00"},
        {12345, u"00\\.00", "123.45"}, {0, u"##0", "0"}, {1500, u"##0", "1500"},
        {1.5, u"#0.0", "1.5"}, {12.34, u"#0.0", "12.3"}, {0, u"#0.0", "0.0"},
        {53.5, u"00.0", "53.5"}, {4, u"00.0", "04.0"}, {123, u"00000", "00123"},
        {123456, u"00000", "123456"}, {38400, u"#####", "38400"}, {4800, u"#####", "4800"},
        {0, u"#####", ""}, {0, u"##", ""}, {7, u"##", "7"},
        {1016, u"##", "1016"}, {-42, u"##", "-42"}, {7, u"00", "07"},
        {2.5, u"0", "3"}, {-2.5, u"0", "-3"}, {0.45, u"0.0", "0.5"},
        {2.675, u"0.00", "2.68"}, {1.005, u"0.00", "1.01"}, {9.96, u"0.0", "10.0"},
        {-0.04, u"0.0", "0.0"}, {5.25, u".00", "5.25"}, {5, u"0.##", "5."},
        {5.2, u"0.##", "5.2"}, {16777215, u"00000000", "16777215"}, {66051, u"00000000", "00066051"},
        {2024, u"0000", "2024"}, {3, u"a\\00", "a03"},
        // clang-format on
    };
    for (const auto& row : rows)
        EXPECT_EQ(shown(Text::Format(row.value, QStringView(row.pattern))), row.text)
            << row.value << " by " << shown(QString::fromUtf16(row.pattern));
}

TEST(Text, PositionsCountFromOne) {
    struct {
        const char16_t* text;
        const char16_t* find;
        qsizetype start;
        qsizetype position;
    } const rows[] = {
        // clang-format off
        {u"^RVM01.23;", u";", 1, 10}, {u"Hello", u"LL", 1, 3}, {u"Hello", u"l", 4, 4},
        {u"Hello", u"l", 5, 0}, {u"Hello", u"l", 0, 3}, {u"Hello", u"l", 99, 0},
        {u"", u"l", 1, 0}, {u"lo", u"Hello", 1, 0},
        // clang-format on
    };
    for (const auto& row : rows)
        EXPECT_EQ(Text::InStr(QStringView(row.text), QStringView(row.find), row.start), row.position)
            << shown(QString::fromUtf16(row.text)) << " from " << row.start;

    EXPECT_EQ(Text::Mid(u"^BN05;", 4, 2), QStringLiteral("05"));
    EXPECT_EQ(Text::Mid(u"^BN", 4, 2), QString());
    EXPECT_EQ(Text::Mid(u"^BN0", 4, 2), QStringLiteral("0"));
    EXPECT_EQ(Text::Mid(u"abc", 2), QStringLiteral("bc"));
    EXPECT_EQ(Text::Mid(u"abc", 0, 2), QStringLiteral("ab"));
    EXPECT_EQ(Text::Left(u"ab", 5), QStringLiteral("ab"));
    EXPECT_EQ(Text::Right(u"ab", -1), QString());
}

TEST(Text, EqualityForgetsCaseAndStrCompDoesNot) {
    EXPECT_TRUE(Text::equal(u"BootLoader", u"Bootloader"));
    EXPECT_FALSE(Text::equal(u"Main", u"Main "));
    EXPECT_EQ(Text::StrComp(u"VLX720", u"VLX720"), 0);
    EXPECT_NE(Text::StrComp(u"VLX720", u"vlx720"), 0);
    EXPECT_LT(Text::StrComp(u"A", u"a"), 0);
    EXPECT_EQ(Text::ReplaceAll(QStringLiteral("aXbx"), QStringLiteral("x"), QString()), QStringLiteral("ab"));
    EXPECT_EQ(Text::ReplaceAllB(QStringLiteral("aXbx"), QStringLiteral("x"), QString()),
              QStringLiteral("aXb"));
    EXPECT_EQ(Text::ReplaceAll(QStringLiteral("abc"), QString(), QStringLiteral("-")), QStringLiteral("abc"));
}

TEST(Text, TheCountOfFieldsIsThatOfTheFieldsToBeHad) {
    struct {
        const char16_t* text;
        const char16_t* separator;
        qsizetype count;
        const char16_t* fields;  // joined by "|"
    } const rows[] = {
        // clang-format off
        {u"",        u";",  0, u""},
        {u"a",       u";",  1, u"a"},
        {u"a;b",     u";",  2, u"a|b"},
        {u";a;",     u";",  3, u"|a|"},
        {u"aXbxc",   u"x",  3, u"a|b|c"},
        {u"a;;;b",   u";;", 2, u"a|;b"},
        {u"a;b",     u"",   1, u"a;b"},
        // clang-format on
    };
    for (const auto& row : rows) {
        const QStringView text(row.text);
        const QStringView separator(row.separator);
        EXPECT_EQ(Text::CountFields(text, separator), row.count) << shown(text.toString());
        QStringList fields;
        for (qsizetype number = 1; number <= row.count; ++number)
            fields += Text::NthField(text, separator, number);
        EXPECT_EQ(shown(fields.join(u'|')), shown(QString::fromUtf16(row.fields)));
        EXPECT_EQ(Text::NthField(text, separator, row.count + 1), QString());
    }
    EXPECT_EQ(Text::NthField(u"a;b", u";", 0), QString());
}

TEST(Text, HexadecimalIsUpperCaseAndTwoDigitsWhereTold) {
    EXPECT_EQ(Text::Hex(0x340BC6D9), QStringLiteral("340BC6D9"));
    EXPECT_EQ(Text::Hex(0), QStringLiteral("0"));
    EXPECT_EQ(Text::Hex2(10), QStringLiteral("0A"));
    EXPECT_EQ(Text::Hex2(0x1AB), QStringLiteral("1AB"));
    EXPECT_EQ(Text::Hex2(-1), QStringLiteral("FFFFFFFF"));
}

TEST(Text, TrimTakesControlCodesAndEveryLineByteSurvives) {
    EXPECT_EQ(Text::Trim(QString::fromLatin1("\r\x03 ^OS1; \n\x03")), QStringLiteral("^OS1;"));
    EXPECT_EQ(Text::Trim(u" \t"), QString());
    QByteArray all;
    for (int value = 0; value < 256; ++value)
        all += static_cast<char>(value);
    EXPECT_EQ(Text::toLine(Text::fromLine(all)), all);
}

}  // namespace
