#include "DemoLine.h"

DemoLine::DemoLine(Clock& clock, const Options& options) : amplifier(clock), simulated(clock, amplifier) {
    if (!options.replayFile.isEmpty()) {
        replay(clock, options.replayFile);
    } else if (!options.realPort.isEmpty()) {
        m_real.emplace(clock);
        ports.ports = {{options.realPort, options.realPort}};
    }
    if (!options.recordFile.isEmpty())
        record(clock, options.recordFile);
}

void DemoLine::replay(Clock& clock, const QString& fileName) {
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        m_failure = fileName + QStringLiteral(": ") + file.errorString();
        return;
    }
    QString error;
    auto transcript = readTranscript(file, error);
    if (!transcript) {
        m_failure = fileName + QStringLiteral(": ") + error;
        return;
    }
    m_replay.emplace(clock, std::move(*transcript), ReplayPort::Differences::AreSkipped);
    ports.ports = {{QStringLiteral("recorded VLX720"), fileName}};
}

void DemoLine::record(Clock& clock, const QString& fileName) {
    m_file.setFileName(fileName);
    if (!m_file.open(QIODevice::WriteOnly | QIODevice::Text)) {
        m_failure = fileName + QStringLiteral(": ") + m_file.errorString();
        return;
    }
    m_writer.emplace(clock, m_file);
    m_recording.emplace(line(), [this](const TranscriptEvent& event) { m_writer->write(event); });
}

SerialPort& DemoLine::line() {
    if (m_recording)
        return *m_recording;
    if (m_replay)
        return *m_replay;
    return m_real ? static_cast<SerialPort&>(*m_real) : simulated;
}
