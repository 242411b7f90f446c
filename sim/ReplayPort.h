// A recorded session as a port.
#pragma once

#include <map>

#include "SerialPort.h"
#include "Transcript.h"
#include "Wire.h"

// A port that plays a transcript: what the program opens and writes is compared with the record, the speed
// too, and what had been received or lost after a write comes again, as long after it as then. One write
// may be made as several or several as one. Nothing comes after the first difference; or, where differences
// are skipped, it goes on where the bytes were written next, as when someone watches a record whose
// beginning was let go, or presses a button a second later than on record.
class ReplayPort final : public SerialPort {
public:
    enum class Differences { End, AreSkipped };

    ReplayPort(Clock& clock, Transcript transcript, Differences differences = Differences::End);
    ~ReplayPort() override;

    bool Open() override;
    QString openFailure() const override { return m_openFailure; }
    void Close() override;
    bool isOpen() const override { return m_isOpen; }
    void Reset() override;
    void setRequestToSend(bool) override {}
    void Write(const QByteArray& bytes) override;
    Task<> XmitWait() override;

    // The first difference between the program and the record; empty when there was none.
    QString difference() const { return m_difference; }
    // Everything on record has been written and has come.
    bool isFinished() const { return m_next == m_transcript.size() && m_coming.empty(); }

private:
    // Takes the part of the bytes that belongs to one event and tells how many bytes that was.
    qsizetype compare(QByteArrayView bytes);
    static QString shown(QByteArrayView bytes);
    bool isNext(TranscriptEvent::Kind kind) const;
    // Goes to the next event that fits; false when there is none.
    bool skipTo(TranscriptEvent::Kind kind, QByteArrayView bytes = {});
    void differ(const QString& how);
    void passNext();
    void comeLater(std::size_t index);
    void come(const TranscriptEvent& event);
    void forgetComing();

    Clock& m_clock;
    Transcript m_transcript;
    Differences m_differences;
    std::size_t m_next = 0;  // what the program is to do next
    qsizetype m_writtenOfNext = 0;
    // Recorded and present time of the event from which those that come by themselves are timed.
    Clock::Microseconds m_recordedAt{0};
    Clock::Microseconds m_playedAt{0};
    std::map<std::size_t, Clock::WaitKey> m_coming;
    bool m_isOpen = false;
    int m_bitsPerSecond = 0;
    int m_recordedSpeed = 0;
    QString m_openFailure;
    QString m_difference;
    Wire m_line;  // for the time that sending takes
};
