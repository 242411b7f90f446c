// What can go wrong between the program and the amplifier, on demand.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include <QByteArray>
#include <QLatin1String>

#include "Clock.h"

struct Misbehaviour {
    enum class Kind {
        // Answers, whatever they answer.
        Lost,        // does not come
        Late,        // comes after `delay`
        Doubled,     // comes twice, in one piece
        WrongBytes,  // each byte but ";" is a "?"
        InPieces,    // comes byte by byte, `delay` apart
        Joined,      // comes together with all others within `delay`, in one piece
        Noise,       // has bytes of noise before and behind it
        // Answers of one kind.
        ShortBand,          // the "^BN" answer has no number, as from the waiting state
        MemoryNoAnswer,     // memory command gets no answer
        MemoryCut,          // half of a memory answer, without its ";"
        MemoryOther,        // the answer to another command in place of a memory answer
        MemoryBadChecksum,  // a memory answer whose checksum is off by one
        MemoryLate,         // a memory answer after `delay`
        MemoryWriteLost,    // a memory write is answered, but not done
        // Bytes on their way to the amplifier.
        ByteLost,     // is not heard
        ByteFlipped,  // is heard with one bit wrong
        PowerLoss,    // mains power goes as soon as this byte has been heard
    };

    Kind kind;
    // Which one it hits, counted from 1 from the moment on that this is asked for: among the answers or
    // writes that its kind concerns, or among the bytes that come in. 0: each one.
    int nth = 0;
    Clock::Microseconds delay{0};
};

// A misbehaviour with a name: one of each kind, as a table for tests and for the console.
struct NamedMisbehaviour {
    QLatin1String name;
    Misbehaviour example;
};

std::span<const NamedMisbehaviour> namedMisbehaviours();

// The misbehaviours in force, each with its own count.
class MisbehaviourScript {
public:
    void add(const Misbehaviour& misbehaviour) { m_steps.push_back({misbehaviour}); }
    void clear() { m_steps.clear(); }

    struct Heard {
        QByteArray bytes;
        bool isPowerLost = false;
    };
    // What the amplifier hears of bytes that come in.
    Heard hear(const QByteArray& bytes);

    // An answer as it goes out.
    struct Emission {
        enum class Manner { AtOnce, Later, Gathered, Spread };

        QByteArray bytes;
        Manner manner = Manner::AtOnce;
        Clock::Microseconds delay{0};
    };
    // How an answer goes out; with no bytes it does not.
    Emission answer(const QByteArray& answer);

    // Whether the memory write now under way is lost.
    bool losesMemoryWrite();

private:
    struct Step {
        Misbehaviour what;
        std::int64_t seen = 0;

        bool hits() { return ++seen == what.nth || what.nth == 0; }
    };

    std::vector<Step> m_steps;
};
