#include "AppBench.h"

using namespace std::chrono_literals;

namespace {

TEST(StartUpTest, LogTellsTheProgramTheSystemAndTheAmplifier) {
    AppBench bench(Tab::Port);
    const QStringList lines = bench.logText().split(u'\n');
    ASSERT_GE(lines.size(), 3);
    EXPECT_EQ(lines[0], QStringLiteral("14:05:07 Tessarin VLX Utility for OS X Version 1.0"));
    EXPECT_TRUE(lines[1].mid(9).contains(QStringLiteral(" Version "))) << lines[1].toStdString();
    EXPECT_EQ(lines[2].mid(9), QStringLiteral("VLX Version 01.23. ttyUSB0 RS-232 speed 38400 bit/s"));
    EXPECT_EQ(bench.window().windowTitle(), QStringLiteral("Tessarin VLX Utility Version 1.0"));
    EXPECT_EQ(bench.label(QStringLiteral("MCUinstalledText")), QStringLiteral("01.23"));
    EXPECT_EQ(bench.label(QStringLiteral("MCUavailableText")), QStringLiteral("Missing"));
    EXPECT_EQ(bench.errors, 0);
}

TEST(StartUpTest, MissingHelpFolderEndsTheProgram) {
    AppBench bench;
    bench.removeHelpFolder();
    bench.launch();
    bench.clock().advance(1s);
    EXPECT_EQ(bench.dialogs().shown,
              QStringList{"ERROR: 'Help' folder not found!\n"
                          "The 'Help' folder must be in the same location as the executable!"});
    EXPECT_EQ(bench.quits, 1);
    EXPECT_FALSE(bench.window().isVisible());
    EXPECT_EQ(bench.port().openCount(), 0);
}

TEST(StartUpTest, SilentAmplifierStopsNothing) {
    AppBench bench;
    bench.amplifier().powerOff();
    bench.start();
    EXPECT_TRUE(bench.logText().contains(QStringLiteral("VLX is not responding.")));
    EXPECT_EQ(bench.logText().count(QStringLiteral("Is the amplifier on")), 1);
    bench.chooseTab(Tab::Firmware);
    bench.press(QStringLiteral("GetRevButton"));
    bench.clock().advance(10s);
    EXPECT_EQ(bench.logText().count(QStringLiteral("Is the amplifier on")), 1) << "at the start only";
    bench.port().clearWritten();
    bench.chooseTab(Tab::Operate);
    bench.clock().advance(10s);
    EXPECT_EQ(bench.port().written(), QByteArray());
    EXPECT_FALSE(bench.control<QLabel>(QStringLiteral("PAVoltage"))->isEnabled());
    EXPECT_FALSE(bench.control<QPushButton>(QStringLiteral("OnOff"))->isEnabled());
    bench.chooseTab(Tab::CommandTester);
    for (const char* sends : {"TesterField", "ClearButton", "CommandMacroButton7"})
        EXPECT_FALSE(bench.control<QWidget>(QLatin1String(sends))->isEnabled()) << sends;
    EXPECT_TRUE(bench.control<QPushButton>(QStringLiteral("EditMacrosButton"))->isEnabled());
}

TEST(StartUpTest, EveryKeyIsSavedInItsOrderAndReadBack) {
    AppBench bench(Tab::Port);
    bench.window().move(120, 130);
    bench.window().resize(700, 600);
    bench.chooseTab(Tab::Operate);
    bench.port().clearWritten();
    bench.quit();
    EXPECT_EQ(bench.port().written(), QByteArray());

    QFile file(bench.preferencesPath());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QStringList lines = QString::fromUtf8(file.readAll()).split(u'\n');
    QStringList keys;
    for (qsizetype i = 0; i + 1 < lines.size(); i += 2)
        keys += lines[i];
    QStringList expected{"winLEFT",    "winWIDTH",         "winTOP",          "winHEIGHT", "Tab",
                         "FolderPath", "ConfigFolderPath", "FaultFolderPath", "Port",      "Verbose"};
    for (const char* kind : {"Button", "Command"})
        for (int macro = 1; macro <= 15; ++macro)
            expected += QStringLiteral("Macro%1%2").arg(macro).arg(QString::fromLatin1(kind));
    expected += {"PortPath", "PortIdentity", "PortByName"};
    EXPECT_EQ(keys, expected);

    bench.start();
    EXPECT_EQ(bench.window().size(), QSize(700, 600));
    EXPECT_EQ(bench.window().pos(), QPoint(120, 130));
    EXPECT_EQ(bench.app().globals().m_TabPanel, static_cast<int>(Tab::Operate));
    EXPECT_TRUE(bench.app().monitor().isPolling());
}

TEST(StartUpTest, WindowShowsItselfWhenTheSavedTabHasBeenEntered) {
    AppBench bench;
    bench.givePreferences("Tab\n2\n");
    bench.launch();
    ASSERT_TRUE(bench.clock().runUntil([&bench] { return bench.window().isVisible(); }));
    EXPECT_TRUE(bench.port().written().endsWith("^BN;^FL;^OS;^WS;^TM;^VI;"));
    EXPECT_EQ(bench.control<QPushButton>(QStringLiteral("OnOff"))->text(), QStringLiteral("OFF"));
    EXPECT_TRUE(bench.app().monitor().isPolling());
}

TEST(StartUpTest, MaximisedWindowComesBackInItsOtherSize) {
    AppBench bench(Tab::Port);
    bench.window().move(70, 80);
    bench.window().resize(640, 560);
    bench.window().showMaximized();
    QCoreApplication::processEvents();
    bench.quit();
    bench.start();
    EXPECT_EQ(bench.window().size(), QSize(640, 560));
    EXPECT_EQ(bench.window().pos(), QPoint(70, 80));
}

TEST(StartUpTest, WindowLargerThanTheScreenFitsIt) {
    AppBench bench;
    bench.givePreferences("winTOP\n90\nwinHEIGHT\n5000\n");
    bench.start();
    EXPECT_TRUE(bench.window().screen()->availableGeometry().contains(bench.window().geometry()));
}

TEST(StartUpTest, OddPreferencesNeverStopIt) {
    for (const QByteArray& contents : {
             QByteArray("Tab\n77\n"),
             QByteArray("Port\n-5\n"),
             QByteArray("winLEFT\n-30000\nwinTOP\n-30000\nwinWIDTH\n1\nwinHEIGHT\n1\n"),
             QByteArray("winLEFT\n-2147483648\nwinTOP\n-2147483648\nwinWIDTH\n-2147483648\n"),
             QByteArray("winLEFT\n2147483647\nwinTOP\n2147483647\nwinWIDTH\n2147483647\n"),
             QByteArray("winWIDTH\n2147483647\nwinHEIGHT\n99999\n"),
             QByteArray(100000, '\xff'),
             QByteArray("FolderPath\nnot a path\nTab"),
         }) {
        SCOPED_TRACE(contents.left(10).constData());
        AppBench bench;
        bench.givePreferences(contents);
        bench.start();
        EXPECT_EQ(bench.errors, 0);
        EXPECT_EQ(bench.app().globals().m_TabPanel, 0);
        EXPECT_TRUE(bench.port().isOpen());
        EXPECT_GE(bench.window().width(), 615);
        EXPECT_GE(bench.window().height(), 540);
        EXPECT_TRUE(bench.window().screen()->availableGeometry().intersects(bench.window().frameGeometry()));
    }
}

TEST(StartUpTest, PortPastTheListIsToldAndTheProgramGoesOn) {
    AppBench bench;
    bench.givePreferences("Port\n7\n");
    bench.start();
    EXPECT_EQ(bench.dialogs().shown,
              QStringList{"System has no serial ports!  No way to communicate with VLX!"});
    EXPECT_FALSE(bench.port().isOpen());
}

}  // namespace
