#include "Misbehaviour.h"

#include <algorithm>
#include <array>

using namespace std::chrono_literals;
using Kind = Misbehaviour::Kind;
using Emission = MisbehaviourScript::Emission;

namespace {

constexpr std::array Named = {
    NamedMisbehaviour{QLatin1String("silent"), {Kind::Lost}},
    NamedMisbehaviour{QLatin1String("answer-lost"), {Kind::Lost, 1}},
    NamedMisbehaviour{QLatin1String("late"), {Kind::Late, 0, 3s}},
    NamedMisbehaviour{QLatin1String("doubled"), {Kind::Doubled}},
    NamedMisbehaviour{QLatin1String("wrong-bytes"), {Kind::WrongBytes}},
    NamedMisbehaviour{QLatin1String("in-pieces"), {Kind::InPieces, 0, 7ms}},
    NamedMisbehaviour{QLatin1String("joined"), {Kind::Joined, 0, 50ms}},
    NamedMisbehaviour{QLatin1String("noise"), {Kind::Noise}},
    NamedMisbehaviour{QLatin1String("short-band"), {Kind::ShortBand}},
    NamedMisbehaviour{QLatin1String("memory-no-answer"), {Kind::MemoryNoAnswer}},
    NamedMisbehaviour{QLatin1String("memory-cut"), {Kind::MemoryCut}},
    NamedMisbehaviour{QLatin1String("memory-other"), {Kind::MemoryOther}},
    NamedMisbehaviour{QLatin1String("memory-bad-checksum"), {Kind::MemoryBadChecksum}},
    NamedMisbehaviour{QLatin1String("memory-late"), {Kind::MemoryLate, 0, 1500ms}},
    NamedMisbehaviour{QLatin1String("memory-write-lost"), {Kind::MemoryWriteLost}},
    NamedMisbehaviour{QLatin1String("byte-lost"), {Kind::ByteLost, 10}},
    NamedMisbehaviour{QLatin1String("byte-flipped"), {Kind::ByteFlipped, 10}},
    NamedMisbehaviour{QLatin1String("power-loss"), {Kind::PowerLoss, 10}},
};

constexpr char FlippedBit = 0x04;
// Among them an opening "^", and no ";".
const QByteArray NoiseBytes = QByteArrayLiteral("\x00\xFF\x80^\r\xC1\x7F");

bool isIncoming(Kind kind) {
    return kind >= Kind::ByteLost;
}

bool concerns(Kind kind, const QByteArray& answer) {
    if (kind == Kind::ShortBand)
        return answer.startsWith("^BN");
    if (kind >= Kind::MemoryNoAnswer && kind <= Kind::MemoryLate)
        return answer.startsWith("^E");
    return kind < Kind::ShortBand;
}

QByteArray allWrong(QByteArray bytes) {
    std::replace_if(bytes.begin(), bytes.end(), [](char byte) { return byte != ';'; }, '?');
    return bytes;
}

QByteArray withBadChecksum(QByteArray bytes) {
    // The last digit of the two before the ";".
    char& digit = bytes[bytes.size() - 2];
    digit = digit == '0' ? '1' : '0';
    return bytes;
}

Emission spoilt(const Misbehaviour& how, const Emission& good) {
    using Manner = Emission::Manner;
    switch (how.kind) {
        case Kind::Late:
        case Kind::MemoryLate:
            return {good.bytes, Manner::Later, how.delay};
        case Kind::InPieces:
            return {good.bytes, Manner::Spread, how.delay};
        case Kind::Joined:
            return {good.bytes, Manner::Gathered, how.delay};
        case Kind::Doubled:
            return {good.bytes + good.bytes, good.manner, good.delay};
        case Kind::WrongBytes:
            return {allWrong(good.bytes), good.manner, good.delay};
        case Kind::Noise:
            return {NoiseBytes + good.bytes + NoiseBytes, good.manner, good.delay};
        case Kind::ShortBand:
            return {QByteArrayLiteral("^BN;"), good.manner, good.delay};
        case Kind::MemoryCut:
            return {good.bytes.left(good.bytes.size() / 2), good.manner, good.delay};
        case Kind::MemoryOther:
            return {QByteArrayLiteral("^TM025;"), good.manner, good.delay};
        case Kind::MemoryBadChecksum:
            return {withBadChecksum(good.bytes), good.manner, good.delay};
        default:
            return {};
    }
}

}  // namespace

std::span<const NamedMisbehaviour> namedMisbehaviours() {
    return Named;
}

MisbehaviourScript::Heard MisbehaviourScript::hear(const QByteArray& bytes) {
    Heard heard{bytes};
    for (Step& step : m_steps) {
        if (!isIncoming(step.what.kind) || heard.bytes.isEmpty())
            continue;
        const bool isEach = step.what.nth == 0;
        const qsizetype first = isEach ? 0 : step.what.nth - 1 - step.seen;
        const qsizetype count = isEach ? heard.bytes.size() : 1;
        step.seen += heard.bytes.size();
        if (first < 0 || first >= heard.bytes.size())
            continue;
        if (step.what.kind == Kind::ByteLost) {
            heard.bytes.remove(first, count);
        } else if (step.what.kind == Kind::ByteFlipped) {
            for (qsizetype i = first; i < first + count; ++i)
                heard.bytes[i] = static_cast<char>(heard.bytes[i] ^ FlippedBit);
        } else {
            heard.bytes.truncate(first + 1);
            heard.isPowerLost = true;
        }
    }
    return heard;
}

Emission MisbehaviourScript::answer(const QByteArray& answer) {
    Emission emission{answer};
    for (Step& step : m_steps) {
        if (concerns(step.what.kind, answer) && step.hits())
            emission = spoilt(step.what, emission);
    }
    return emission;
}

bool MisbehaviourScript::losesMemoryWrite() {
    bool isLost = false;
    for (Step& step : m_steps) {
        if (step.what.kind == Kind::MemoryWriteLost && step.hits())
            isLost = true;
    }
    return isLost;
}
