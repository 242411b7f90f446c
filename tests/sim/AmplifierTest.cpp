// What the simulated amplifier says to what it hears, on the line and in its console.
#include "Console.h"
#include "SimBench.h"

namespace {

using AmplifierTest = SimBench;

TEST_F(AmplifierTest, ConversationHasItsAnswers) {
    amplifier.liveValues().hold(
        {.decivolts = 532, .deciamperes = 5, .watts = 480, .deciSwr = 13, .celsius = 41});
    const QByteArray before = amplifier.eeprom().read(0, 0, 0xE0);
    // In their order; what stands behind "> " is said in the console.
    const std::pair<QByteArray, QByteArray> rows[] = {
        // clang-format off
        {";;",                    ";;"},
        {"^RVM;",                 "^RVM01.23;"},
        {"^WS;^VI;",              "^WS480 013;^VI532 005;"},
        {"M7H;M70;AI0;^rvm;^XX;", ""},
        {QByteArray(5000, 'x'),   ""},
        {"^TM;",                  "^TM041;"},
        {"^BN10;^BN;^BN11;^BN;",  "^BN10;^BN10;"},
        {"^BNxx;^BN;^BN07;^BN;",  "^BN10;^BN07;"},
        {"^OS1;^OS;^OS7;^OS;",    "^OS1;^OS1;"},
        {"> fault  9",            "main, 38400 bit/s, version 01.23, band 7, standby, fault 9"},
        {"^FL;^OS1;^OS;",         "^FL09;^OS0;"},
        {"^FLC;^FL;^OS1;^OS;",    "^FL00;^OS1;"},
        {"> fault 0",             "usage: fault CODE"},
        {"> band 11",             "usage: band 0..10"},
        {"> speed 1200",          "usage: speed 38400|19200|9600|4800"},
        {"> power",               "usage: power on|off"},
        {"> misbehave oddly",     "usage: misbehave NAME [NTH]"},
        {"> ",                    ""},
        {"^ER002020C1;^ER042020BC;^ER0020XXC0;^EW00520100AC;^EW0052010AD;^EW;^ER;", ""},
        {"^EW00520100AD;",        "^EW005201AD;"},
        {"> version 02.00",       "main, 38400 bit/s, version 02.00, band 7, operate, fault 0"},
        {"> button",              "restarting, 38400 bit/s, version 02.00, band 7, standby, fault 0"},
        // clang-format on
    };
    for (const auto& [question, answer] : rows)
        EXPECT_EQ(question.startsWith('>')
                      ? runConsoleCommand(amplifier, QString::fromLatin1(question.mid(2))).toLatin1()
                      : ask(question, 2s),
                  answer)
            << question.left(20).constData();
    EXPECT_EQ(amplifier.eeprom().read(0, 0, 0xE0).replace(0x52, 1, before.mid(0x52, 1)), before);
    clock.advance(3s);
    EXPECT_EQ(clock.pendingWaits(), 0);
}

TEST_F(AmplifierTest, MisbehaviourHitsTheAnswersItIsMeantFor) {
    const QByteArray noise("\x00\xFF\x80^\r\xC1\x7F", 7);
    struct Row {
        const char* name;
        int nth;
        QByteArray question;
        QByteArray heard;  // within 200 ms
    };
    const Row rows[] = {
        // clang-format off
        {"silent",              0, "^TM;^BN;",         ""},
        {"answer-lost",         2, "^TM;^BN;^TM;",     "^TM025;^TM025;"},
        {"late",                1, "^TM;^BN;",         "^BN00;"},
        {"doubled",             1, "^TM;^BN;",         "^TM025;^TM025;^BN00;"},
        {"wrong-bytes",         0, "^TM;",             "??????;"},
        {"in-pieces",           0, "^TM;^BN;",         "^TM025;^BN00;"},
        {"joined",              0, "^TM;^BN;",         "^TM025;^BN00;"},
        {"noise",               0, "^TM;",             noise + "^TM025;" + noise},
        {"short-band",          0, "^TM;^BN;",         "^TM025;^BN;"},
        {"memory-no-answer",    0, "^TM;^ER005201AD;", "^TM025;"},
        {"memory-cut",          0, "^TM;^ER005201AD;", "^TM025;^ER0052"},
        {"memory-other",        0, "^ER005201AD;",     "^TM025;"},
        {"memory-bad-checksum", 0, "^ER005201AD;",     "^ER0052015850;"},
        {"memory-late",         0, "^TM;^ER005201AD;", "^TM025;"},
        {"byte-lost",           2, "^TM;^BN;",         "^BN00;"},
        {"byte-flipped",        6, "^TM;^BN;^TM;",     "^TM025;^TM025;"},
        // clang-format on
    };
    for (const Row& row : rows) {
        runConsoleCommand(amplifier, QStringLiteral("misbehave %1 %2").arg(row.name).arg(row.nth));
        EXPECT_EQ(ask(row.question), row.heard) << row.name;
        runConsoleCommand(amplifier, QStringLiteral("behave"));
        ask("", 5s);
    }
    EXPECT_EQ(clock.pendingWaits(), 0);
}

TEST_F(AmplifierTest, FlushDropsWhatHasPassedAndLeavesWhatHasNot) {
    port.Write("^TM;");
    // The question, and three bytes and a half of the answer.
    clock.advance(1042us + 912us);
    port.Flush();
    clock.advance(1s);
    EXPECT_EQ(port.ReadAll(), "025;");
}

}  // namespace
