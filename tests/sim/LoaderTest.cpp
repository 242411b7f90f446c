// What a load cannot show: messages and blocks that the program does not send.
#include "HexText.h"
#include "SimBench.h"

namespace {

using Image::wireBlock;

const QByteArray Data = Image::make(2).mid(64, 64);

class LoaderTest : public SimBench {
protected:
    LoaderTest() : SimBench({.state = Vlx720::State::Waiting}) {}

    // Fill characters, one by one, until something answers. How many that took.
    int fillUntilAnswer(QByteArray& answer) {
        for (int count = 1; count <= BootstrapLoader::BlockSize; ++count) {
            answer = ask("N");
            if (!answer.isEmpty())
                return count;
        }
        return 0;
    }
};

TEST_F(LoaderTest, OnlyTheFirstByteOfAMessageBeginsALoad) {
    EXPECT_EQ(ask("^LDM;"), "");
    EXPECT_EQ(ask("I"), "");
    EXPECT_EQ(ask("D"), "");
    // The rest of a broken message is forgotten after a while.
    clock.advance(2s);
    EXPECT_EQ(ask("D"), "D");
}

TEST_F(LoaderTest, RefusesABlockThatIsNotSound) {
    const QByteArray good = wireBlock(Data, 0x0840, 0);
    QByteArray flipped = good;
    flipped[20] = static_cast<char>(flipped[20] ^ 1);
    struct Case {
        const char* what;
        QByteArray block;
        QByteArray answer;
    };
    const std::vector<Case> cases{
        // clang-format off
        {"one bit wrong",          flipped,                                       "N"},
        {"below the firmware",     wireBlock(Data, 0x07C0, 0),                "N"},
        {"past the firmware",      wireBlock(Data, 0xFD41, 1),              "N"},
        {"last of the firmware",   wireBlock(Data, 0xFD40, 1),              "A"},
        {"no such page",           wireBlock(Data, 0x0840, 3),              "N"},
        {"final but not first",    wireBlock(Data, 0x840, 2),          "N"},
        {"sound",                  good,                                          "A"},
        // clang-format on
    };
    ask("D");
    for (const Case& row : cases)
        EXPECT_EQ(ask(row.block), row.answer) << row.what;
    EXPECT_EQ(amplifier.flash().read(0x840, 64), Data);
}

TEST_F(LoaderTest, FillCharactersBringItIntoStepWhereverItStands) {
    const QByteArray block = wireBlock(Data, 0x0840, 0);
    ask("D");
    for (int sent = 0; sent < BootstrapLoader::BlockSize; ++sent) {
        EXPECT_EQ(ask(block.left(sent)), "") << sent;
        QByteArray answer;
        EXPECT_EQ(fillUntilAnswer(answer), BootstrapLoader::BlockSize - sent) << sent;
        EXPECT_EQ(answer, "N") << sent;
        EXPECT_EQ(ask(block), "A") << sent;
    }
}

TEST_F(LoaderTest, ImageWithAWrongSumIsNotStarted) {
    const QByteArray blocks = Image::wireBlocks(Image::make(2));
    ask("D");
    ask(blocks.first(68));
    // The second block is missing from the sum.
    EXPECT_EQ(ask(blocks.last(68)), "B");
    EXPECT_EQ(ask("P;", 3s), "");
    EXPECT_TRUE(ask("I;").startsWith("VLX720"));
}

}  // namespace
