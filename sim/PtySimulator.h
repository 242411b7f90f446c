// The simulated amplifier on a pseudo-terminal, for any program that opens a serial port.
#pragma once

#include <memory>
#include <optional>

#include <QObject>
#include <QSocketNotifier>

#include "SerialPort.h"
#include "Transcript.h"
#include "Vlx720.h"
#include "Wire.h"

// A file descriptor that is closed with its owner.
class FileDescriptor {
public:
    explicit FileDescriptor(int descriptor = -1) : m_descriptor(descriptor) {}
    FileDescriptor(FileDescriptor&& other) noexcept : m_descriptor(std::exchange(other.m_descriptor, -1)) {}
    FileDescriptor& operator=(FileDescriptor&& other) noexcept {
        std::swap(m_descriptor, other.m_descriptor);
        return *this;
    }
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;
    ~FileDescriptor();

    int get() const { return m_descriptor; }
    bool isValid() const { return m_descriptor >= 0; }

private:
    int m_descriptor;
};

// A pseudo-terminal knows no bit rate: bytes are held back here for the time that they would take on a line
// at the speed that the other program has set. The device stays open on this side too, so other programs may
// come and go. What nobody reads is lost when the system's buffer is full, as on a line.
class PtySimulator {
public:
    // The amplifier outlives it.
    PtySimulator(Clock& clock, Vlx720& amplifier);
    PtySimulator(const PtySimulator&) = delete;
    PtySimulator& operator=(const PtySimulator&) = delete;
    ~PtySimulator();

    // Empty on success, else what went wrong.
    QString open();
    // Path of the device that the other program opens.
    QString path() const { return m_path; }
    // Makes `link` point to the device, in the place of another link; taken away at the end. Empty on
    // success.
    QString link(const QString& link);
    // The file outlives this object.
    void record(QIODevice& file) { m_record.emplace(m_clock, file); }

private:
    void watchForClose();
    void readDevice();
    void writeDevice(const QByteArray& bytes, int bitsPerSecond);
    int deviceSpeed() const;
    void note(TranscriptEvent::Kind kind, const QByteArray& bytes);

    Clock& m_clock;
    Vlx720& m_amplifier;
    Wire m_line;
    FileDescriptor m_master;
    FileDescriptor m_device;
    QString m_path;
    QString m_link;
    std::unique_ptr<QSocketNotifier> m_notifier;
    FileDescriptor m_closes;
    std::unique_ptr<QSocketNotifier> m_closeNotifier;
    std::optional<TranscriptWriter> m_record;
    int m_recordedSpeed = 0;
};
