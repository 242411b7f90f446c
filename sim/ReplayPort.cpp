#include "ReplayPort.h"

#include <algorithm>

using Kind = TranscriptEvent::Kind;

ReplayPort::ReplayPort(Clock& clock, Transcript transcript, Differences differences)
    : m_clock(clock),
      m_transcript(std::move(transcript)),
      m_differences(differences),
      m_line(clock, [](const QByteArray&, int) {}) {}

ReplayPort::~ReplayPort() {
    forgetComing();
}

bool ReplayPort::Open() {
    if (m_differences == Differences::AreSkipped && !isNext(Kind::Refused) && !skipTo(Kind::Open))
        return m_isOpen = true;
    if (!isNext(Kind::Open) && !isNext(Kind::Refused)) {
        differ(QStringLiteral("an open that is not on record"));
        return false;
    }
    const TranscriptEvent& event = m_transcript[m_next];
    m_isOpen = event.kind == Kind::Open;
    m_openFailure = event.text;
    m_bitsPerSecond = Baud::bitsPerSecond(Baud());
    m_recordedSpeed = event.value;
    passNext();
    return m_isOpen;
}

void ReplayPort::Close() {
    forgetComing();
    m_line.cut();
    m_isOpen = false;
    SerialPort::Flush();
}

void ReplayPort::Reset() {
    m_bitsPerSecond = Baud::bitsPerSecond(Baud());
}

void ReplayPort::Write(const QByteArray& bytes) {
    if (!m_isOpen)
        return;
    m_line.send(bytes, std::max(m_bitsPerSecond, Baud::bitsPerSecond(Baud::Code4800)));
    QByteArrayView rest = bytes;
    while (!rest.isEmpty() && m_difference.isEmpty())
        rest = rest.sliced(compare(rest));
}

Task<> ReplayPort::XmitWait() {
    return m_line.waitUntilIdle();
}

bool ReplayPort::skipTo(Kind kind, QByteArrayView bytes) {
    int speed = m_recordedSpeed;
    for (std::size_t index = m_next; index < m_transcript.size(); ++index) {
        const TranscriptEvent& event = m_transcript[index];
        if (event.kind == Kind::Speed || event.kind == Kind::Open)
            speed = event.value;
        const qsizetype done = index == m_next ? m_writtenOfNext : 0;
        const QByteArrayView recorded = QByteArrayView(event.bytes).sliced(done);
        const bool isSame = recorded.startsWith(bytes) || (!recorded.isEmpty() && bytes.startsWith(recorded));
        if (event.kind != kind || !isSame)
            continue;
        m_next = index;
        m_writtenOfNext = done;
        m_recordedSpeed = speed;
        return true;
    }
    return false;
}

qsizetype ReplayPort::compare(QByteArrayView bytes) {
    // What is on record nowhere stays without an answer.
    if (m_differences == Differences::AreSkipped && !skipTo(Kind::Out, bytes))
        return bytes.size();
    if (!isNext(Kind::Out)) {
        differ(QStringLiteral("written where nothing is on record: ") + shown(bytes));
        return 0;
    }
    const QByteArrayView recorded = QByteArrayView(m_transcript[m_next].bytes).sliced(m_writtenOfNext);
    const qsizetype count = std::min(recorded.size(), bytes.size());
    if (recorded.first(count) != bytes.first(count)) {
        differ(QStringLiteral("written %1, on record %2").arg(shown(bytes), shown(recorded)));
    } else if (m_bitsPerSecond != m_recordedSpeed && m_differences == Differences::End) {
        differ(QStringLiteral("%1 written at %2 bit/s, on record %3")
                   .arg(shown(bytes))
                   .arg(m_bitsPerSecond)
                   .arg(m_recordedSpeed));
    } else {
        m_writtenOfNext += count;
        if (count == recorded.size())
            passNext();
    }
    return count;
}

QString ReplayPort::shown(QByteArrayView bytes) {
    return QString::fromLatin1(bytes.toByteArray().toHex(' ').toUpper());
}

bool ReplayPort::isNext(Kind kind) const {
    return m_next < m_transcript.size() && m_transcript[m_next].kind == kind;
}

void ReplayPort::differ(const QString& how) {
    m_difference = QStringLiteral("event %1: %2").arg(m_next + 1).arg(how);
    forgetComing();
}

// What the program had to do has been done: all that follows up to its next doing comes by itself.
void ReplayPort::passNext() {
    m_recordedAt = m_transcript[m_next].time;
    m_playedAt = m_clock.now();
    m_writtenOfNext = 0;
    ++m_next;
    while (m_next < m_transcript.size() && !isNext(Kind::Out) && !isNext(Kind::Open) &&
           !isNext(Kind::Refused)) {
        const TranscriptEvent& event = m_transcript[m_next];
        if (event.kind == Kind::Speed)
            m_recordedSpeed = event.value;
        else if (event.kind == Kind::In || event.kind == Kind::Lost)
            comeLater(m_next);
        ++m_next;
    }
}

void ReplayPort::comeLater(std::size_t index) {
    const auto due = m_playedAt + (m_transcript[index].time - m_recordedAt);
    m_coming[index] = m_clock.scheduleAt(std::max(due, m_clock.now()), [this, index] {
        m_coming.erase(index);
        come(m_transcript[index]);
    });
}

void ReplayPort::come(const TranscriptEvent& event) {
    if (event.kind == Kind::Lost) {
        Close();
        // A copy: the program may set another one from here.
        if (const auto lost = Lost)
            lost(event.text);
        return;
    }
    receive(event.bytes);
    if (DataAvailable)
        DataAvailable();
}

void ReplayPort::forgetComing() {
    for (const auto& [index, key] : m_coming)
        m_clock.cancel(key);
    m_coming.clear();
}
