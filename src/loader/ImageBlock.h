// The 68-byte block in which an image goes to the bootstrap loader.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include <QByteArray>

// Sum of the first `count` bytes, as the byte that makes up for it: with it behind them the sum is 0
// modulo 256.
std::uint8_t ComputeBlockChecksum(const std::uint8_t* block, std::uint8_t count);

// 64 data bytes, the address of the first in three bytes from the low one on, and a checksum.
class ImageBlock {
public:
    static constexpr std::size_t DataLength = 64;
    static constexpr std::size_t Length = 68;
    static constexpr std::size_t RecordLength = 16;
    // The address byte by which the loader knows the block that commits the image.
    static constexpr std::uint8_t FinalMark = 2;

    // Adds the data of one record; true when the block is now full and the next record begins it anew.
    bool append(const std::uint8_t* record);
    // Only the low byte is taken back to the block's first record: the other two are those of the last.
    void setAddressOfLastRecord(std::uint32_t address);
    void markFinal() { m_bytes[66] = FinalMark; }
    // After the last change, before the block is sent.
    void seal() { m_bytes[67] = ComputeBlockChecksum(m_bytes.data(), 67); }

    // The 16-bit word at an even offset, high byte first.
    std::uint16_t word(std::size_t offset) const {
        return static_cast<std::uint16_t>(m_bytes[offset] << 8 | m_bytes[offset + 1]);
    }
    void setWord(std::size_t offset, std::uint16_t value);
    void setByte(std::size_t offset, std::uint8_t value) { m_bytes[offset] = value; }
    // Sum of the data words from `offset` on.
    std::uint16_t sumOfWords(std::size_t offset) const;

    QByteArray bytes() const {
        return {reinterpret_cast<const char*>(m_bytes.data()), static_cast<qsizetype>(Length)};
    }

private:
    std::array<std::uint8_t, Length> m_bytes{};
    std::size_t m_fillOffset = 0;
};
