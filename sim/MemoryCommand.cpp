#include "MemoryCommand.h"

#include <algorithm>
#include <cctype>
#include <numeric>

#include "Eeprom.h"

namespace {

constexpr int HeaderSize = 3;

int sumOf(const QByteArray& bytes) {
    return std::accumulate(bytes.begin(), bytes.end(), 0,
                           [](int sum, char byte) { return (sum + static_cast<unsigned char>(byte)) % 256; });
}

bool isHexadecimal(const QByteArray& text) {
    return text.size() % 2 == 0 && std::all_of(text.begin(), text.end(), [](char c) {
               return std::isxdigit(static_cast<unsigned char>(c)) != 0;
           });
}

}  // namespace

std::optional<MemoryCommand> MemoryCommand::parse(const QByteArray& operands) {
    if (!isHexadecimal(operands))
        return std::nullopt;
    const QByteArray bytes = QByteArray::fromHex(operands);
    if (bytes.size() <= HeaderSize || sumOf(bytes) != 0)
        return std::nullopt;
    const auto at = [&bytes](qsizetype i) { return static_cast<int>(static_cast<unsigned char>(bytes[i])); };
    MemoryCommand command{at(0), at(1), at(2), bytes.mid(HeaderSize, bytes.size() - HeaderSize - 1)};
    const bool hasItsData = command.data.isEmpty() || command.data.size() == command.count;
    if (command.page >= Eeprom::PageCount || !hasItsData)
        return std::nullopt;
    return command;
}

QByteArray MemoryCommand::format() const {
    QByteArray bytes;
    for (const int value : {page, address, count})
        bytes += static_cast<char>(value);
    bytes += data;
    bytes += static_cast<char>(256 - sumOf(bytes));
    return bytes.toHex().toUpper();
}
