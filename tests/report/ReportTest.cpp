#include <QBuffer>

#include "AmplifierBench.h"
#include "LineRecord.h"
#include "RadioState.h"
#include "RecordingPort.h"
#include "ReplayPort.h"
#include "Report.h"

using namespace std::chrono_literals;
using Kind = TranscriptEvent::Kind;

namespace {

Transcript parse(QByteArray text) {
    QBuffer file(&text);
    file.open(QIODevice::ReadOnly);
    QString error;
    const auto transcript = readTranscript(file, error);
    EXPECT_TRUE(transcript) << qPrintable(error);
    return transcript.value_or(Transcript());
}

class LineRecordTest : public testing::Test {
protected:
    void add(TranscriptEvent event) {
        clock.advance(50ms);
        event.time = clock.now();
        events.push_back(event);
        record.add(event);
    }
    void addPolls(int count) {
        for (int poll = 0; poll < count; ++poll) {
            add({.kind = Kind::Out, .bytes = "^TM;"});
            add({.kind = Kind::In, .bytes = QByteArray("^TM") + QByteArray::number(poll) + ';'});
        }
    }

    SimClock clock;
    LineRecord record{clock};
    Transcript events;
};

TEST_F(LineRecordTest, TellsWhatItWasTold) {
    add({.kind = Kind::Refused, .text = QStringLiteral("Permission denied")});
    add({.kind = Kind::Open, .value = 38400, .text = QStringLiteral("/dev/ttyUSB0")});
    add({.kind = Kind::RequestToSend, .value = 1});
    addPolls(3);
    add({.kind = Kind::Speed, .value = 9600});
    add({.kind = Kind::In, .bytes = QByteArray("\0#\xFF", 3)});
    add({.kind = Kind::Flush});
    clock.advance(20h);
    add({.kind = Kind::Lost, .text = QStringLiteral("gone")});
    Transcript told = parse(record.transcript());
    // A pause of more than an hour is told shorter.
    EXPECT_LT(told.back().time, events.back().time);
    told.back().time = events.back().time;
    EXPECT_EQ(told, events);
}

TEST_F(LineRecordTest, KeepsTheBeginningAndTheLastOfTheLine) {
    add({.kind = Kind::Open, .value = 38400, .text = QStringLiteral("/dev/ttyUSB0")});
    add({.kind = Kind::Out, .bytes = ";"});
    addPolls(40000);
    const Transcript told = parse(record.transcript());
    ASSERT_GT(told.size(), LineRecord::HeadLimit);
    for (std::size_t index = 0; index < LineRecord::HeadLimit; ++index)
        EXPECT_EQ(told[index], events[index]) << index;
    qsizetype bytes = 0;
    const std::size_t kept = told.size() - LineRecord::HeadLimit;
    for (std::size_t index = 0; index < kept; ++index) {
        const TranscriptEvent& event = told[told.size() - 1 - index];
        ASSERT_EQ(event, events[events.size() - 1 - index]) << index;
        bytes += event.bytes.size();
    }
    EXPECT_LE(bytes, LineRecord::Limit);
    EXPECT_GT(bytes, LineRecord::Limit - 16);
    EXPECT_TRUE(record.transcript().contains("# Older events were let go"));
}

// What an owner sends is played to a developer, whose program senses the amplifier and then polls.
TEST(ReportTest, IsPlayedBackAlsoWhenItsMiddleWasLetGo) {
    AmplifierBench owner;
    LineRecord record(owner.clock);
    RecordingPort recording(owner.port, [&record](const TranscriptEvent& event) { record.add(event); });
    Platform recorded{owner.clock, recording, owner.ports, owner.dialogs, owner.platform.folders};
    RadioState sensing(recorded, owner.globals, owner.line);
    recording.setSerialPort(owner.ports.ports.front());
    ASSERT_TRUE(recording.Open());
    ASSERT_TRUE(owner.clock.run(sensing.Refresh(1)));
    for (int poll = 0; poll < 30000; ++poll) {
        recording.Write("^TM;");
        owner.clock.advance(20ms);
        recording.ReadAll();
    }
    recording.Write("^BN;");
    owner.clock.advance(100ms);
    const QByteArray report = reportText({.time = {},
                                          .versions = {},
                                          .port = {},
                                          .preferences = {},
                                          .log = QStringLiteral("0 out 3B"),
                                          .transcript = record.transcript()},
                                         {});

    AmplifierBench developer;
    ReplayPort replay(developer.clock, parse(report), ReplayPort::Differences::AreSkipped);
    Platform replayed{developer.clock, replay, developer.ports, developer.dialogs,
                      developer.platform.folders};
    RadioState sensingAgain(replayed, developer.globals, developer.line);
    ASSERT_TRUE(replay.Open());
    ASSERT_TRUE(developer.clock.run(sensingAgain.Refresh(1)));
    EXPECT_EQ(developer.globals.m_strMcuVersion, owner.globals.m_strMcuVersion);
    replay.Write("^TM;^XX;");
    developer.clock.advance(1s);
    EXPECT_EQ(replay.ReadAll(), "^TM025;") << "what is not on record stays without an answer";
    replay.Write("^BN;");
    developer.clock.advance(1s);
    EXPECT_TRUE(replay.ReadAll().startsWith("^BN"));
}

TEST(ReportTest, IsReadableAndGivesNoSecretAway) {
    const QByteArray text = reportText({.time = QStringLiteral("2026-11-22 14:05:07"),
                                        .versions = {QStringLiteral("VLX Utility 1.0")},
                                        .port = {QStringLiteral("Chosen: ttyUSB0")},
                                        .preferences = {QStringLiteral("FolderPath = /home/jo/fw/"),
                                                        QStringLiteral("ServerPassword = s = x")},
                                        .log = QStringLiteral("14:05:07 one\r14:05:08 two\n"),
                                        .transcript = "0 flush\n"},
                                       QStringLiteral("/home/jo"));
    EXPECT_EQ(text.toStdString(),
              "# VLX Utility report, 2026-11-22 14:05:07\n"
              "#\n# Versions\n#   VLX Utility 1.0\n"
              "#\n# Port\n#   Chosen: ttyUSB0\n"
              "#\n# Preferences\n#   FolderPath = ~/fw/\n#   ServerPassword = (left out)\n"
              "#\n# Log\n#   14:05:07 one\n#   14:05:08 two\n"
              "#\n0 flush\n");
}

}  // namespace
