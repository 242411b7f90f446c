#include "Crc32.h"

#include <array>
#include <cstdint>

namespace {

constexpr std::uint32_t Polynomial = 0xEDB88320;  // reflected

constexpr std::array<std::uint32_t, 256> Table = [] {
    std::array<std::uint32_t, 256> table{};
    for (std::uint32_t index = 0; index < table.size(); ++index) {
        std::uint32_t value = index;
        for (int bit = 0; bit < 8; ++bit)
            value = (value >> 1) ^ ((value & 1) ? Polynomial : 0);
        table[index] = value;
    }
    return table;
}();

}  // namespace

void CalcCrc32(Globals& globals, const QByteArray& text) {
    std::uint32_t value = ~globals.m_dwCrc32;
    for (const char character : text)
        value = (value >> 8) ^ Table[(value ^ static_cast<std::uint8_t>(character)) & 0xFF];
    globals.m_dwCrc32 = ~value;
}
