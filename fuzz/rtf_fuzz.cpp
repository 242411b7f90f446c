// RTF files of any content: the read ends, in bounded work, and tells only looks that exist.

#include "Errors.h"
#include "Require.h"
#include "RtfParser.h"
#include "SimClock.h"

namespace {

class CheckingTarget final : public RtfTarget {
public:
    void SetState(const RtfState& state) override {
        require(state.alignment >= RtfAlignment::Left && state.alignment <= RtfAlignment::Justified);
        require(!state.font.isEmpty());
        require(state.encoding == RtfEncoding::MacRoman || state.encoding >= 1045);
        require(state.nativeencoding == RtfEncoding::MacRoman);
        ++states;
    }
    void Write(QByteArrayView text) override { written += text.size(); }
    bool Preprocess() override { return true; }
    bool Postprocess() override {
        isEnded = true;
        return true;
    }

    std::int64_t states = 0;
    std::int64_t written = 0;
    bool isEnded = false;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const InstalledFonts installed{{QStringLiteral("Times"), QStringLiteral("Arial")}};
    // A date is the longest that one word writes.
    constexpr std::int64_t LongestWord = 64;
    const auto length = static_cast<qsizetype>(size);
    SimClock clock;
    RtfStream stream(QByteArray(reinterpret_cast<const char*>(data), length), clock);
    RtfParser parser(clock, installed);
    CheckingTarget target;
    Task<RtfParser::Ending> flow = parser.Parse(stream, target);
    require(clock.run(flow));
    try {
        require(target.isEnded == (flow.result() == RtfParser::Ending::Whole));
        require(!target.isEnded || stream.isAtEnd());
    } catch (const NilObjectError&) {
        require(!target.isEnded);
    }
    require(target.states <= (RtfParser::ReplayPerByte + 1) * length);
    require(target.written <= LongestWord * (target.states + length));
    require(clock.pendingWaits() == 0);
    return 0;
}
