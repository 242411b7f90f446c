#include "SimBench.h"

namespace {

constexpr int ImageBegin = 0x800;
constexpr int BlockData = 64;

QByteArray patternFor(int address) {
    QByteArray data;
    for (int i = 0; i < BlockData; ++i)
        data += static_cast<char>(address / BlockData * 5 + i * 3);
    return data;
}

// An image of `blockCount` blocks whose words, high byte first, sum to 0 with the word at its start.
class Image {
public:
    explicit Image(int blockCount, const QByteArray& stamp = {}) {
        for (int block = 0; block < blockCount; ++block)
            m_bytes += patternFor(ImageBegin + block * BlockData);
        m_bytes.replace(BlockData + 8, stamp.size(), stamp);
        m_bytes[0] = 0;
        m_bytes[1] = 0;
        int sum = 0;
        for (qsizetype i = 0; i < m_bytes.size(); i += 2)
            sum += at(i) * 256 + at(i + 1);
        m_first = m_bytes.left(BlockData);
        const int word = (0x10000 - sum % 0x10000) % 0x10000;
        m_bytes[0] = static_cast<char>(word >> 8);
        m_bytes[1] = static_cast<char>(word);
        m_first[0] = '\xAA';
    }

    qsizetype blockCount() const { return m_bytes.size() / BlockData; }
    // The first block has a mark in the place of the word until the final block brings it.
    QByteArray block(qsizetype index) const {
        const auto address = static_cast<int>(ImageBegin + index * BlockData);
        return blockFor(address, index == 0 ? m_first : m_bytes.mid(index * BlockData, BlockData));
    }
    QByteArray finalBlock() const { return blockFor(ImageBegin, m_bytes.left(BlockData), true); }
    const QByteArray& bytes() const { return m_bytes; }

private:
    int at(qsizetype i) const { return static_cast<unsigned char>(m_bytes[i]); }

    QByteArray m_bytes;
    QByteArray m_first;
};

class LoaderTest : public SimBench {
protected:
    LoaderTest() : SimBench({.state = Vlx720::State::Waiting}) {}

    void load(const Image& image) {
        EXPECT_EQ(ask("D"), "D");
        for (qsizetype i = 0; i < image.blockCount(); ++i)
            EXPECT_EQ(ask(image.block(i)), "A") << i;
        EXPECT_EQ(ask(image.finalBlock()), "B");
    }

    // Fill characters, one by one, until something answers. How many that took.
    int fillUntilAnswer(QByteArray& answer) {
        for (int count = 1; count <= BootstrapLoader::BlockSize; ++count) {
            answer = ask("N");
            if (!answer.isEmpty())
                return count;
        }
        return 0;
    }

    bool flashHolds(const Image& image) {
        return amplifier.flash().read(ImageBegin, static_cast<int>(image.bytes().size())) == image.bytes();
    }
};

TEST_F(LoaderTest, TakesAWholeImageAndStartsIt) {
    const Image image(40, "VLX720FP0217");
    load(image);
    EXPECT_TRUE(flashHolds(image));
    EXPECT_FALSE(amplifier.flash().isWritten(ImageBegin + 40 * BlockData));
    EXPECT_EQ(ask("P;", 3s), "");
    EXPECT_EQ(ask("^RVM;"), "^RVM02.17;");
}

TEST_F(LoaderTest, IsEnteredFromTheMainFirmware) {
    ask("P;", 2s);
    ASSERT_EQ(amplifier.state(), Vlx720::State::Main);
    ask("^LDM;", 2s);
    load(Image(3));
    ask("P;", 2s);
    EXPECT_EQ(amplifier.state(), Vlx720::State::Main);
}

TEST_F(LoaderTest, OnlyTheFirstByteOfAMessageBeginsALoad) {
    EXPECT_EQ(ask("^LDM;"), "");
    EXPECT_EQ(ask("I"), "");
    EXPECT_EQ(ask("D"), "");
    // The rest of a broken message is forgotten after a while.
    clock.advance(2s);
    EXPECT_EQ(ask("D"), "D");
}

TEST_F(LoaderTest, RefusesABlockThatIsNotSound) {
    const QByteArray good = blockFor(0x840, patternFor(0x840));
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
        {"below the firmware",     blockFor(0x7C0, patternFor(0)),                "N"},
        {"past the firmware",      blockFor(0x1FD41, patternFor(0)),              "N"},
        {"last of the firmware",   blockFor(0x1FD40, patternFor(0)),              "A"},
        {"no such page",           blockFor(0x30840, patternFor(0)),              "N"},
        {"final but not first",    blockFor(0x840, patternFor(0), true),          "N"},
        {"sound",                  good,                                          "A"},
        // clang-format on
    };
    ask("D");
    for (const Case& row : cases)
        EXPECT_EQ(ask(row.block), row.answer) << row.what;
    EXPECT_EQ(amplifier.flash().read(0x840, BlockData), patternFor(0x840));
}

TEST_F(LoaderTest, FillCharactersBringItIntoStepWhereverItStands) {
    const QByteArray block = blockFor(0x840, patternFor(0x840));
    ask("D");
    for (int sent = 0; sent < BootstrapLoader::BlockSize; ++sent) {
        EXPECT_EQ(ask(block.left(sent)), "") << sent;
        QByteArray answer;
        EXPECT_EQ(fillUntilAnswer(answer), BootstrapLoader::BlockSize - sent) << sent;
        EXPECT_EQ(answer, "N") << sent;
        EXPECT_EQ(ask(block), "A") << sent;
    }
}

TEST_F(LoaderTest, FinalBlockIsAnsweredAgainWhenItsAnswerWasLost) {
    const Image image(3);
    load(image);
    QByteArray answer;
    EXPECT_EQ(fillUntilAnswer(answer), BootstrapLoader::BlockSize);
    EXPECT_EQ(ask(image.finalBlock()), "B");
    ask("P;", 2s);
    EXPECT_EQ(amplifier.state(), Vlx720::State::Main);
}

TEST_F(LoaderTest, BlockMayBeginLikeACommand) {
    QByteArray data = patternFor(0x840);
    data.replace(0, 2, "P;");
    ask("D");
    EXPECT_EQ(ask(blockFor(0x840, data)), "A");
    EXPECT_EQ(amplifier.flash().read(0x840, BlockData), data);
}

TEST_F(LoaderTest, ImageWithAWrongSumIsNotStarted) {
    const Image image(2);
    ask("D");
    ask(image.block(0));
    // The second block is missing from the sum.
    EXPECT_EQ(ask(image.finalBlock()), "B");
    EXPECT_EQ(ask("P;", 3s), "");
    EXPECT_EQ(amplifier.state(), Vlx720::State::Waiting);
    EXPECT_TRUE(ask("I;").startsWith("VLX720"));
}

// After the echo, the line carries 3 blocks and the final one, 68 bytes each.
TEST_F(LoaderTest, PowerLossAtAnyByteLeavesALoaderThatLoads) {
    const Image image(3);
    constexpr int ByteCount = 1 + 4 * BootstrapLoader::BlockSize;
    for (int lost = 1; lost <= ByteCount; ++lost) {
        amplifier.misbehave({Misbehaviour::Kind::PowerLoss, lost});
        QByteArray answers = ask("D");
        for (qsizetype i = 0; i < image.blockCount(); ++i)
            answers += ask(image.block(i));
        answers += ask(image.finalBlock());
        const int answered = lost == 1 ? 0 : 1 + (lost - 2) / BootstrapLoader::BlockSize;
        EXPECT_EQ(answers, QByteArray("DAAAB").left(answered)) << lost;
        EXPECT_EQ(amplifier.state(), Vlx720::State::Off) << lost;

        amplifier.behave();
        amplifier.powerOn();
        clock.advance(1s);
        // Until the first block has been written, the former firmware is whole; then only a full load is.
        const bool isStartable = lost <= BootstrapLoader::BlockSize || lost == ByteCount;
        EXPECT_EQ(amplifier.flash().isImageValid(), isStartable) << lost;
        load(image);
        EXPECT_TRUE(flashHolds(image)) << lost;
        amplifier.powerOff();
        amplifier.powerOn();
        clock.advance(1s);
    }
    EXPECT_EQ(clock.pendingWaits(), 0);
}

TEST_F(LoaderTest, PowerLossDuringTheWritingLeavesHalfABlock) {
    amplifier.powerOff();
    amplifier.settings().loader.blockWrite = 10ms;
    amplifier.powerOn();
    clock.advance(1s);
    ask("D");
    EXPECT_EQ(ask(blockFor(0x840, patternFor(0x840)), 25ms), "");
    amplifier.powerOff();
    EXPECT_EQ(amplifier.flash().read(0x840, 32), patternFor(0x840).left(32));
    EXPECT_FALSE(amplifier.flash().isWritten(0x840 + 32));
}

}  // namespace
