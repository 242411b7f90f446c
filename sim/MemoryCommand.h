// The operands of the commands that read and write the configuration memory.
#pragma once

#include <optional>

#include <QByteArray>

// In hexadecimal: page, address, count, then the data of a write, then a checksum that makes all bytes sum to
// 0 modulo 256.
struct MemoryCommand {
    int page = 0;
    int address = 0;
    int count = 0;
    QByteArray data;

    // None if the digits, the checksum or the page are wrong, or the data are not `count` bytes or none.
    static std::optional<MemoryCommand> parse(const QByteArray& operands);
    // The operands in their form on the line, upper case.
    QByteArray format() const;
};
