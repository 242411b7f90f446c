// The line of the demo: a simulated amplifier, a real one, or a recorded session.
#pragma once

#include <optional>

#include <QFile>

#include "QtSerialPort.h"
#include "RecordingPort.h"
#include "ReplayPort.h"
#include "SimulatedPort.h"

class DemoLine {
public:
    struct Options {
        QString realPort;
        QString recordFile;
        QString replayFile;
    };

    DemoLine(Clock& clock, const Options& options);

    // Why the line cannot be had as it was asked for; empty when all is well.
    const QString& failure() const { return m_failure; }
    bool isSimulated() const { return !m_real && !m_replay; }

    SerialPort& line();

    Vlx720 amplifier;
    SimulatedPort simulated;
    SimulatedPortList ports{
        {{QStringLiteral("simulated VLX720"), QStringLiteral("simulated"), QStringLiteral("demo")}}};

private:
    void replay(Clock& clock, const QString& fileName);
    void record(Clock& clock, const QString& fileName);

    QFile m_file;
    QString m_failure;
    std::optional<QtSerialPort> m_real;
    std::optional<ReplayPort> m_replay;
    std::optional<TranscriptWriter> m_writer;
    std::optional<RecordingPort> m_recording;
};
