#include "VersionCheck.h"

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

TEST(VersionCheckTest, OutcomeIsToldInTheLogAndByTheButtonInABoxToo) {
    const QString waiting =
        QStringLiteral("VLX waiting for power button or firmware load. RS-232 speed 38400 bit/s");
    const QString main = QStringLiteral("VLX Version 01.23. ttyUSB0 RS-232 speed 9600 bit/s");
    const QString silent = QStringLiteral("VLX is not responding.");
    struct Row {
        Vlx720::Settings settings;
        QString log;
        QString box;
        QStringList logOfTest;
        QString installed;
    };
    // clang-format off
    const Row rows[] = {
        {{.speed = 9600}, main, QStringLiteral("VLX version 01.23. \nttyUSB0 RS-232 speed 9600 bit/s"), {main}, QStringLiteral("01.23")},
        {{.state = Vlx720::State::Waiting}, waiting, waiting, {waiting}, QStringLiteral("---")},
        {{.state = Vlx720::State::Off}, silent, silent, {}, QStringLiteral("---")}};
    // clang-format on
    for (const Row& row : rows) {
        Checked bench(row.settings);
        EXPECT_EQ(bench.check(), row.settings.state == Vlx720::State::Main);
        EXPECT_EQ(bench.log, QStringList(row.log));
        EXPECT_EQ(bench.firmwarePanel.installed, row.installed);
        // Also to a bootstrap loader, as a failed load leaves it.
        EXPECT_EQ(bench.firmwarePanel.canSend, row.settings.state != Vlx720::State::Off);

        Checked pressed(row.settings);
        pressed.firmwarePanel.installed = QStringLiteral("09.99");
        pressed.test();
        EXPECT_EQ(pressed.dialogs.shown, QStringList(row.box));
        EXPECT_EQ(pressed.log, row.logOfTest);
        EXPECT_EQ(pressed.firmwarePanel.installed, row.installed);
        EXPECT_TRUE(pressed.wasSilentCompare);
    }
}

}  // namespace
