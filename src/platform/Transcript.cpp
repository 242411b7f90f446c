#include "Transcript.h"

#include <algorithm>
#include <array>

namespace {

using Kind = TranscriptEvent::Kind;

// What stands behind the name of an event.
enum class Operand { None, Number, NumberAndText, Text, Bytes };

struct Form {
    Kind kind;
    const char* name;
    Operand operand;
};

constexpr std::array<Form, 9> Forms{{
    {Kind::Open, "open", Operand::NumberAndText},
    {Kind::Refused, "refused", Operand::Text},
    {Kind::Speed, "speed", Operand::Number},
    {Kind::RequestToSend, "rts", Operand::Number},
    {Kind::Out, "out", Operand::Bytes},
    {Kind::In, "in", Operand::Bytes},
    {Kind::Flush, "flush", Operand::None},
    {Kind::Close, "close", Operand::None},
    {Kind::Lost, "lost", Operand::Text},
}};

constexpr qint64 LineLimit = 1 << 20;  // characters

// Bytes as a reader of the file may know them again; "#" would begin another comment.
QByteArray readable(const QByteArray& bytes) {
    QByteArray text = bytes;
    std::replace_if(text.begin(), text.end(), [](char c) { return c < ' ' || c > '~' || c == '#'; }, '.');
    return text;
}

// Text that stays on its line, and is no comment.
QByteArray onLine(const QString& text) {
    return text.simplified().toUtf8().replace('#', '.');
}

QByteArray operandsOf(const TranscriptEvent& event, Operand operand) {
    switch (operand) {
        case Operand::None:
            return {};
        case Operand::Number:
            return ' ' + QByteArray::number(event.value);
        case Operand::NumberAndText:
            return ' ' + QByteArray::number(event.value) + ' ' + onLine(event.text);
        case Operand::Text:
            return ' ' + onLine(event.text);
        case Operand::Bytes:
            return ' ' + event.bytes.toHex().toUpper() + "  # " + readable(event.bytes);
    }
    return {};
}

// Cuts the first word off a line.
QByteArray takeWord(QByteArray& line) {
    const qsizetype end = line.indexOf(' ');
    const QByteArray word = end < 0 ? line : line.left(end);
    line = end < 0 ? QByteArray() : line.mid(end + 1).trimmed();
    return word;
}

bool readBytes(const QByteArray& digits, QByteArray& bytes) {
    bytes = QByteArray::fromHex(digits);
    return !digits.isEmpty() && bytes.toHex() == digits.toLower();
}

// Empty when all is well, else what is wrong.
QString readOperands(QByteArray operands, Operand operand, TranscriptEvent& event) {
    bool isGood = true;
    if (operand == Operand::Number || operand == Operand::NumberAndText)
        event.value = takeWord(operands).toInt(&isGood);
    if (!isGood)
        return QStringLiteral("no number");
    if (operand == Operand::Text || operand == Operand::NumberAndText)
        event.text = QString::fromUtf8(std::exchange(operands, {}));
    if (operand == Operand::Bytes && !readBytes(takeWord(operands), event.bytes))
        return QStringLiteral("no bytes in hexadecimal");
    return operands.isEmpty() ? QString() : QStringLiteral("more than belongs to the event");
}

QString readEvent(QByteArray line, TranscriptEvent& event) {
    bool isTime = false;
    event.time = Clock::Microseconds(takeWord(line).toLongLong(&isTime));
    if (!isTime)
        return QStringLiteral("no time");
    const QByteArray name = takeWord(line);
    const auto* form =
        std::find_if(Forms.begin(), Forms.end(), [&name](const Form& f) { return name == f.name; });
    if (form == Forms.end())
        return QStringLiteral("unknown event");
    event.kind = form->kind;
    return readOperands(line, form->operand, event);
}

QByteArray withoutComment(const QByteArray& line) {
    const qsizetype comment = line.indexOf('#');
    return (comment < 0 ? line : line.left(comment)).trimmed();
}

}  // namespace

std::optional<Transcript> readTranscript(QIODevice& file, QString& error) {
    Transcript transcript;
    for (int number = 1; !file.atEnd(); ++number) {
        const QByteArray line = withoutComment(file.readLine(LineLimit));
        if (line.isEmpty())
            continue;
        TranscriptEvent event;
        const QString complaint = readEvent(line, event);
        if (!complaint.isEmpty()) {
            error = QStringLiteral("line %1: %2").arg(number).arg(complaint);
            return std::nullopt;
        }
        transcript.push_back(event);
    }
    return transcript;
}

QByteArray transcriptHeading() {
    return QByteArrayLiteral("# line transcript: microseconds, event, operands\n");
}

QByteArray transcriptLine(const TranscriptEvent& event) {
    const auto* form =
        std::find_if(Forms.begin(), Forms.end(), [&event](const Form& f) { return f.kind == event.kind; });
    return QByteArray::number(static_cast<qint64>(event.time.count())) + ' ' + form->name +
           operandsOf(event, form->operand) + '\n';
}

TranscriptWriter::TranscriptWriter(Clock& clock, QIODevice& file)
    : m_clock(clock), m_file(file), m_start(clock.now()) {
    m_file.write(transcriptHeading());
}

void TranscriptWriter::write(TranscriptEvent event) {
    event.time = m_clock.now() - m_start;
    m_file.write(transcriptLine(event));
}
