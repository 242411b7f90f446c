#include <QBuffer>

#include "RecordingPort.h"
#include "ReplayPort.h"
#include "SimBench.h"

namespace {

// Asks as a program would: opens, asks at one speed and at another, and tells what it heard, and when.
class Session {
public:
    Session(SimClock& clock, SerialPort& port) : m_clock(clock), m_port(port) {
        m_port.DataAvailable = [this] { note(m_port.ReadAll()); };
        m_port.Lost = [this](const QString& reason) { note("lost: " + reason.toLatin1()); };
    }

    void open() {
        m_start = m_clock.now();
        m_port.setSerialPort({QStringLiteral("VLX"), QStringLiteral("/dev/ttyUSB0")});
        EXPECT_TRUE(m_port.Open());
    }
    void ask(const QByteArray& question) {
        m_port.Write(question);
        m_clock.advance(100ms);
    }
    void setSpeed(int bitsPerSecond) {
        m_port.setBaud(Baud::codeOf(bitsPerSecond));
        m_port.Reset();
    }

    QByteArray heard;

private:
    void note(const QByteArray& what) {
        heard +=
            QByteArray::number(static_cast<qint64>((m_clock.now() - m_start).count())) + ' ' + what + '\n';
    }

    SimClock& m_clock;
    SerialPort& m_port;
    Clock::Microseconds m_start{0};
};

void play(Session& session, const QByteArray& question = "^TM;") {
    session.open();
    session.ask(question);
    session.setSpeed(9600);
    session.ask(";;");
    session.setSpeed(38400);
    session.ask("^BN;^FL;");
}

class TranscriptTest : public testing::Test {
protected:
    // The record of a session, and what the program heard in it.
    QByteArray recordSession(QByteArray& heard) {
        QBuffer file;
        file.open(QIODevice::WriteOnly);
        Vlx720 amplifier(clock);
        SimulatedPort port(clock, amplifier);
        TranscriptWriter writer(clock, file);
        RecordingPort recording(port, [&writer](const TranscriptEvent& event) { writer.write(event); });
        Session session(clock, recording);
        play(session);
        amplifier.emitNoise(QByteArray("\x00#\xFF", 3));
        clock.advance(10ms);
        port.unplug(QStringLiteral("cable\npulled"));
        clock.advance(10ms);
        heard = session.heard;
        return file.data();
    }

    Transcript parse(QByteArray text) {
        QBuffer file(&text);
        file.open(QIODevice::ReadOnly);
        QString error;
        const auto transcript = readTranscript(file, error);
        EXPECT_TRUE(transcript) << qPrintable(error);
        return transcript.value_or(Transcript());
    }

    SimClock clock;
};

TEST_F(TranscriptTest, PlayedBackIsHeardAsItWas) {
    QByteArray heard;
    const QByteArray text = recordSession(heard);
    // What the amplifier made of the ";;" at the wrong speed still stood before "^BN;".
    EXPECT_TRUE(
        text.endsWith("203647 in 5E464C30303B  # ^FL00;\n300782 in 0023FF  # ...\n"
                      "310000 lost cable pulled\n"))
        << text.constData();
    ReplayPort port(clock, parse(text));
    Session session(clock, port);
    play(session);
    clock.advance(1s);
    EXPECT_EQ(session.heard.replace("cable pulled", "cable\npulled"), heard);
    EXPECT_EQ(port.difference(), QString());
    EXPECT_TRUE(port.isFinished());
    EXPECT_FALSE(port.isOpen());
    EXPECT_EQ(clock.pendingWaits(), 0);
}

TEST_F(TranscriptTest, FirstDifferenceIsTold) {
    QByteArray heard;
    const Transcript transcript = parse(recordSession(heard));
    ReplayPort wrongBytes(clock, transcript);
    Session first(clock, wrongBytes);
    play(first, "^TX;");
    EXPECT_EQ(wrongBytes.difference(), QStringLiteral("event 2: written 5E 54 58 3B, on record 5E 54 4D 3B"));
    EXPECT_EQ(first.heard, "");

    ReplayPort wrongSpeed(clock, transcript);
    Session second(clock, wrongSpeed);
    second.open();
    second.setSpeed(4800);
    second.ask("^TM;");
    EXPECT_EQ(wrongSpeed.difference(),
              QStringLiteral("event 2: 5E 54 4D 3B written at 4800 bit/s, on record 38400"));
    EXPECT_FALSE(wrongSpeed.isFinished());
    EXPECT_EQ(clock.pendingWaits(), 0);
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
