#include "ImageBlock.h"

#include <algorithm>
#include <numeric>

std::uint8_t ComputeBlockChecksum(const std::uint8_t* block, std::uint8_t count) {
    return static_cast<std::uint8_t>(0x100 - (std::accumulate(block, block + count, 0U) & 0xFF));
}

bool ImageBlock::append(const std::uint8_t* record) {
    std::copy_n(record, RecordLength, m_bytes.data() + m_fillOffset);
    m_fillOffset = (m_fillOffset + RecordLength) % DataLength;
    return m_fillOffset == 0;
}

void ImageBlock::setAddressOfLastRecord(std::uint32_t address) {
    constexpr std::uint32_t fromFirstToLast = DataLength - RecordLength;
    m_bytes[64] = static_cast<std::uint8_t>(address - fromFirstToLast);
    m_bytes[65] = static_cast<std::uint8_t>(address >> 8);
    m_bytes[66] = static_cast<std::uint8_t>(address >> 16);
}

void ImageBlock::setWord(std::size_t offset, std::uint16_t value) {
    m_bytes[offset] = static_cast<std::uint8_t>(value >> 8);
    m_bytes[offset + 1] = static_cast<std::uint8_t>(value);
}

std::uint16_t ImageBlock::sumOfWords(std::size_t offset) const {
    std::uint16_t sum = 0;
    for (; offset < DataLength; offset += 2)
        sum = static_cast<std::uint16_t>(sum + word(offset));
    return sum;
}
