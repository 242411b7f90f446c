#include "RtfColor.h"

#include <algorithm>

#include "RtfModule.h"

namespace {

constexpr int Brightest = 255;

void setPart(RtfRgb& color, std::string_view word, std::int32_t parameter) {
    const auto value = static_cast<std::uint8_t>(std::clamp(parameter, 0, Brightest));
    if (RtfIsWord(word, "red"))
        color.red = value;
    else if (RtfIsWord(word, "green"))
        color.green = value;
    else if (RtfIsWord(word, "blue"))
        color.blue = value;
}

}  // namespace

Task<bool> RtfColor::parse(RtfStream& stream) {
    c.clear();
    RtfRgb current;
    std::string word;
    std::int32_t parameter = 1;
    while (!stream.isAtEnd()) {
        const char byte = stream.read();
        if (byte == '{') {
            co_await RtfIgnoreGroup(stream);
        } else if (byte == ';') {
            addcolor(current);
        } else if (byte == '\\') {
            RtfParseCommand(stream, word, parameter);
            setPart(current, word, parameter);
        } else if (byte == '}') {
            addcolor(current);
            break;
        }
        co_await stream.breathe();
    }
    co_return true;
}

RtfRgb RtfColor::getcolor(std::int32_t index) const {
    return index >= 1 && index <= count() ? c[static_cast<std::size_t>(index)] : RtfRgb{};
}

std::int32_t RtfColor::getid(RtfRgb color) const {
    for (std::int32_t index = 1; index <= count(); ++index)
        if (getcolor(index) == color)
            return index;
    return count() + 1;
}

void RtfColor::addcolor(RtfRgb color) {
    if (c.size() < MostColors)
        c.push_back(color);
}

QByteArray RtfColor::getstring() const {
    QByteArray result = "{\\colortbl;";
    for (std::int32_t index = 1; index <= count(); ++index) {
        const RtfRgb color = getcolor(index);
        result += "\\red" + QByteArray::number(color.red) + "\\green" + QByteArray::number(color.green) +
                  "\\blue" + QByteArray::number(color.blue) + ';';
    }
    return result + '}';
}
