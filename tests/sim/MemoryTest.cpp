#include "SimBench.h"

namespace {

using MemoryTest = SimBench;

QByteArray withChecksum(const QByteArray& hexBytes) {
    int sum = 0;
    for (const char byte : QByteArray::fromHex(hexBytes))
        sum += static_cast<unsigned char>(byte);
    return hexBytes + QByteArray(1, static_cast<char>(-sum)).toHex().toUpper();
}

TEST_F(MemoryTest, ReadEchoesTheCommandAndCarriesTheBytes) {
    const QByteArray data = amplifier.eeprom().read(0, 0x20, 32).toHex().toUpper();
    EXPECT_EQ(ask("^ER002020C0;"), "^ER" + withChecksum("002020" + data) + ';');
    EXPECT_EQ(ask("^ER000000;"), "");
}

TEST_F(MemoryTest, AllFourPagesAreReadInChunks) {
    QByteArray digits;
    for (int offset = 0; offset < Eeprom::Size; offset += 32) {
        const QByteArray place{QByteArray(1, static_cast<char>(offset / 256)) +
                               static_cast<char>(offset % 256)};
        digits += ask("^ER" + withChecksum(place.toHex().toUpper() + "20") + ';').mid(9, 64);
    }
    EXPECT_EQ(QByteArray::fromHex(digits), amplifier.eeprom().contents());
}

TEST_F(MemoryTest, CommandThatIsNotSoundChangesNothingAndGetsNoAnswer) {
    const QByteArray before = amplifier.eeprom().contents();
    for (const char* command : {"^ER002020C1;", "^ER042020BC;", "^ER0020XXC0;", "^EW00520100AC;",
                                "^EW00520200AC;", "^EW0052010AD;", "^EW;", "^ER;"})
        EXPECT_EQ(ask(command), "") << command;
    EXPECT_EQ(amplifier.eeprom().contents(), before);
}

TEST_F(MemoryTest, WriteIsThereAfterARestart) {
    EXPECT_EQ(ask("^EW00520100AD;"), "^EW005201AD;");
    ask("^EW" + withChecksum("0050024142") + ';');
    amplifier.powerOff();
    amplifier.powerOn();
    clock.advance(1s);
    EXPECT_EQ(amplifier.eeprom().read(0, 0x50, 3), QByteArray("AB\0", 3));
}

TEST_F(MemoryTest, FaultsAreEnteredAndTheOldestLeavesAFullTable) {
    Eeprom& eeprom = amplifier.eeprom();
    eeprom.clearFaults();
    clock.advance(70000s);
    amplifier.raiseFault(14);
    EXPECT_EQ(eeprom.contents()[254], 1);
    EXPECT_EQ(eeprom.contents().mid(256, 6), QByteArray("\x70\x11\x01\x0E\x00\x00", 6));
    for (int i = 0; i < 128; ++i)
        eeprom.addFault(static_cast<std::uint32_t>(i), 9, 0x1234);
    EXPECT_EQ(static_cast<unsigned char>(eeprom.contents()[254]), 128);
    EXPECT_EQ(eeprom.contents().mid(256, 6), QByteArray("\x00\x00\x00\x09\x34\x12", 6));
    EXPECT_EQ(eeprom.contents().right(6), QByteArray("\x7F\x00\x00\x09\x34\x12", 6));
}

}  // namespace
