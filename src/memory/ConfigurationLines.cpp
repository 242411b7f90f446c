#include "ConfigurationLines.h"

#include <algorithm>

#include "MemoryProtocol.h"
#include "Text.h"

namespace {

constexpr qsizetype PagePosition = 6;
constexpr qsizetype AddressPosition = 9;
constexpr qsizetype CountPosition = 12;
constexpr qsizetype DataPosition = 15;
// One more than a line of this program holds.
constexpr int LargestData = 33;

bool parseField(const QString& line, qsizetype position, std::uint8_t& value) {
    const QString field = Text::Mid(line, position, 3);
    return ParseByte(field, value) && field.endsWith(u' ');
}

}  // namespace

bool ParseByte(QStringView text, std::uint8_t& value) {
    value = 255;
    if (!isDigit(text.mid(0, 1)) || !isDigit(text.mid(1, 1)) || isDigit(text.mid(2, 1)))
        return false;
    value = hexByteAt(text, 1);
    return true;
}

bool ParseMemLine(const QString& line, std::uint8_t& page, std::uint8_t& address, QByteArray& data) {
    std::uint8_t count = 0;
    if (!parseField(line, PagePosition, page) || !parseField(line, AddressPosition, address) ||
        !parseField(line, CountPosition, count))
        return false;
    data.fill('\0', LargestData);
    for (int index = 0; index < std::min<int>(count, LargestData); ++index)
        data[index] = static_cast<char>(hexByteAt(line, DataPosition + 2 * index));
    return true;
}

bool IsValidAddress(std::uint8_t page, std::uint8_t address) {
    return page == 0 && address < MemoryMap::ConfigurationSize;
}

bool HexPairToBin(QStringView text, std::uint8_t& value) {
    std::uint8_t high = 0;
    std::uint8_t low = 0;
    if (!NibbleToBin(text.left(1), high) || !NibbleToBin(text.right(1), low))
        return false;
    value = static_cast<std::uint8_t>(high * 16 + low);
    return true;
}

bool NibbleToBin(QStringView character, std::uint8_t& value) {
    if (character.size() != 1)
        return false;
    const char16_t c = character[0].unicode();
    if (c >= u'0' && c <= u'9')
        value = static_cast<std::uint8_t>(c - u'0');
    else if (c >= u'a' && c <= u'f')
        value = static_cast<std::uint8_t>(c - u'a' + 10);
    else if (c >= u'A' && c <= u'F')
        value = static_cast<std::uint8_t>(c - u'A' + 10);
    else
        return false;
    return true;
}

bool isDigit(QStringView character) {
    return character.size() == 1 && character[0] >= u'0' && character[0] <= u'9';
}
