#include "PowerOnBanner.h"

#include "MemoryBench.h"

namespace {

using namespace std::chrono_literals;
using Kind = Misbehaviour::Kind;

class Banner : public testing::Test, public MemoryBench {
protected:
    // "(unread)" when the read failed.
    QString readBanner() {
        Task<std::optional<QString>> flow = banner.ReadPowerOnBanner();
        EXPECT_TRUE(clock.run(flow));
        expectNothingLeftBehind();
        return flow.result().value_or(QStringLiteral("(unread)"));
    }
    bool writeBanner(const QString& text) {
        line_and_log.clear();
        Task<bool> flow = banner.WritePowerOnBanner(text);
        EXPECT_TRUE(clock.run(flow));
        expectNothingLeftBehind();
        return flow.result();
    }

    MemoryAccess memory{platform, globals};
    PowerOnBanner banner{globals, memory};
};

TEST_F(Banner, EndsAtZeroOr255OrAfterEightBytes) {
    const std::pair<QByteArray, QString> cases[] = {
        {"VLX720", "VLX720"},
        {"ABCDEFGH", "ABCDEFGH"},
        {QByteArray("AB\0CD", 5), "AB"},
        {"AB\xFF"
         "CD",
         "AB"},
        {"\xFF", ""},
        {"a\x01\x7F", "a\x01\x7F"},
        {"\x80\xFE", QStringLiteral("\u0080\u00FE")},
    };
    for (const auto& [bytes, text] : cases) {
        amplifier.eeprom().setBanner(bytes);
        EXPECT_EQ(readBanner(), text);
    }
}

// 201 looks of 5 ms and one more wait before them.
TEST_F(Banner, AnAnswerCountsUpToTheLastLook) {
    for (const auto& [delay, text] : {std::pair{999ms, "VLX720"}, {1000ms, "(unread)"}}) {
        amplifier.behave();
        amplifier.misbehave({Kind::MemoryLate, 0, delay});
        EXPECT_EQ(readBanner(), QLatin1String(text)) << delay.count();
    }
}

TEST_F(Banner, AReadThatFailsIsEmpty) {
    for (const Kind kind : {Kind::MemoryNoAnswer, Kind::MemoryCut, Kind::MemoryOther, Kind::MemoryBadChecksum,
                            Kind::MemoryLate}) {
        amplifier.behave();
        amplifier.misbehave({kind, 0, 1500ms});
        EXPECT_EQ(readBanner(), QStringLiteral("(unread)"));
    }
    EXPECT_EQ(dialogs.shown, QStringList());
}

TEST_F(Banner, IsNotWrittenWhenItCannotBe) {
    EXPECT_FALSE(writeBanner(QStringLiteral("ABCDEFGHI")));
    globals.m_FirmwareStatus = FirmwareStatus::Bootloader;
    EXPECT_FALSE(writeBanner(QStringLiteral("AB")));
    EXPECT_EQ(readBanner(), QStringLiteral("(unread)"));
    EXPECT_EQ(line_and_log, QStringList());
}

TEST_F(Banner, IsNotWrittenWhenThePortGoes) {
    Task<bool> flow = banner.WritePowerOnBanner(QStringLiteral("AB"));
    clock.advance(5ms);
    port.unplug();
    EXPECT_TRUE(clock.run(flow, 50ms));
    EXPECT_FALSE(flow.result());
    EXPECT_FALSE(writeBanner(QString()));
}

}  // namespace
