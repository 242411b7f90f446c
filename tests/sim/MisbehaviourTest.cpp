#include "SimBench.h"

namespace {

using Kind = Misbehaviour::Kind;
using MisbehaviourTest = SimBench;

const QByteArray Noise("\x00\xFF\x80^\r\xC1\x7F", 7);

TEST_F(MisbehaviourTest, HitsTheAnswersItIsMeantFor) {
    struct Case {
        const char* name;
        int nth;
        QByteArray question;
        QByteArray heard;  // within 200 ms
    };
    const std::vector<Case> cases{
        // clang-format off
        {"silent",              0, "^TM;^BN;",       ""},
        {"answer-lost",         2, "^TM;^BN;^TM;",   "^TM025;^TM025;"},
        {"late",                1, "^TM;^BN;",       "^BN00;"},
        {"doubled",             1, "^TM;^BN;",       "^TM025;^TM025;^BN00;"},
        {"wrong-bytes",         0, "^TM;",           "??????;"},
        {"in-pieces",           0, "^TM;^BN;",       "^TM025;^BN00;"},
        {"joined",              0, "^TM;^BN;",       "^TM025;^BN00;"},
        {"noise",               0, "^TM;",           Noise + "^TM025;" + Noise},
        {"short-band",          0, "^TM;^BN;",       "^TM025;^BN;"},
        {"memory-no-answer",    0, "^TM;^ER005201AD;",       "^TM025;"},
        {"memory-cut",          0, "^TM;^ER005201AD;",       "^TM025;^ER0052"},
        {"memory-other",        0, "^ER005201AD;",           "^TM025;"},
        {"memory-bad-checksum", 0, "^ER005201AD;",           "^ER0052015850;"},
        {"memory-late",         0, "^TM;^ER005201AD;",       "^TM025;"},
        {"byte-lost",           2, "^TM;^BN;",               "^BN00;"},
        {"byte-flipped",        6, "^TM;^BN;^TM;",           "^TM025;^TM025;"},
        // clang-format on
    };
    const auto named = namedMisbehaviours();
    for (const Case& row : cases) {
        const auto found = std::find_if(named.begin(), named.end(),
                                        [&row](const NamedMisbehaviour& m) { return m.name == row.name; });
        ASSERT_NE(found, named.end()) << row.name;
        Misbehaviour misbehaviour = found->example;
        misbehaviour.nth = row.nth;
        amplifier.misbehave(misbehaviour);
        EXPECT_EQ(ask(row.question), row.heard) << row.name;
        amplifier.behave();
        ask("", 5s);
    }
    EXPECT_EQ(clock.pendingWaits(), 0);
}

TEST_F(MisbehaviourTest, PiecesComeApartAndJoinedAnswersTogether) {
    std::vector<QByteArray> chunks;
    port.DataAvailable = [&] { chunks.push_back(port.ReadAll()); };
    amplifier.misbehave({Kind::InPieces, 1, 7ms});
    ask("^TM;");
    EXPECT_EQ(chunks.size(), 7U);
    chunks.clear();
    amplifier.behave();
    amplifier.misbehave({Kind::Joined, 0, 50ms});
    ask("^TM;^BN;^FL;");
    EXPECT_EQ(chunks, std::vector<QByteArray>{"^TM025;^BN00;^FL00;"});
}

TEST_F(MisbehaviourTest, LateAnswerComesAfterItsDelay) {
    amplifier.misbehave({Kind::Late, 1, 3s});
    EXPECT_EQ(ask("^TM;", 3s), "");
    clock.advance(10ms);
    EXPECT_EQ(port.ReadAll(), "^TM025;");
}

TEST_F(MisbehaviourTest, LostMemoryWriteIsAnsweredAllTheSame) {
    const QByteArray before = amplifier.eeprom().contents();
    amplifier.misbehave({Kind::MemoryWriteLost, 1});
    EXPECT_EQ(ask("^EW00520100AD;"), "^EW005201AD;");
    EXPECT_EQ(amplifier.eeprom().contents(), before);
    ask("^EW00520100AD;");
    EXPECT_NE(amplifier.eeprom().contents(), before);
}

}  // namespace
