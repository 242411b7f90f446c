// The firmware folder: what is found in it, what the user is told, and what becomes of odd folders.
#include <fcntl.h>
#include <unistd.h>

#include "AmplifierBench.h"
#include "ApplicationFolders.h"
#include "FakeFirmwarePanel.h"
#include "FirmwareFolder.h"
#include "LoopGap.h"
#include "SendFirmware.h"
#include "SystemClock.h"

namespace {

struct FolderBench : AmplifierBench, NewFirmwareNotice {
    FolderBench() {
        window.mStartup = false;
        globals.m_FolderPath = world.filePath(QStringLiteral("images/"));
        QDir().mkpath(globals.m_FolderPath);
    }

    void add(const QStringList& names) const {
        for (const QString& name : names)
            EXPECT_TRUE(QFile(globals.m_FolderPath + name).open(QIODevice::WriteOnly)) << name.toStdString();
    }
    void finish(const Task<>& flow) {
        EXPECT_TRUE(clock.run(flow));
        EXPECT_EQ(clock.pendingWaits(), 0);
    }
    QString child(const QString& path) const { return platform.folders.applicationData + u'/' + path; }

    Task<bool> CheckVLXVersion() {
        happened += panel.canCheck ? QStringLiteral("ask") : QStringLiteral("ask with the button off");
        co_await clock.sleep(std::chrono::seconds(1));
        co_return true;
    }
    // New files come in the middle of a load, and are looked at.
    Task<bool> lookAndLoad() {
        co_await folder.Checklocalfiles();
        happened += QStringLiteral("%1 as %2").arg(folder.versionedFilename.m_mstrPath, panel.available);
        co_return true;
    }
    Task<> show() override {
        happened += QStringLiteral("notice");
        co_await clock.sleep(std::chrono::seconds(1));
    }

    QStringList happened;
    FakeFirmwarePanel panel;
    FirmwareFolder folder{platform, globals, panel, window, *this, [this] { return CheckVLXVersion(); }};
};

TEST(FirmwareFolder, KnowsTheNewestImageByItsName) {
    struct Row {
        const char* name;
        QStringList files;
        QString version;
        int index;
    };
    // clang-format off
    const Row rows[] = {
        {"none",                    {}, {}, -1},
        {"the highest number",      {"VLX720FP0105.hex", "VLX720FP0200.hex", "VLX720FP0199.hex"}, "0200", 1},
        {"in any case",             {"vlx720fp0105.HEX", "Vlx720Fp0104.Hex"}, "0105", 0},
        {"the first of equal ones", {"VLX720FP105.hex", "VLX720FP0105.hex"}, "105", 0},
        {"the same the other way",  {"VLX720FP0105.hex", "VLX720FP105.hex"}, "0105", 0},
        {"letters behind",          {"VLX720FP0104.hex", "VLX720FP0105b.hex"}, "0105b", 1},
        {"no number",               {"VLX720FP.hex", "VLX720FPbeta.hex", "VLX720FP0000.hex"}, {}, -1},
        {"other files",             {"VLX720FP0105.hex.part", "VLX710FP0105.hex", " VLX720FP0105.hex", ".hex"}, {}, -1},
    };
    // clang-format on
    for (const Row& row : rows) {
        std::int32_t index = -1;
        EXPECT_EQ(FirmwareFolder::GetNewestVersion(QStringLiteral("VLX720FP"), row.files, index), row.version)
            << row.name;
        EXPECT_EQ(index, row.index) << row.name;
    }
}

TEST(FirmwareFolder, ShowsTheNewestImage) {
    FolderBench bench;
    bench.add({QStringLiteral("VLX720FP0104.hex"), QStringLiteral("VLX720FP0105.hex"),
               QStringLiteral("vlxfwnotes.rtf")});
    // From preferences without the separator at the end.
    const QString path = bench.globals.m_FolderPath;
    bench.globals.m_FolderPath.chop(1);
    bench.finish(bench.folder.Checklocalfiles());
    EXPECT_EQ(bench.globals.m_FolderPath, path);
    EXPECT_EQ(bench.panel.folder, path);
    EXPECT_EQ(bench.panel.available, QStringLiteral("01.05"));
    EXPECT_EQ(bench.folder.hmcuVersion, QStringLiteral("0105"));
    EXPECT_EQ(bench.folder.versionedFilename.m_mstrPath, QStringLiteral("VLX720FP0105.hex"));
    EXPECT_TRUE(bench.folder.HasRequiredFiles());

    // The folder goes while the program runs: an empty one, and no failure.
    EXPECT_TRUE(QDir(bench.globals.m_FolderPath).removeRecursively());
    bench.finish(bench.folder.Checklocalfiles());
    EXPECT_EQ(bench.panel.available, QStringLiteral("Missing"));
    EXPECT_EQ(bench.folder.hmcuVersion, QString());
    EXPECT_FALSE(bench.folder.HasRequiredFiles());
    EXPECT_EQ(bench.folder.versionedFilename.m_strpath, QStringLiteral("-"));
    EXPECT_EQ(bench.dialogs.shown, QStringList());
}

TEST(FirmwareFolder, ReplacesAnInvalidPathByTheDefault) {
    const QString invalid =
        QStringLiteral("The firmware folder path is invalid.  It will be set to the default.");
    for (const QString& path : {QString(), QStringLiteral("not/absolute/"),
                                QStringLiteral("/with\0nul/").replace(5, 1, QChar(0))}) {
        FolderBench bench;
        bench.globals.m_FolderPath = path;
        bench.finish(bench.folder.Checklocalfiles());
        EXPECT_EQ(bench.globals.m_FolderPath, bench.child(QStringLiteral("Tessarin/")))
            << "no deeper at first";
        bench.globals.m_FolderPath = path;
        bench.finish(bench.folder.Checklocalfiles());
        EXPECT_EQ(bench.globals.m_FolderPath, bench.child(QStringLiteral("Tessarin/VLX Firmware/")));
        EXPECT_TRUE(QDir(bench.globals.m_FolderPath).exists());
        EXPECT_EQ(bench.dialogs.shown, QStringList({invalid, invalid}));
        EXPECT_EQ(bench.dialogs.beeps, 2);
    }

    FolderBench bench;
    bench.platform.folders.applicationData.clear();
    bench.globals.m_FolderPath.clear();
    bench.finish(bench.folder.Checklocalfiles());
    EXPECT_EQ(
        bench.dialogs.shown,
        QStringList(
            {invalid, QStringLiteral("Unable to create default folder.. Something appears to wrong with your "
                                     "hard drive!! You may be out of disk space.")}));
    EXPECT_EQ(bench.dialogs.beeps, 2);
    EXPECT_EQ(bench.panel.available, QStringLiteral("missing")) << "all state unchanged";
}

TEST(FirmwareFolder, SurvivesOddNamesAndTakesItsTimeOverManyFiles) {
    FolderBench bench;
    bench.add({QStringLiteral("VLX720FP\n0107.hex"), QStringLiteral("VLX720FP0105.hex"),
               QStringLiteral("ü\t.hex")});
    QDir().mkdir(bench.globals.m_FolderPath + QStringLiteral("folder.hex"));
    const int directory = open(QFile::encodeName(bench.globals.m_FolderPath).constData(), O_DIRECTORY);
    for (int i = 0; i < 100000; ++i)
        ASSERT_EQ(symlinkat("nowhere", directory, QByteArray::number(i).constData()), 0);
    ASSERT_EQ(symlinkat("nowhere", directory, "VLX720FP0999\xFF.hex"), 0);

    SystemClock clock;
    Platform platform{clock, bench.port, bench.ports, bench.dialogs, bench.platform.folders};
    FirmwareFolder folder{platform, bench.globals, bench.panel, bench.window, bench, {}};
    EXPECT_LT(longestGap([&] { return folder.Checklocalfiles(); }), std::chrono::milliseconds(50));
    // A name that cannot be told cannot be opened either.
    EXPECT_EQ(folder.versionedFilename.m_mstrPath, QStringLiteral("VLX720FP\n0107.hex"));
    EXPECT_EQ(unlinkat(directory, "VLX720FP0999\xFF.hex", 0), 0);
    close(directory);
}

TEST(FirmwareFolder, TellsOfNewFirmware) {
    struct Row {
        QString installed, available, status;
        bool isStartup;
        bool isAvailable, isNoticed, isLogged;
    };
    const QString main = FirmwareStatus::Main;
    const QString loader = FirmwareStatus::SensedBootLoader;
    const QString unknown = FirmwareStatus::Unknown;
    // clang-format off
    const Row rows[] = {
        {"01.04", "01.05",   main,    false,  true,  true,  true},
        {"01.04", "01.05",   main,    true,   true,  false, true},
        {"01.04", "01.05",   loader,  false,  true,  false, true},
        {"01.04", "01.05",   unknown, false,  true,  false, false},
        {"01.05", "01.05",   main,    false,  false, false, false},
        {"01.05", "01.05",   loader,  false,  true,  false, false},
        {"01.04", "Missing", main,    false,  false, false, false},
        {"N/A",   "01.05",   main,    false,  false, false, false},
        {"---",   "01.05",   loader,  false,  true,  false, false},
    };
    // clang-format on
    for (const Row& row : rows) {
        FolderBench bench;
        bench.panel.installed = row.installed;
        bench.panel.available = row.available;
        bench.globals.m_FirmwareStatus = row.status;
        bench.window.mStartup = row.isStartup;
        bench.finish(bench.folder.CheckNewVersion());
        const std::string name = (row.installed + u' ' + row.available + u' ' + row.status).toStdString();
        EXPECT_EQ(bench.folder.newMCUavailable, row.isAvailable) << name;
        EXPECT_EQ(bench.happened.size(), row.isNoticed ? 1 : 0) << name;
        EXPECT_EQ(bench.dialogs.beeps, row.isNoticed ? 1 : 0) << name;
        EXPECT_EQ(bench.log, row.isLogged
                                 ? QStringList({QStringLiteral("New firmware is available for your VLX720")})
                                 : QStringList())
            << name;
    }
}

TEST(FirmwareFolder, ButtonsCheckWhatTheyChange) {
    FolderBench bench;
    const QString images = bench.globals.m_FolderPath;
    bench.add({QStringLiteral("VLX720FP0105.hex")});
    bench.panel.installed = QStringLiteral("01.00");
    bench.globals.m_FirmwareStatus = FirmwareStatus::Main;
    bench.finish(bench.folder.GetRevButton_Action());
    EXPECT_EQ(bench.happened.join(u','), QStringLiteral("ask with the button off,notice"));
    EXPECT_TRUE(bench.panel.canCheck);

    bench.happened.clear();
    bench.finish(bench.folder.DefaultButton_Action());
    EXPECT_EQ(bench.panel.folder, bench.child(QStringLiteral("Tessarin/VLX Firmware/")));
    EXPECT_FALSE(QDir(bench.panel.folder).exists());
    EXPECT_EQ(bench.panel.available, QStringLiteral("Missing"));
    EXPECT_EQ(bench.happened.join(u','), QStringLiteral("ask"));

    bench.happened.clear();
    bench.finish(bench.folder.BrowseButton_Action());
    EXPECT_EQ(bench.panel.available, QStringLiteral("Missing")) << "cancelled, and looked at again";
    bench.dialogs.files.push_back(images.chopped(1));
    bench.finish(bench.folder.BrowseButton_Action());
    EXPECT_EQ(bench.globals.m_FolderPath, images);
    EXPECT_EQ(bench.panel.available, QStringLiteral("01.05"));
    EXPECT_EQ(bench.happened.join(u','), QStringLiteral("notice")) << "the amplifier is not asked";
    EXPECT_EQ(bench.dialogs.folderRequests.back().actionButtonCaption, QStringLiteral("Select"));
    EXPECT_EQ(bench.dialogs.folderRequests.back().initialFolder,
              bench.child(QStringLiteral("Tessarin/VLX Firmware/")));
}

TEST(ApplicationFolders, AreMadeStepByStep) {
    FolderBench bench;
    const SpecialFolders& folders = bench.platform.folders;
    Globals first(bench.clock);
    ApplicationFolders::makeAll(folders, first);
    EXPECT_EQ(first.m_FolderPath, bench.child(QStringLiteral("Tessarin/")));
    EXPECT_EQ(first.m_ConfigFolderPath, bench.child(QStringLiteral("Tessarin/VLX Configuration")));
    EXPECT_EQ(first.m_FaultFolderPath, bench.child(QStringLiteral("Tessarin/VLX Fault Tables")));
    EXPECT_EQ(QDir(first.m_FolderPath).entryList(QDir::Dirs | QDir::NoDotAndDotDot),
              QStringList({QStringLiteral("VLX Configuration"), QStringLiteral("VLX Fault Tables")}));

    Globals second(bench.clock);
    second.m_ConfigFolderPath = QStringLiteral("/mine");
    ApplicationFolders::makeAll(folders, second);
    EXPECT_EQ(second.m_FolderPath, bench.child(QStringLiteral("Tessarin/VLX Firmware/")));
    EXPECT_TRUE(QDir(second.m_FolderPath).exists());
    EXPECT_EQ(second.m_ConfigFolderPath, QStringLiteral("/mine"));
}

TEST(SendFirmware, LoadsTheNewestImageOrTellsThatThereIsNone) {
    FolderBench bench;
    SendFirmware send(bench.platform, bench.globals, bench.panel, bench.folder, [&bench] {
        EXPECT_FALSE(bench.panel.canSend);
        bench.happened += QStringLiteral("load ") + bench.folder.versionedFilename.m_strpath;
        return bench.CheckVLXVersion();
    });
    bench.finish(send.SendVLXButton_Action());
    EXPECT_EQ(bench.dialogs.shown,
              QStringList({QStringLiteral(
                  "A required firmware file is missing.\n\nCopy new files from Tessarin server.")}));
    EXPECT_EQ(bench.log, QStringList({QStringLiteral("Ready")}));
    EXPECT_TRUE(bench.panel.canSend);

    bench.add({QStringLiteral("VLX720FP0105.hex")});
    bench.log.clear();
    bench.finish(send.SendVLXButton_Action());
    EXPECT_EQ(bench.happened.join(u','), QStringLiteral("load VLX720FP0105.hex,ask"));
    EXPECT_EQ(bench.panel.movesToEnd, 1);
    EXPECT_EQ(bench.log, QStringList({QStringLiteral("Loading firmware from ") + bench.globals.m_FolderPath,
                                      QStringLiteral("Ready")}));
    EXPECT_TRUE(bench.panel.canSend);
}

TEST(SendFirmware, AnOlderImageIsSentOnPurposeAndAskedAboutOnce) {
    FolderBench bench;
    SendFirmware send(bench.platform, bench.globals, bench.panel, bench.folder,
                      [&bench] { return bench.lookAndLoad(); });
    bench.add({"VLX720FP0104.hex", "VLX720FP0200.hex", "vlx720fp0105.HEX", "VLX720FP.hex", "notes.hex"});
    bench.finish(send.ImagesButton_Action());
    EXPECT_EQ(bench.panel.images, (QStringList{"VLX720FP0200.hex", "vlx720fp0105.HEX", "VLX720FP0104.hex"}));

    bench.finish(send.sendImage(QStringLiteral("VLX720FP0104.hex")));
    EXPECT_EQ(bench.dialogs.shown,
              QStringList{"VLX720FP0104.hex is not the newest image in the folder: that is "
                          "VLX720FP0200.hex.\nSend it anyway?"});
    EXPECT_EQ(bench.happened, QStringList()) << "no is the default";
    bench.dialogs.cautionAnswers = {false};
    bench.finish(send.sendImage(QStringLiteral("VLX720FP0104.hex")));
    bench.finish(send.sendImage(QStringLiteral("VLX720FP0200.hex")));
    EXPECT_EQ(bench.dialogs.shown.size(), 2);
    EXPECT_EQ(bench.happened.join(u','),
              QStringLiteral("VLX720FP0104.hex as 01.04,VLX720FP0200.hex as 02.00"));
    EXPECT_EQ(bench.panel.available, QStringLiteral("02.00"));
    EXPECT_EQ(bench.folder.versionedFilename.m_mstrPath, QStringLiteral("VLX720FP0200.hex"));
    EXPECT_TRUE(bench.panel.canSend);
}

}  // namespace
