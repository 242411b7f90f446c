#include <QKeyEvent>
#include <QTest>

#include "AppBench.h"

using namespace std::chrono_literals;

namespace {

TEST(OperateTabTest, ChosenBandIsLargeAndAloneSo) {
    AppBench bench(Tab::Operate);
    for (const auto& [chosen, told, sent] :
         {std::tuple{10, "50 MHz", "^BN10;"}, {0, "1.8 MHz", "^BN00;"}, {5, "14 MHz", "^BN05;"}}) {
        bench.port().clearWritten();
        bench.press(QStringLiteral("BandSelected%1").arg(chosen));
        EXPECT_EQ(bench.port().written(), sent);
        EXPECT_EQ(bench.label(QStringLiteral("Band")), QLatin1String(told));
        bench.clock().advance(2s);
        EXPECT_EQ(bench.amplifier().band(), chosen);
        for (int band = 0; band < 11; ++band) {
            const auto* button = bench.control<QPushButton>(QStringLiteral("BandSelected%1").arg(band));
            EXPECT_EQ(button->font().bold(), band == chosen) << band;
            EXPECT_EQ(button->font().pointSize() == 18, band == chosen) << band;
        }
    }
}

TEST(OperateTabTest, LeavingTheTabStopsThePollForGood) {
    AppBench bench(Tab::Port);
    for (const Tab other : {Tab::Port, Tab::Firmware, Tab::Configuration, Tab::CommandTester}) {
        bench.chooseTab(Tab::Operate);
        bench.clock().advance(1500ms);
        bench.chooseTab(other);
        bench.port().clearWritten();
        bench.clock().advance(5s);
        EXPECT_EQ(bench.port().written(), QByteArray());
    }
}

TEST(OperateTabTest, FocusNeverMovesToAButtonByItself) {
    AppBench bench(Tab::Port);
    auto* page = bench.control<QWidget>(QStringLiteral("OperateTab"));
    const auto enter = [&] {
        bench.control<QPushButton>(QStringLiteral("TestCommButtton"))->setFocus();
        bench.chooseTab(Tab::Operate);
        bench.clock().advance(300ms);
    };
    const auto expectQuiet = [&](const char* when) {
        EXPECT_EQ(bench.window().focusWidget(), page) << when;
        bench.port().clearWritten();
        typeKey(*bench.window().focusWidget(), QStringLiteral(" "), Qt::Key_Space);
        EXPECT_EQ(bench.port().written(), QByteArray()) << when;
    };
    for (const char* control : {"OnOff", "OperStby", "ClearCurrentFault", "BandSelected3"}) {
        enter();
        expectQuiet("entering");
        bench.control<QPushButton>(QString::fromLatin1(control))->setFocus();
        bench.amplifier().emitNoise("^BN;");  // the amplifier waits: the panel is disabled
        bench.clock().advance(10ms);
        if (QLatin1String(control) != QLatin1String("OnOff"))
            expectQuiet(control);
        bench.chooseTab(Tab::Port);
        bench.press(QStringLiteral("TestCommButtton"));
        bench.clock().advance(5s);
    }
}

TEST(OperateTabTest, HeldKeyAndDoubleClickPressOnce) {
    AppBench bench(Tab::Operate);
    auto* fault = bench.control<QPushButton>(QStringLiteral("ClearCurrentFault"));
    bench.port().clearWritten();
    for (const int key : {int(Qt::Key_Space), int(Qt::Key_Return)}) {
        for (int repeat = 0; repeat < 20; ++repeat) {
            QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, QString(), repeat > 0);
            QApplication::sendEvent(fault, &press);
        }
        QKeyEvent release(QEvent::KeyRelease, key, Qt::NoModifier);
        QApplication::sendEvent(fault, &release);
    }
    EXPECT_LE(bench.port().written().count("^FLC;"), 2);
    auto* onOff = bench.control<QPushButton>(QStringLiteral("OnOff"));
    QTest::mouseClick(onOff, Qt::LeftButton);
    QTest::mouseDClick(onOff, Qt::LeftButton);
    bench.clock().advance(3s);
    EXPECT_EQ(bench.amplifier().state(), Vlx720::State::Waiting);
    EXPECT_EQ(onOff->text(), QStringLiteral("ON"));
}

TEST(OperateTabTest, OldValuesLookOldUntilTheFirstAnswer) {
    AppBench bench(Tab::Operate);
    auto* voltage = bench.control<QLabel>(QStringLiteral("PAVoltage"));
    const auto status = [&bench] { return bench.label(QStringLiteral("DisplayStatus")); };
    bench.amplifier().powerOff();
    bench.clock().advance(3s);
    EXPECT_TRUE(voltage->isEnabled()) << "two polls are not yet three";
    EXPECT_EQ(status(), QStringLiteral("Ready"));
    bench.clock().advance(1s);
    EXPECT_FALSE(voltage->isEnabled());
    EXPECT_FALSE(bench.control<QLabel>(QStringLiteral("Stby"))->autoFillBackground());
    EXPECT_EQ(status(), QStringLiteral("No answer from the amplifier for 3 s"));
    bench.clock().advance(60s);
    EXPECT_EQ(status(), QStringLiteral("No answer from the amplifier for 63 s"));
    bench.port().clearWritten();
    bench.clock().advance(2s);
    EXPECT_EQ(bench.port().written(), QByteArray("^BN;^FL;^OS;^WS;^TM;^VI;").repeated(2));
    bench.amplifier().emitNoise("^TM025;");
    bench.clock().advance(10ms);
    EXPECT_TRUE(voltage->isEnabled());
    EXPECT_EQ(status(), QStringLiteral("Ready"));
}

TEST(OperateTabTest, LostPortIsToldBelowTheTabs) {
    AppBench bench(Tab::Operate);
    bench.port().unplug();
    bench.clock().advance(1ms);
    EXPECT_EQ(bench.label(QStringLiteral("DisplayStatus")), QStringLiteral("Port disconnected"));
    bench.chooseTab(Tab::Port);
    bench.port().replug();
    bench.press(QStringLiteral("RefreshPortsButton"));
    EXPECT_EQ(bench.label(QStringLiteral("DisplayStatus")), QStringLiteral("Ready"));
    bench.chooseTab(Tab::Operate);
    bench.clock().advance(500ms);
    EXPECT_TRUE(bench.control<QLabel>(QStringLiteral("PAVoltage"))->isEnabled());
}

TEST(OperateTabTest, ScreenReaderHearsTheValues) {
    AppBench bench(Tab::Port);
    bench.amplifier().liveValues().hold({532, 128, 150, 12, 31});
    bench.amplifier().setBand(5);
    bench.chooseTab(Tab::Operate);
    bench.clock().advance(500ms);
    EXPECT_EQ(bench.spoken(QStringLiteral("PAVoltage")), QStringLiteral("PA Voltage 53.2 V"));
    EXPECT_EQ(bench.spoken(QStringLiteral("CommandMacroButton2")), QStringLiteral("Macro 3"));
    for (int band = 0; band < 11; ++band) {
        auto* button = bench.control<QWidget>(QStringLiteral("BandSelected%1").arg(band));
        EXPECT_EQ(QAccessible::queryAccessibleInterface(button)->state().checked, band == 5) << band;
    }
    bench.press(QStringLiteral("BandSelected5"));
    EXPECT_TRUE(bench.control<QPushButton>(QStringLiteral("BandSelected5"))->isChecked());
}

TEST(OperateTabTest, FaultsAreAnnouncedOnceASecondAtMost) {
    AppBench bench(Tab::Operate);
    bench.clock().advance(2s);
    const auto told = [&bench] {
        return bench.control<QWidget>(QStringLiteral("OperateTab"))->accessibleDescription();
    };
    for (const char* answer : {"^FL09;", "^FL02;", "^FL00;", "^FL12;"}) {
        bench.amplifier().emitNoise(answer);
        bench.clock().advance(10ms);
    }
    EXPECT_EQ(told(), QStringLiteral("Fault REFL HI"));
    bench.app().monitor().stopPoll();
    bench.clock().advance(999ms);
    EXPECT_EQ(told(), QStringLiteral("Fault POUT HI"));
}

}  // namespace
