#include "Console.h"
#include "SimBench.h"

namespace {

using ConsoleTest = SimBench;

TEST_F(ConsoleTest, DoesWhatTheLineSays) {
    const std::vector<std::pair<QString, QString>> cases{
        // clang-format off
        {QStringLiteral(""),               QString()},
        {QStringLiteral("band 10"),        QStringLiteral("main, 38400 bit/s, version 01.23, band 10, standby, fault 0")},
        {QStringLiteral("fault  9"),       QStringLiteral("main, 38400 bit/s, version 01.23, band 10, standby, fault 9")},
        {QStringLiteral("speed 9600"),     QStringLiteral("main, 9600 bit/s, version 01.23, band 10, standby, fault 9")},
        {QStringLiteral("version 02.00"),  QStringLiteral("main, 9600 bit/s, version 02.00, band 10, standby, fault 9")},
        {QStringLiteral("fault 0"),        QStringLiteral("usage: fault CODE")},
        {QStringLiteral("fault x"),        QStringLiteral("usage: fault CODE")},
        {QStringLiteral("band 11"),        QStringLiteral("usage: band 0..10")},
        {QStringLiteral("speed 1200"),     QStringLiteral("usage: speed 38400|19200|9600|4800")},
        {QStringLiteral("power"),          QStringLiteral("usage: power on|off")},
        {QStringLiteral("misbehave oddly"), QStringLiteral("usage: misbehave NAME [NTH]")},
        {QStringLiteral("button"),         QStringLiteral("restarting, 9600 bit/s, version 02.00, band 10, standby, fault 0")},
        // clang-format on
    };
    for (const auto& [line, reply] : cases)
        EXPECT_EQ(runConsoleCommand(amplifier, line), reply) << qPrintable(line);
    EXPECT_TRUE(runConsoleCommand(amplifier, QStringLiteral("help")).contains(QStringLiteral("memory-cut")));
}

TEST_F(ConsoleTest, MisbehaviourGoesByNameAndCount) {
    runConsoleCommand(amplifier, QStringLiteral("misbehave answer-lost 2"));
    EXPECT_EQ(ask("^TM;^TM;^TM;"), "^TM025;^TM025;");
    runConsoleCommand(amplifier, QStringLiteral("misbehave silent"));
    EXPECT_EQ(ask("^TM;"), "");
    runConsoleCommand(amplifier, QStringLiteral("behave"));
    EXPECT_EQ(ask("^TM;"), "^TM025;");
}

}  // namespace
