#include "VersionCheck.h"

#include <gtest/gtest.h>

#include "AmplifierBench.h"
#include "FakePanels.h"

namespace {

struct Checked : AmplifierBench {
    explicit Checked(const Vlx720::Settings& settings = {}) : AmplifierBench(settings) {
        port.Open();
        portPanel.setSerialPortMenuRows({QStringLiteral("ttyUSB0")});
        portPanel.setSerialPortMenuIndex(0);
        window.mStartup = false;
    }

    bool check() {
        Task<bool> task = versions.CheckVLXVersion();
        EXPECT_TRUE(clock.run(task));
        EXPECT_EQ(clock.pendingWaits(), 0);
        return task.result();
    }

    void test() {
        const Task<> task = versions.TestCommButtton_Action([this] { return compare(); });
        EXPECT_TRUE(clock.run(task));
        EXPECT_EQ(clock.pendingWaits(), 0);
        EXPECT_FALSE(window.mStartup);
    }

    Task<> compare() {
        wasSilentCompare = window.mStartup;
        co_return;
    }

    FakePortPanel portPanel;
    FakeFirmwarePanel firmwarePanel;
    RadioState radioState{platform, globals, line};
    VersionCheck versions{platform, globals, radioState, window, portPanel, firmwarePanel};
    bool wasSilentCompare = false;
};

struct OutcomeCase {
    const char* name;
    Vlx720::State state;
    int speed;
    QStringList logOfCheck;
    QStringList box;
    QStringList logOfTest;
    const char* installed;
};

class OutcomeTest : public testing::TestWithParam<OutcomeCase> {
protected:
    static Vlx720::Settings settings() {
        Vlx720::Settings result;
        result.state = GetParam().state;
        result.speed = GetParam().speed;
        return result;
    }
};

TEST_P(OutcomeTest, CheckTellsItInTheLog) {
    Checked bench(settings());
    const bool ok = bench.check();
    EXPECT_EQ(ok, GetParam().state == Vlx720::State::Main);
    EXPECT_EQ(bench.log, GetParam().logOfCheck);
    EXPECT_EQ(bench.firmwarePanel.installed, QString::fromLatin1(GetParam().installed));
    // Also to a bootstrap loader, as a failed load leaves it.
    EXPECT_EQ(bench.firmwarePanel.canSend, GetParam().state != Vlx720::State::Off);
}

TEST_P(OutcomeTest, TestTellsItInABoxToo) {
    Checked bench(settings());
    bench.firmwarePanel.installed = QStringLiteral("09.99");
    bench.test();
    EXPECT_EQ(bench.dialogs.shown, GetParam().box);
    EXPECT_EQ(bench.log, GetParam().logOfTest);
    EXPECT_EQ(bench.firmwarePanel.installed, QString::fromLatin1(GetParam().installed));
    EXPECT_TRUE(bench.wasSilentCompare);
}

const QString Waiting =
    QStringLiteral("VLX waiting for power button or firmware load. RS-232 speed 38400 bit/s");

INSTANTIATE_TEST_SUITE_P(
    Outcomes, OutcomeTest,
    testing::Values(OutcomeCase{"main",
                                Vlx720::State::Main,
                                9600,
                                {"VLX Version 01.23. ttyUSB0 RS-232 speed 9600 bit/s"},
                                {"VLX version 01.23. \nttyUSB0 RS-232 speed 9600 bit/s"},
                                {"VLX Version 01.23. ttyUSB0 RS-232 speed 9600 bit/s"},
                                "01.23"},
                    OutcomeCase{
                        "waiting", Vlx720::State::Waiting, 38400, {Waiting}, {Waiting}, {Waiting}, "---"},
                    OutcomeCase{"silent",
                                Vlx720::State::Off,
                                38400,
                                {"VLX is not responding."},
                                {"VLX is not responding."},
                                {},
                                "---"}),
    [](const auto& row) { return row.param.name; });

TEST(VersionCheckTest, StartUpLeavesTheLabelOfASilentAmplifier) {
    Checked bench;
    bench.amplifier.powerOff();
    bench.window.mStartup = true;
    bench.firmwarePanel.installed = QStringLiteral("design");
    EXPECT_FALSE(bench.check());
    EXPECT_EQ(bench.firmwarePanel.installed, QStringLiteral("design"));
}

}  // namespace
