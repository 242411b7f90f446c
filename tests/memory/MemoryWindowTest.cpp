// The windows of the memory tools, pressed and read by their names.
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QShortcut>
#include <QTreeWidget>

#include "AmplifierBench.h"
#include "Child.h"
#include "ConfigurationTab.h"
#include "Errors.h"
#include "FaultCodes.h"
#include "MemoryTools.h"
#include "MemoryToolWindows.h"
#include "ProgressWin.h"

namespace {

using namespace std::chrono_literals;
using Kind = Misbehaviour::Kind;

class MemoryWindow : public testing::Test, public AmplifierBench, public ConfigurationPanel {
protected:
    MemoryWindow() {
        port.Open();
        globals.m_FirmwareStatus = FirmwareStatus::Main;
        globals.FaultCodes = CreateFaultCodesArray();
        main.setGeometry(100, 80, 615, 540);
        main.show();
    }
    ~MemoryWindow() override {
        settle();  // what is still on its way on the line
        EXPECT_EQ(clock.pendingWaits(), 0);
        EXPECT_FALSE(line.isTaken());
    }

    void setEditBannerButtonEnabled(bool enabled) override { isBannerEnabled = enabled; }

    QWidget* window(const QString& name) const { return main.findChild<QWidget*>(name); }
    // Lets the flow go on until it waits for nothing but the user.
    void settle() { clock.advance(5s); }
    static void press(const QWidget& in, const QString& name) {
        auto* const button = child<QPushButton>(in, name);
        EXPECT_TRUE(button->isEnabled()) << name.toStdString();
        button->click();
    }
    static bool isEnabled(const QWidget& in, const QString& name) {
        return child<QWidget>(in, name)->isEnabled();
    }

    QWidget main;
    QStringList errors;
    MemoryToolWindows windows{platform,
                              [this](const std::exception_ptr& error) {
                                  try {
                                      std::rethrow_exception(error);
                                  } catch (const ProgramError& e) {
                                      errors += QString::fromUtf8(e.what());
                                  }
                              },
                              main};
    ProgressWin progress{main};
    MemoryTools tools{platform, globals, line, progress, *this, windows};
    bool isBannerEnabled = false;
};

TEST_F(MemoryWindow, FaultTableIsReadListedSavedAndClosed) {
    QStringList helped;
    windows.showFaultHelp = [&helped](std::optional<int> code) {
        helped += QString::number(code.value_or(-1));
    };
    const Task<> flow = tools.DisplayFaultTable_Action();
    QWidget* const faults = window(QStringLiteral("FaultTableWindow"));
    ASSERT_TRUE(faults && faults->isVisible());
    EXPECT_EQ(faults->y(), main.y() + 40);
    EXPECT_NEAR(faults->geometry().center().x(), main.geometry().center().x(), 1);
    EXPECT_EQ(faults->cursor().shape(), Qt::WaitCursor);
    settle();

    EXPECT_NE(faults->cursor().shape(), Qt::WaitCursor);
    auto* const list = child<QTreeWidget>(*faults, QStringLiteral("Listbox1"));
    ASSERT_EQ(list->topLevelItemCount(), 4);
    EXPECT_EQ(list->topLevelItem(0)->text(1), QStringLiteral("06 PWRIN HI"));
    EXPECT_EQ(list->topLevelItem(3)->text(3), QStringLiteral("Excessive reflected power (High SWR)"));
    for (const auto& [column, width] : {std::pair{0, 90}, {1, 90}, {2, 50}})
        EXPECT_GE(list->columnWidth(column), width);

    auto* const key = faults->findChild<QShortcut*>();
    Q_EMIT key->activated();
    list->setCurrentItem(list->topLevelItem(3));
    Q_EMIT key->activated();
    list->setCurrentItem(list->topLevelItem(0));
    Q_EMIT list->itemDoubleClicked(list->topLevelItem(0), 1);
    EXPECT_EQ(helped, (QStringList{"-1", "9", "6"}));

    dialogs.files.push_back(world.filePath(QStringLiteral("a.VLXFaultTable")));
    press(*faults, QStringLiteral("SaveToFileButton"));
    EXPECT_FALSE(isEnabled(*faults, QStringLiteral("SaveToFileButton")));
    faults->close();  // not in the middle of a file
    EXPECT_TRUE(faults->isVisible());
    settle();
    EXPECT_TRUE(QFile::exists(world.filePath(QStringLiteral("a.VLXFaultTable"))));

    press(*faults, QStringLiteral("CloseButton"));
    EXPECT_TRUE(clock.run(flow));
    EXPECT_FALSE(window(QStringLiteral("FaultTableWindow")));
    EXPECT_FALSE(line.isTaken());
}

TEST_F(MemoryWindow, ClosingTheFaultTableStopsTheReading) {
    amplifier.misbehave({Kind::MemoryNoAnswer});
    const Task<> flow = tools.DisplayFaultTable_Action();
    clock.advance(1500ms);
    press(*window(QStringLiteral("FaultTableWindow")), QStringLiteral("CloseButton"));
    EXPECT_TRUE(clock.run(flow, 100ms));
}

TEST_F(MemoryWindow, AnUnknownFaultCodeIsAnErrorAndTheWindowStays) {
    amplifier.eeprom().addFault(1, 40, 0);
    amplifier.eeprom().addFault(2, 2, 0);
    const Task<> flow = tools.DisplayFaultTable_Action();
    settle();
    EXPECT_EQ(errors.size(), 1);
    QWidget* const faults = window(QStringLiteral("FaultTableWindow"));
    EXPECT_EQ(child<QTreeWidget>(*faults, QStringLiteral("Listbox1"))->topLevelItemCount(), 1);
    EXPECT_TRUE(isEnabled(*faults, QStringLiteral("SaveToFileButton")));
    press(*faults, QStringLiteral("CloseButton"));
    EXPECT_TRUE(clock.run(flow));
}

TEST_F(MemoryWindow, TheMainWindowMayGoWithAWindowOpen) {
    auto doomed = std::make_unique<QWidget>();
    MemoryToolWindows doomedWindows(platform, [](const std::exception_ptr&) {}, *doomed);
    MemoryTools doomedTools(platform, globals, line, progress, *this, doomedWindows);
    {
        const Task<> flow = doomedTools.DisplayFaultTable_Action();
        clock.advance(100ms);
        doomed.reset();
        settle();
    }
    EXPECT_FALSE(line.isTaken());
}

class BannerWindowTest : public MemoryWindow {
protected:
    // Opens the window and lets it read.
    Task<> open() {
        Task<> flow = tools.EditBannerButton_Action();
        banner = window(QStringLiteral("BannerWindow"));
        field = child<QLineEdit>(*banner, QStringLiteral("EditField1"));
        return flow;
    }
    QByteArray stored() { return amplifier.eeprom().read(0, 0x50, 8); }

    QWidget* banner = nullptr;
    QLineEdit* field = nullptr;
};

TEST_F(BannerWindowTest, ReadsEditsAndSaves) {
    const Task<> flow = open();
    EXPECT_TRUE(line.isTaken());
    settle();
    EXPECT_EQ(field->selectedText(), QStringLiteral("VLX720"));

    typeText(*field, QStringLiteral("my vlx-7too long"));
    EXPECT_EQ(field->text(), QStringLiteral("MY VLX-7"));
    press(*banner, QStringLiteral("BevelButton1"));
    EXPECT_TRUE(globals.mustEnd.isTaken());
    banner->close();  // not in the middle of a write
    EXPECT_TRUE(banner->isVisible());
    EXPECT_TRUE(clock.run(flow));
    EXPECT_EQ(stored(), QByteArrayLiteral("MY VLX-7"));
    EXPECT_FALSE(line.isTaken());
    EXPECT_TRUE(isBannerEnabled);
}

TEST_F(BannerWindowTest, ShowsWhatWasReadAndTakesPrintableAscii) {
    amplifier.eeprom().setBanner("ab\xE9\x07");
    const Task<> flow = open();
    settle();
    EXPECT_EQ(field->text(), QStringLiteral("ab\u00E9\u0007"));
    field->end(false);
    typeText(*field, QStringLiteral("\u00E8\u00FC~z"));
    EXPECT_EQ(field->text(), QStringLiteral("AB\u00E9\u0007~Z"));
    press(*banner, QStringLiteral("BevelButton1"));
    EXPECT_TRUE(clock.run(flow));
    EXPECT_EQ(stored(), QByteArray("AB\xE9\x07~Z\0\0", 8));
}

TEST_F(BannerWindowTest, ReturnSavesOnlyWhatWasRead) {
    for (const bool isRead : {true, false}) {
        amplifier.behave();
        if (!isRead)
            amplifier.misbehave({Kind::MemoryNoAnswer});
        const Task<> flow = open();
        settle();
        EXPECT_EQ(field->text(), isRead ? QStringLiteral("VLX720") : QString());
        port.clearWritten();
        typeKey(*field, {}, Qt::Key_Return);
        EXPECT_EQ(port.written().startsWith("^EW"), isRead);
        EXPECT_TRUE(clock.run(flow));
    }
}

TEST_F(BannerWindowTest, StaysWhenTheBannerCannotBeWritten) {
    const Task<> flow = open();
    settle();
    globals.m_FirmwareStatus = FirmwareStatus::Bootloader;
    press(*banner, QStringLiteral("BevelButton1"));
    settle();
    EXPECT_EQ(dialogs.shown, QStringList(QStringLiteral("Unable to write to VLX")));
    EXPECT_TRUE(banner->isVisible());
    EXPECT_EQ(banner->focusWidget(), field);
    field->setText(QStringLiteral("OTHER"));
    press(*banner, QStringLiteral("BevelButton2"));
    EXPECT_TRUE(clock.run(flow));
    EXPECT_EQ(stored(), QByteArray("VLX720\0\0", 8)) << "cancel writes nothing";
}

TEST_F(MemoryWindow, ProgressStandsInFrontAndGoesAtTheEnd) {
    dialogs.files.push_back(world.filePath(QStringLiteral("a.VLXConfig")));
    const Task<> flow = tools.SaveConfig_Action();
    clock.advance(100ms);
    EXPECT_TRUE(progress.isVisible());
    EXPECT_EQ(progress.pos(), main.pos() + QPoint(175, 150));
    EXPECT_EQ(child<QLabel>(progress, QStringLiteral("StaticText1"))->text(),
              QStringLiteral("Saving VLX Configuration"));
    EXPECT_TRUE(clock.run(flow));
    EXPECT_FALSE(progress.isVisible());
    const auto* const bar = child<QProgressBar>(progress, QStringLiteral("ProgressBar1"));
    EXPECT_EQ(bar->value(), bar->maximum());
}

}  // namespace
