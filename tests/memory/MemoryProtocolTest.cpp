#include "MemoryProtocol.h"

#include <gtest/gtest.h>

namespace {

TEST(MemoryProtocol, CommandsCarryTheirChecksum) {
    EXPECT_EQ(FormatERCommand(0, 0x20, 32), QStringLiteral("^ER002020C0;"));
    EXPECT_EQ(FormatERCommand(0, 0xC0, 0x20), QStringLiteral("^ER00C02020;"));
    EXPECT_EQ(FormatERCommand(3, 0xE0, 0x20), QStringLiteral("^ER03E020FD;"));
    EXPECT_EQ(FormatEWCommand(0, 0x52, 1, QByteArray(1, '\0')), QStringLiteral("^EW00520100AD;"));
    EXPECT_EQ(FormatEWCommand(0, 0x50, 2, QByteArrayLiteral("ABC")), QStringLiteral("^EW00500241422B;"));
    EXPECT_EQ(FormatEWCommand(0, 0, 1, QByteArrayLiteral("\xFF")), QStringLiteral("^EW000001FF00;"));
}

struct AnswerCase {
    const char* name;
    const char* response;
    bool isShortRead;            // by the first eight characters
    bool isConfigurationAnswer;  // by positions 2 to 9
};

// To a read of two bytes at page 0, address E0, which hold D2 04. The checksum of the sound answer is 48.
// clang-format off
const AnswerCase AnswerCases[] = {
    {"sound",                       "^ER00E002D20448;",   true,  true},
    {"lower case",                  "^er00e002d20448;",   true,  true},
    {"other opening character",     "#ER00E002D20448;",   false, true},
    {"other last digit of count",   "^ER00E003D20448;",   true,  false},
    {"other page",                  "^ER01E002D20448;",   false, false},
    {"other address, same sum",     "^ER00E202D00448;",   false, false},
    {"right length, wrong command", "^EW00E002D20448;",   false, false},
    {"bad checksum",                "^ER00E002D20449;",   false, false},
    {"one byte less",               "^ER00E002D248;",     false, false},
    {"one byte more",               "^ER00E002D2040048;", false, false},
    {"no digits at all",            "^ER00E002......;",   false, false},
    {"empty",                       "",                   false, false},
    {"just the end",                ";",                  false, false},
    {"the poll's answer",           "^TM025;",            false, false},
};
// clang-format on

TEST(MemoryProtocol, AnswersAreTakenOrRefused) {
    const QString command = FormatERCommand(0, 0xE0, 2);
    for (const AnswerCase& c : AnswerCases) {
        SCOPED_TRACE(c.name);
        const QString response = QString::fromLatin1(c.response);
        EXPECT_EQ(ParseResponse(0, 2, 0xE0, command, response), c.isShortRead);
        EXPECT_EQ(isConfigurationAnswer(2, 0xE0, command, response), c.isConfigurationAnswer);
    }
}

TEST(MemoryProtocol, ThePageCountsInTheSumOfAnyPage) {
    const QString command = FormatERCommand(2, 0, 1);
    EXPECT_TRUE(ParseResponse(2, 1, 0, command, QStringLiteral("^ER02000110ED;")));
    EXPECT_FALSE(ParseResponse(2, 1, 0, command, QStringLiteral("^ER02000110EF;")));
}

}  // namespace
