#include "FaultTable.h"

#include "DiskLimit.h"
#include "Errors.h"
#include "MemoryBench.h"

namespace {

using namespace std::chrono_literals;
using Kind = Misbehaviour::Kind;

const QString Saved = QStringLiteral("faults.VLXFaultTable");

class FaultTableTest : public testing::Test, public MemoryBench, public FaultTableView {
protected:
    FaultTableTest() {
        clock.setWallClock(QDateTime(QDate(2011, 3, 2), QTime(4, 5, 6)));
        amplifier.eeprom().setSerialNumber(7);
    }

    void showWaitCursor(bool isShown) override { isWaiting = isShown; }
    void addRow(const FaultTableRow& row) override {
        EXPECT_TRUE(isWaiting);
        rows += QStringList{row.timestamp, row.faultCode, row.data, row.description}.join(u'|');
    }
    void enableSaveToFileButton() override { canSave = true; }

    void begin() {
        rows.clear();
        canSave = false;
        run(table.Begin(*this));
        EXPECT_FALSE(isWaiting);
    }
    void saveToFile() {
        dialogs.files.push_back(path(Saved));
        run(table.SaveToFile());
    }
    void setCount(int count) { amplifier.eeprom().write(0, 254, QByteArray(1, static_cast<char>(count))); }

    MemoryAccess memory{platform, globals};
    MemoryFileWriter file{clock, globals, memory};
    FaultTable table{platform, globals, memory, file};
    QStringList rows;
    bool isWaiting = false;
    bool canSave = false;
};

TEST_F(FaultTableTest, ListsTheNewestFirstAndLeavesTheOldestOut) {
    amplifier.eeprom().clearFaults();
    amplifier.eeprom().addFault(5, 0, 0);
    amplifier.eeprom().addFault(0x010203, 9, 0xABCD);
    amplifier.eeprom().addFault(16777215, 15, 1);
    amplifier.eeprom().addFault(99, 3, 0);
    begin();
    EXPECT_EQ(rows, QStringList({"00000099|03 |0000|", "16777215|15 GAIN ERR|0001|Excessive gain",
                                 "00066051|09 REFL HI|ABCD|Excessive reflected power (High SWR)"}));
    EXPECT_TRUE(canSave);
}

TEST_F(FaultTableTest, TheCountByteAloneTellsHowManyThereAre) {
    QByteArray zeros = amplifier.eeprom().contents();
    zeros.replace(256, 768, QByteArray(768, '\0'));
    amplifier.eeprom().setContents(zeros);
    for (const auto& [count, expected] :
         {std::pair{0, 0}, {1, 0}, {2, 1}, {128, 127}, {200, 199}, {255, 254}}) {
        setCount(count);
        begin();
        EXPECT_EQ(rows.size(), expected);
        EXPECT_TRUE(canSave);
        EXPECT_EQ(rows.filter(QStringLiteral("|00 PWR ON|")).size(), expected);
    }
    // An entry that would lie behind the area reads as nothing.
    EXPECT_EQ(rows.first(), QStringLiteral("00000000|00 PWR ON||Power was turned on"));
}

TEST_F(FaultTableTest, ACodeWithoutANameEndsTheReading) {
    amplifier.eeprom().clearFaults();
    for (const int code : {0, 16, 2})
        amplifier.eeprom().addFault(1, code, 0);
    Task<> flow = table.Begin(*this);
    EXPECT_TRUE(clock.run(flow));
    EXPECT_THROW(flow.result(), OutOfBoundsError);
    EXPECT_EQ(rows, QStringList("00000001|02 HI CURR|0000|Excessive power amplifier current"));
    EXPECT_FALSE(isWaiting);
    EXPECT_TRUE(canSave);
    saveToFile();
    EXPECT_TRUE(
        read(Saved).endsWith("FAULT 02 010C 00000001 02 HI CURR 0000\r\n"
                             "FAULT 01 0106 00000001 16  0000\r\n"));
}

TEST_F(FaultTableTest, ASilentAmplifierGivesAnEmptyTable) {
    amplifier.misbehave({Kind::MemoryNoAnswer});
    const auto start = clock.now();
    begin();
    EXPECT_EQ(rows, QStringList());
    EXPECT_FALSE(canSave);
    EXPECT_LT(clock.now() - start, 40s);
    amplifier.behave();
    Task<> flow = table.Begin(*this);
    clock.advance(500ms);
    port.unplug();
    EXPECT_TRUE(clock.run(flow, 200ms));
    EXPECT_EQ(rows, QStringList());
    EXPECT_FALSE(canSave);
}

TEST_F(FaultTableTest, AFileStaysWhateverHappens) {
    begin();
    {
        const DiskLimit limit(1000);
        saveToFile();
    }
    EXPECT_EQ(read(Saved).size(), 1000);
    EXPECT_EQ(globals.m_FaultFolderPath, path(Saved)) << "the file itself, not its folder";
    EXPECT_EQ(dialogs.shown, QStringList(QStringLiteral("Cannot write %1: File too large").arg(path(Saved))));
    dialogs.shown.clear();
    globals.m_FirmwareStatus = FirmwareStatus::Bootloader;
    saveToFile();
    EXPECT_EQ(files(), QStringList(Saved));
    EXPECT_EQ(read(Saved), QByteArray());
    EXPECT_EQ(log, QStringList());
    EXPECT_EQ(dialogs.shown, QStringList());
}

TEST_F(FaultTableTest, TheDialogOpensWhereTheLastFileWas) {
    begin();
    for (const auto& [last, opened] : {std::pair{QStringLiteral("a.VLXFaultTable"), QString()},
                                       {QStringLiteral("gone/too/a.VLXFaultTable"), QString()},
                                       {QStringLiteral("here"), QStringLiteral("here")}}) {
        QDir(world.path()).mkdir(QStringLiteral("here"));
        globals.m_FaultFolderPath = path(last);
        run(table.SaveToFile());
        EXPECT_EQ(QDir(dialogs.saveRequests.back().initialFolder), QDir(path(opened)));
    }
}

TEST_F(FaultTableTest, CancelInTheDialogChangesNothing) {
    begin();
    run(table.SaveToFile());
    EXPECT_EQ(files(), QStringList());
    EXPECT_EQ(globals.m_FaultFolderPath, QString());
}

TEST(Hex4, PadsOneToThreeDigits) {
    EXPECT_EQ(Hex4(0x106), QStringLiteral("0106"));
    EXPECT_EQ(Hex4(0xC), QStringLiteral("000C"));
    EXPECT_EQ(Hex4(0x1000), QString());
}

}  // namespace
