#include <vector>

#include "SimBench.h"

namespace {

using MainFirmwareTest = SimBench;

TEST_F(MainFirmwareTest, AnswersEachQuestion) {
    amplifier.liveValues().hold(
        {.decivolts = 532, .deciamperes = 5, .watts = 480, .deciSwr = 13, .celsius = 41});
    amplifier.setBand(7);
    const std::vector<std::pair<QByteArray, QByteArray>> cases{
        // clang-format off
        {";",                     ";"},
        {";;;;;",                 ";;;;;"},
        {"^RVM;",                 "^RVM01.23;"},
        {"^BN;",                  "^BN07;"},
        {"^FL;",                  "^FL00;"},
        {"^OS;",                  "^OS0;"},
        {"^WS;",                  "^WS480 013;"},
        {"^TM;",                  "^TM041;"},
        {"^VI;",                  "^VI532 005;"},
        {"^BN;^TM;",              "^BN07;^TM041;"},
        {"M7H;M70;AI0;",          ""},
        {"^rvm;",                 ""},
        {"^XX;",                  ""},
        {QByteArray(5000, 'x'),   ""},
        {"^TM;",                  "^TM041;"},
        // clang-format on
    };
    for (const auto& [question, answer] : cases)
        EXPECT_EQ(ask(question, 2s), answer) << question.left(20).constData();
    const QByteArray identity = ask("I;");
    EXPECT_GE(identity.size(), 9);
    EXPECT_FALSE(identity.startsWith("VLX720"));
    EXPECT_EQ(clock.pendingWaits(), 0);
}

TEST_F(MainFirmwareTest, OrdersShowInTheNextAnswer) {
    const std::vector<std::pair<QByteArray, QByteArray>> cases{
        // clang-format off
        {"^BN10;^BN;",    "^BN10;"},
        {"^BN11;^BN;",    "^BN10;"},
        {"^BNxx;^BN;",    "^BN10;"},
        {"^BN00;^BN;",    "^BN00;"},
        {"^OS1;^OS;",     "^OS1;"},
        {"^OS7;^OS;",     "^OS1;"},
        {"^OS0;^OS;",     "^OS0;"},
        // clang-format on
    };
    for (const auto& [order, answer] : cases)
        EXPECT_EQ(ask(order), answer) << order.constData();
}

TEST_F(MainFirmwareTest, FaultTripsToStandbyUntilItIsCleared) {
    ask("^OS1;");
    amplifier.raiseFault(9);
    EXPECT_EQ(ask("^FL;^OS;"), "^FL09;^OS0;");
    EXPECT_EQ(ask("^OS1;^OS;"), "^OS0;");
    EXPECT_EQ(ask("^FLC;^FL;"), "^FL00;");
    EXPECT_EQ(ask("^OS1;^OS;"), "^OS1;");
}

TEST_F(MainFirmwareTest, LiveValuesMoveAsUnderLoad) {
    ask("^OS1;");
    Readings idle;
    Readings driven;
    for (int second = 0; second < 600; ++second) {
        clock.advance(1s);
        const Readings now = amplifier.liveValues().read();
        (now.watts == 0 ? idle : driven) = now;
    }
    EXPECT_GT(driven.watts, 300);
    EXPECT_LT(driven.decivolts, idle.decivolts);
    EXPECT_GT(driven.deciamperes, idle.deciamperes);
    EXPECT_GT(driven.celsius, 40);
    ask("^OS0;");
    clock.advance(3600s);
    EXPECT_EQ(amplifier.liveValues().read().celsius, 25);
    EXPECT_EQ(amplifier.liveValues().read().watts, 0);
}

TEST_F(MainFirmwareTest, ListensAtItsOwnSpeedOnly) {
    for (const int own : {38400, 19200, 9600, 4800}) {
        amplifier.setSpeed(own);
        for (const int ours : {38400, 19200, 9600, 4800}) {
            setPortSpeed(ours);
            // The first ";" ends what was heard as garbage before.
            ask(";");
            EXPECT_EQ(ask("^RVM;"), own == ours ? "^RVM01.23;" : "") << own << " heard at " << ours;
        }
    }
}

TEST_F(MainFirmwareTest, PowerDownWaitsAtTheLoadersSpeed) {
    amplifier.setSpeed(9600);
    setPortSpeed(9600);
    ask("^on0;");
    EXPECT_EQ(amplifier.state(), Vlx720::State::Waiting);
    EXPECT_EQ(ask("I;"), "");
    setPortSpeed(38400);
    ask(";");
    EXPECT_TRUE(ask("I;").startsWith("VLX720"));
    EXPECT_EQ(ask("^BN;"), "^BN;");
    EXPECT_EQ(ask(";;^TM;"), ";;");
    ask("P;", 2s);
    EXPECT_EQ(amplifier.state(), Vlx720::State::Main);
    setPortSpeed(9600);
    ask(";");
    EXPECT_EQ(ask("^BN;"), "^BN00;");
}

TEST_F(MainFirmwareTest, RestartIsSilentForItsTime) {
    ask("^rpm;", 0ms);
    clock.advance(1400ms);
    EXPECT_EQ(ask("^TM;", 50ms), "");
    clock.advance(100ms);
    EXPECT_EQ(ask("^TM;"), "^TM025;");
}

TEST_F(MainFirmwareTest, PowerCutForgetsWhatWasOnItsWay) {
    port.Write("^RVM;");
    clock.advance(2ms);
    amplifier.powerOff();
    clock.advance(1s);
    EXPECT_EQ(port.ReadAll(), "");
    EXPECT_EQ(clock.pendingWaits(), 0);
    amplifier.powerOn();
    clock.advance(1s);
    EXPECT_EQ(amplifier.state(), Vlx720::State::Waiting);
}

}  // namespace
