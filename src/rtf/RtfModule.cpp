#include "RtfModule.h"

#include <algorithm>
#include <limits>

namespace {

constexpr int HexBase = 16;

char lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

int hexDigit(char c) {
    const char low = lower(c);
    if (isDigit(c))
        return c - '0';
    return low >= 'a' && low <= 'f' ? low - 'a' + 10 : HexBase;
}

// The two bytes behind "\'", as far as they are hexadecimal digits.
std::int32_t readHexByte(RtfStream& stream) {
    int left = 2;
    std::int32_t value = 0;
    for (const char c : stream.readWhile([&left](char) { return left-- > 0; })) {
        if (hexDigit(c) == HexBase)
            break;
        value = value * HexBase + hexDigit(c);
    }
    return value;
}

// A "-" counts as a sign in the first place only, and ends the number in any other.
std::int32_t numberIn(QByteArrayView digits) {
    const bool isNegative = digits.front() == '-';
    std::int64_t value = 0;
    for (const char c : isNegative ? digits.sliced(1) : digits) {
        if (!isDigit(c))
            break;
        value = std::min<std::int64_t>(value * 10 + (c - '0'), std::int64_t{1} << 31);
    }
    return static_cast<std::int32_t>(
        std::min<std::int64_t>(isNegative ? -value : value, std::numeric_limits<std::int32_t>::max()));
}

}  // namespace

bool RtfIsAlpha(char c) {
    return lower(c) >= 'a' && lower(c) <= 'z';
}

bool RtfIsNumeric(char c) {
    return isDigit(c) || c == '-';
}

bool RtfIsWord(std::string_view word, std::string_view name) {
    return std::ranges::equal(word, name, {}, lower, lower);
}

bool RtfIsLineEnd(char c) {
    return c == '\r' || c == '\n';
}

void RtfParseCommand(RtfStream& stream, std::string& word, std::int32_t& parameter) {
    word.clear();
    if (stream.isAtEnd()) {
        // Nothing to step back to but the "\", which would be read for ever.
        parameter = 1;
        return;
    }
    const char first = stream.read();
    if (first == '\'' || !RtfIsAlpha(first)) {
        word = first;
        if (first == '\'')
            parameter = readHexByte(stream);
        return;
    }
    stream.stepBack();
    const QByteArrayView letters = stream.readWhile(RtfIsAlpha);
    word.assign(letters.data(), std::min(static_cast<std::size_t>(letters.size()), LongestRtfWord));
    const QByteArrayView digits = stream.readWhile(RtfIsNumeric);
    parameter = digits.isEmpty() ? 1 : numberIn(digits);
    // The blank behind a word belongs to it.
    if (stream.isAtEnd() || stream.read() != ' ')
        stream.stepBack();
}

QByteArray RtfParseLabel(RtfStream& stream) {
    const QByteArrayView label =
        stream.readWhile([](char c) { return c != ';' && c != '\\' && c != '{' && c != '}'; });
    if (!stream.isAtEnd() && stream.read() != ';')
        stream.stepBack();
    return label.toByteArray();
}

Task<> RtfIgnoreGroup(RtfStream& stream) {
    std::string word;
    std::int32_t parameter = 1;
    for (std::int64_t depth = 1; depth > 0 && !stream.isAtEnd();) {
        const char c = stream.read();
        if (c == '{')
            ++depth;
        else if (c == '}')
            --depth;
        else if (c == '\\') {
            RtfParseCommand(stream, word, parameter);
            if (RtfIsWord(word, "bin"))
                stream.skip(parameter);
        }
        co_await stream.breathe();
    }
}
