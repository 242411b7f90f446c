// The hidden commands that read and write the amplifier's memory, and the check of an answer. Memory is
// addressed by a page byte and an address byte.
#pragma once

#include <array>
#include <cstdint>

#include <QByteArray>
#include <QString>
#include <QStringView>

namespace MemoryMap {

// What one exchange carries at most in this program.
constexpr std::uint8_t ChunkSize = 32;

// The configuration: page 0, from address 0.
constexpr int ConfigurationSize = 224;
constexpr std::array<std::uint8_t, ConfigurationSize / ChunkSize> ConfigurationChunks{0x00, 0x20, 0x40, 0x60,
                                                                                      0x80, 0xA0, 0xC0};
// The power-on banner, inside the configuration.
constexpr std::uint8_t BannerAddress = 0x50;
constexpr std::uint8_t BannerSize = 8;
// The serial number, page 0, low byte first.
constexpr std::uint8_t SerialNumberAddress = 0xE0;
constexpr std::uint8_t SerialNumberSize = 2;

}  // namespace MemoryMap

// "^ER", page, address, count, checksum, ";": always 12 characters.
QString FormatERCommand(std::uint8_t page, std::uint8_t address, std::uint8_t count);
// The same for "^EW", with the data before the checksum. Precondition: data holds at least `count` bytes.
QString FormatEWCommand(std::uint8_t page, std::uint8_t address, std::uint8_t count, const QByteArray& data);
// The first `count` bytes, two upper-case digits each.
QString ByteArrayToHex(const QByteArray& data, std::uint8_t count);

// The byte in the two digits at `position`, from 1. Lenient: no digits give 0.
std::uint8_t hexByteAt(QStringView text, qsizetype position);
// The data digits of an answer, as they stand in it.
QString answerDigits(const QString& response, std::uint8_t count);

// Whether `response` is the whole and sound answer to the read `command`, by the first eight characters of
// both: the last digit of the count goes unseen, but the length does not.
bool ParseResponse(std::uint8_t page, std::uint8_t count, std::uint8_t address, const QString& command,
                   const QString& response);
// The other form of the check, for page 0 only: the opening character does not count, and the whole of the
// count field does.
bool isConfigurationAnswer(std::uint8_t count, std::uint8_t address, const QString& command,
                           const QString& response);
