#include <QBuffer>

#include "ReplayPort.h"
#include "SimBench.h"

namespace {

const QByteArray Record =
    "0 open 38400 /dev/ttyUSB0\n0 out 5E544D3B  # ^TM;\n2865 in 5E544D3032353B  # ^TM025;\n"
    "100000 speed 9600\n100000 out 3B\n310000 lost cable pulled\n";

class TranscriptTest : public testing::Test {
protected:
    Transcript parse(QByteArray text) {
        QBuffer file(&text);
        file.open(QIODevice::ReadOnly);
        QString error;
        const auto transcript = readTranscript(file, error);
        EXPECT_TRUE(transcript) << qPrintable(error);
        return transcript.value_or(Transcript());
    }
    static void ask(SerialPort& port, int bitsPerSecond, const QByteArray& question) {
        port.setBaud(Baud::codeOf(bitsPerSecond));
        port.Reset();
        port.Write(question);
    }

    SimClock clock;
};

TEST_F(TranscriptTest, IsPlayedBack) {
    ReplayPort port(clock, parse("0 refused Permission denied\n" + Record));
    QByteArrayList heard;
    port.DataAvailable = [&] { heard += port.ReadAll(); };
    port.Lost = [&](const QString& reason) { heard += reason.toLatin1(); };
    EXPECT_FALSE(port.Open());
    EXPECT_EQ(port.openFailure(), QStringLiteral("Permission denied"));
    EXPECT_TRUE(port.Open());
    ask(port, 38400, "^TM;");
    clock.advance(100ms);
    EXPECT_EQ(heard, QByteArrayList{"^TM025;"});
    ask(port, 9600, ";");
    clock.advance(1s);
    EXPECT_EQ(heard.last(), "cable pulled");
    EXPECT_EQ(port.difference(), QString());
    EXPECT_TRUE(port.isFinished());
    EXPECT_FALSE(port.isOpen());
    EXPECT_EQ(clock.pendingWaits(), 0);
}

TEST_F(TranscriptTest, FirstDifferenceIsTold) {
    for (const auto& [speed, question, difference] :
         {std::tuple{38400, "^TX;", "event 2: written 5E 54 58 3B, on record 5E 54 4D 3B"},
          {4800, "^TM;", "event 2: 5E 54 4D 3B written at 4800 bit/s, on record 38400"}}) {
        ReplayPort port(clock, parse(Record));
        EXPECT_TRUE(port.Open());
        ask(port, speed, question);
        clock.advance(1s);
        EXPECT_EQ(port.difference(), QLatin1String(difference));
        EXPECT_EQ(port.ReadAll(), QByteArray());
        EXPECT_FALSE(port.isFinished());
    }
}

TEST_F(TranscriptTest, BadLineIsNamed) {
    const std::vector<std::pair<QByteArray, QString>> cases{
        // clang-format off
        {"# a\n\nx out 3B\n",     QStringLiteral("line 3: no time")},
        {"0 shout 3B\n",          QStringLiteral("line 1: unknown event")},
        {"0 out 3\n",             QStringLiteral("line 1: no bytes in hexadecimal")},
        {"0 out XY\n",            QStringLiteral("line 1: no bytes in hexadecimal")},
        {"0 out # 3B\n",          QStringLiteral("line 1: no bytes in hexadecimal")},
        {"0 speed fast\n",        QStringLiteral("line 1: no number")},
        {"0 flush 3B\n",          QStringLiteral("line 1: more than belongs to the event")},
        {"7\n",                   QStringLiteral("line 1: unknown event")},
        // clang-format on
    };
    for (auto [text, expected] : cases) {
        QBuffer file(&text);
        file.open(QIODevice::ReadOnly);
        QString error;
        EXPECT_FALSE(readTranscript(file, error)) << text.constData();
        EXPECT_EQ(error, expected) << text.constData();
    }
}

}  // namespace
