#include "PortSelection.h"

#include "AmplifierBench.h"
#include "FakePanels.h"

namespace {

struct Selected : AmplifierBench {
    Selected() {
        ports.ports = {{QStringLiteral("ttyS0"), QStringLiteral("/dev/ttyS0")},
                       {QStringLiteral("ttyUSB0"), QStringLiteral("/dev/ttyUSB0")}};
        port.Lost = [this](const QString& reason) { run(selection.Serial1_Lost(reason)); };
    }

    void run(Task<> task) {
        EXPECT_TRUE(clock.run(task));
        EXPECT_EQ(clock.pendingWaits(), 0);
    }

    void start(std::int32_t chosen) {
        window.m_Port = chosen;
        selection.SerialPortMenu_Open();
        run(selection.openAtStart());
        panel.setSerialPortMenuIndex(window.m_Port);
        window.mStartup = false;
    }

    QString openPort() const { return port.isOpen() ? port.serialPort().path : QString(); }

    FakePortPanel panel;
    PortSelection selection{platform, globals, window, panel};
};

TEST(PortSelectionTest, NegativeIndexIsTheFirstPortAndAModemIsLeftAlone) {
    Selected bench;
    bench.start(-5);
    EXPECT_EQ(bench.window.m_Port, 0);
    EXPECT_EQ(bench.panel.rows, (QStringList{"ttyS0", "ttyUSB0"}));
    EXPECT_EQ(bench.openPort(), QStringLiteral("/dev/ttyS0"));
    Selected modem;
    modem.ports.ports.front().Name = QStringLiteral("Modem");
    modem.start(0);
    EXPECT_EQ(modem.port.openCount(), 0);
    EXPECT_EQ(bench.dialogs.shown + modem.dialogs.shown, QStringList());
}

TEST(PortSelectionTest, WithoutPortsADevicePathCanBeTyped) {
    Selected bench;
    bench.ports.ports.clear();
    bench.start(0);
    EXPECT_EQ(bench.dialogs.shown,
              QStringList{"System has no serial ports!  No way to communicate with VLX!"});
    EXPECT_EQ(bench.dialogs.beeps, 1);
    EXPECT_TRUE(bench.panel.isByNameShown);

    bench.run(bench.selection.PortCheck_Action(true));
    EXPECT_EQ(bench.openPort(), QString());
    bench.panel.field = QStringLiteral("/dev/pts/7");
    bench.selection.PortField_TextChange(bench.panel.field);
    bench.run(bench.selection.PortField_LostFocus());
    EXPECT_EQ(bench.openPort(), QStringLiteral("/dev/pts/7"));
    bench.run(bench.selection.PortField_LostFocus());
    EXPECT_EQ(bench.port.openCount(), 1) << "an unchanged name is not opened again";

    // An emptied name leaves the port as it was, and the next loss of focus tries again.
    bench.panel.field.clear();
    bench.selection.PortField_TextChange(QString());
    bench.run(bench.selection.PortField_LostFocus());
    EXPECT_TRUE(bench.window.bPortFieldChange);
    EXPECT_EQ(bench.openPort(), QStringLiteral("/dev/pts/7"));
    bench.run(bench.selection.PortCheck_Action(false));
    EXPECT_EQ(bench.openPort(), QString());
}

TEST(PortSelectionTest, RefusedPortSaysWhyInTheLog) {
    Selected bench;
    bench.port.refuseToOpen(QStringLiteral("ttyS0 is in use by another program"));
    bench.start(0);
    EXPECT_EQ(bench.dialogs.shown, QStringList{"Error opening serial port"});
    EXPECT_EQ(bench.dialogs.beeps, 1);
    ASSERT_EQ(bench.log.size(), 1);
    EXPECT_TRUE(bench.log.front().contains(QStringLiteral("in use by another program")));

    bench.run(bench.selection.SerialPortMenu_Change(1));
    EXPECT_EQ(bench.dialogs.shown.back(), QStringLiteral("Unable to open serial port ttyUSB0"));
    EXPECT_EQ(bench.window.m_Port, 1);
    EXPECT_EQ(bench.log.size(), 2);
}

TEST(PortSelectionTest, ChangeOpensTheOtherPortAndStartUpDoesNot) {
    Selected bench;
    bench.start(0);
    bench.run(bench.selection.SerialPortMenu_Change(1));
    EXPECT_EQ(bench.openPort(), QStringLiteral("/dev/ttyUSB0"));
    bench.window.mStartup = true;
    bench.run(bench.selection.SerialPortMenu_Change(0));
    EXPECT_EQ(bench.openPort(), QStringLiteral("/dev/ttyUSB0"));
    EXPECT_EQ(bench.window.m_Port, 1);
}

TEST(PortSelectionTest, RefreshLeavesTheOpenPortAlone) {
    Selected bench;
    bench.start(1);
    bench.ports.ports.pop_back();
    bench.run(bench.selection.RefreshPortsButton_Action());
    EXPECT_EQ(bench.panel.rows, QStringList{"ttyS0"});
    EXPECT_EQ(bench.panel.index, -1);
    // Another adapter in front of it moves its place, and the menu goes with it.
    bench.ports.ports.insert(bench.ports.ports.begin(), {"ttyACM0", "/dev/ttyACM0"});
    bench.ports.ports.push_back({"ttyUSB0", "/dev/ttyUSB0"});
    bench.run(bench.selection.RefreshPortsButton_Action());
    EXPECT_EQ(bench.panel.serialPortMenuText(), QStringLiteral("ttyUSB0"));
    EXPECT_EQ(bench.window.m_Port, 2);
    EXPECT_EQ(bench.port.openCount(), 1);
    EXPECT_FALSE(bench.window.mStartup);
}

TEST(PortSelectionTest, AdapterOfTheLastRunIsFoundAtAnotherPlace) {
    const PortInfo first{"ttyUSB0", "/dev/ttyUSB0", "0403:6001:A"};
    const PortInfo second{"ttyUSB1", "/dev/ttyUSB1", "0403:6001:B"};
    const PortInfo onBoard{"ttyS0", "/dev/ttyS0"};
    struct {
        const char* name;
        PortInfo chosen;
        std::vector<PortInfo> list;
        const char* opened;
    } const rows[] = {
        {"as it was", second, {first, second}, "/dev/ttyUSB1"},
        {"paths have changed places", {"", "/dev/ttyUSB1", "0403:6001:A"}, {first, second}, "/dev/ttyUSB0"},
        {"its path stands later", onBoard, {first, second, onBoard}, "/dev/ttyS0"},
        {"it is not there: the index counts",
         {"", "/dev/ttyUSB9", "1a86:7523:"},
         {first, second},
         "/dev/ttyUSB1"},
        {"another device at its path", {"", "/dev/ttyUSB0", "1a86:7523:"}, {first, second}, "/dev/ttyUSB1"},
        {"no file of an earlier version tells it", {}, {first, second}, "/dev/ttyUSB1"},
    };
    for (const auto& row : rows) {
        Selected bench;
        bench.ports.ports = row.list;
        bench.window.chosenPort = row.chosen;
        bench.start(1);
        EXPECT_EQ(bench.openPort(), QString::fromLatin1(row.opened)) << row.name;
        EXPECT_EQ(bench.window.chosenPort.path, bench.openPort()) << row.name;
    }
}

TEST(PortSelectionTest, RefusedChoiceAfterALossDoesNotMisleadTheRefresh) {
    Selected bench;
    bench.start(1);
    bench.port.unplug();
    bench.clock.advance(std::chrono::seconds(1));
    bench.port.replug();
    bench.port.refuseToOpen(QStringLiteral("busy"));
    bench.run(bench.selection.SerialPortMenu_Change(0));
    bench.port.refuseToOpen(QString());
    bench.run(bench.selection.RefreshPortsButton_Action());
    EXPECT_EQ(bench.openPort(), QStringLiteral("/dev/ttyUSB0"));
    EXPECT_EQ(bench.panel.serialPortMenuText(), QStringLiteral("ttyUSB0"));
}

TEST(PortSelectionTest, ByNameControlsAreShownOnRequest) {
    Selected bench;
    bench.start(0);
    EXPECT_FALSE(bench.panel.isByNameShown);
    bench.selection.ViewPortByName_Action(true);
    bench.run(bench.selection.RefreshPortsButton_Action());
    EXPECT_TRUE(bench.panel.isByNameShown);
    bench.selection.ViewPortByName_Action(false);
    EXPECT_FALSE(bench.panel.isByNameShown);
}

TEST(PortSelectionTest, RowsKeepTheirPortsThoughTheSystemsListHasChanged) {
    Selected bench;
    bench.start(0);
    bench.ports.ports.erase(bench.ports.ports.begin());
    bench.run(bench.selection.SerialPortMenu_Change(1));
    EXPECT_EQ(bench.openPort(), QStringLiteral("/dev/ttyUSB0"));
}

TEST(PortSelectionTest, LostPortIsToldOnceAndComesBackWithARefresh) {
    Selected bench;
    bench.start(0);
    bench.port.unplug(QStringLiteral("gone"));
    bench.clock.advance(std::chrono::seconds(5));
    EXPECT_EQ(bench.dialogs.shown.size(), 1);
    EXPECT_EQ(bench.log.size(), 1);
    EXPECT_EQ(bench.openPort(), QString());

    bench.port.replug();
    bench.run(bench.selection.RefreshPortsButton_Action());
    EXPECT_EQ(bench.openPort(), QStringLiteral("/dev/ttyS0"));
    EXPECT_EQ(bench.dialogs.shown.size(), 1);

    bench.selection.PortField_TextChange(QStringLiteral("a name that is not asked for"));
    bench.run(bench.selection.PortField_LostFocus());
    EXPECT_EQ(bench.openPort(), QString());
}

TEST(PortSelectionTest, AnotherDeviceAtTheLostPortsPlaceIsLeftAlone) {
    Selected bench;
    bench.start(1);
    bench.port.unplug();
    bench.clock.advance(std::chrono::seconds(1));
    bench.port.replug();
    bench.ports.ports[1] = {QStringLiteral("ttyUSB1"), QStringLiteral("/dev/ttyUSB1")};
    bench.run(bench.selection.RefreshPortsButton_Action());
    EXPECT_EQ(bench.openPort(), QString());
    // Back at another place of the list, it is found by its path.
    bench.ports.ports.insert(bench.ports.ports.begin(),
                             {QStringLiteral("ttyACM0"), QStringLiteral("/dev/ttyACM0")});
    bench.ports.ports.push_back({QStringLiteral("ttyUSB0"), QStringLiteral("/dev/ttyUSB0")});
    bench.run(bench.selection.RefreshPortsButton_Action());
    EXPECT_EQ(bench.openPort(), QStringLiteral("/dev/ttyUSB0"));
    EXPECT_EQ(bench.window.m_Port, 3);
    EXPECT_EQ(bench.panel.index, 3);
}

TEST(PortSelectionTest, AdapterThatComesBackIsKnownByItsIdentity) {
    const PortInfo onBoard{"ttyS0", "/dev/ttyS0"};
    const PortInfo ours{"ttyUSB0", "/dev/ttyUSB0", "10c4:ea60:0001"};
    const PortInfo likeOurs{"ttyUSB1", "/dev/ttyUSB1", "10c4:ea60:0001"};
    const PortInfo stranger{"ttyUSB0", "/dev/ttyUSB0", "1a86:7523:"};
    struct {
        const char* name;
        std::vector<PortInfo> before;
        PortInfo lost;
        std::vector<PortInfo> without;
        std::vector<PortInfo> after;
        const char* opened;
    } const rows[] = {
        {"at its place", {onBoard, ours}, ours, {onBoard}, {onBoard, ours}, "/dev/ttyUSB0"},
        {"at another", {onBoard, ours}, ours, {onBoard}, {likeOurs, onBoard}, "/dev/ttyUSB1"},
        {"before its going was seen", {ours}, ours, {ours}, {ours}, "/dev/ttyUSB0"},
        {"not a stranger at its place", {ours}, ours, {}, {stranger}, ""},
        {"not its twin, there all the time", {ours, likeOurs}, ours, {likeOurs}, {onBoard, likeOurs}, ""},
        {"not one that nobody knows", {onBoard, ours}, onBoard, {ours}, {onBoard, ours}, ""},
    };
    for (const auto& row : rows) {
        Selected bench;
        bench.ports.ports = row.before;
        bench.start(row.lost == row.before.front() ? 0 : 1);
        bench.port.Lost = [&bench](const QString& reason) {
            bench.run(bench.selection.Serial1_Lost(reason));
        };
        bench.port.unplug();
        bench.clock.advance(std::chrono::seconds(1));
        bench.ports.ports = row.without;
        bench.selection.followList();
        bench.port.replug();
        bench.ports.ports = row.after;
        const QString opened = QString::fromLatin1(row.opened);
        EXPECT_EQ(bench.selection.followList() && bench.selection.openReturnedPort(), !opened.isEmpty())
            << row.name;
        EXPECT_EQ(bench.openPort(), opened) << row.name;
        EXPECT_EQ(bench.panel.rows.size(), static_cast<qsizetype>(row.after.size())) << row.name;
        EXPECT_TRUE(opened.endsWith(opened.isEmpty() ? QString() : bench.panel.serialPortMenuText()))
            << row.name;
    }
}

}  // namespace
