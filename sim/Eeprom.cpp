#include "Eeprom.h"

#include <algorithm>

namespace {

constexpr int BannerOffset = 0x50;
constexpr int BannerSize = 8;
constexpr int SerialNumberOffset = 0xE0;
constexpr int FaultCountOffset = 254;
constexpr int FaultTableOffset = 256;
constexpr int FaultSize = 6;
constexpr int FaultCapacity = (Eeprom::Size - FaultTableOffset) / FaultSize;

struct DeliveredFault {
    std::uint32_t timestamp;
    int code;
    int data;
};

constexpr std::array<DeliveredFault, 5> DeliveredFaults{{
    {0, 0, 0x0000},
    {2150, 9, 0x0132},
    {65614, 4, 0x0061},
    {81230, 1, 0x0000},
    {81244, 6, 0x0044},
}};

std::size_t indexOf(int offset) {
    return static_cast<std::size_t>(offset);
}

std::uint8_t byteOf(std::uint32_t value, int number) {
    return static_cast<std::uint8_t>(value >> (8 * number));
}

}  // namespace

Eeprom::Eeprom() {
    m_bytes.fill(0xFF);
    for (int address = 0; address < SerialNumberOffset; ++address)
        m_bytes[indexOf(address)] = static_cast<std::uint8_t>(address * 7 + 3);
    setBanner(QByteArrayLiteral("VLX720"));
    setSerialNumber(1234);
    clearFaults();
    for (const DeliveredFault& fault : DeliveredFaults)
        addFault(fault.timestamp, fault.code, fault.data);
}

QByteArray Eeprom::read(int page, int address, int count) const {
    QByteArray data;
    for (int i = 0; i < count; ++i)
        data += static_cast<char>(m_bytes[indexOf(page * PageSize + (address + i) % PageSize)]);
    return data;
}

void Eeprom::write(int page, int address, const QByteArray& data) {
    for (const char byte : data)
        m_bytes[indexOf(page * PageSize + address++ % PageSize)] = static_cast<std::uint8_t>(byte);
}

QByteArray Eeprom::contents() const {
    return {reinterpret_cast<const char*>(m_bytes.data()), Size};
}

void Eeprom::setContents(const QByteArray& contents) {
    std::copy_n(contents.begin(), Size, m_bytes.begin());
}

int Eeprom::serialNumber() const {
    return m_bytes[SerialNumberOffset] + 256 * m_bytes[SerialNumberOffset + 1];
}

void Eeprom::setSerialNumber(int number) {
    for (int i = 0; i < 2; ++i)
        m_bytes[indexOf(SerialNumberOffset + i)] = byteOf(static_cast<std::uint32_t>(number), i);
}

void Eeprom::setBanner(const QByteArray& text) {
    write(0, BannerOffset, text.left(BannerSize).leftJustified(BannerSize, '\0'));
}

void Eeprom::addFault(std::uint32_t timestamp, int code, int data) {
    int count = m_bytes[FaultCountOffset];
    const auto table = m_bytes.begin() + FaultTableOffset;
    if (count >= FaultCapacity) {
        count = FaultCapacity - 1;
        std::copy(table + FaultSize, table + FaultCapacity * FaultSize, table);
    }
    const auto word = static_cast<std::uint32_t>(data);
    const std::array<std::uint8_t, FaultSize> entry{byteOf(timestamp, 0), byteOf(timestamp, 1),
                                                    byteOf(timestamp, 2), static_cast<std::uint8_t>(code),
                                                    byteOf(word, 0),      byteOf(word, 1)};
    std::copy(entry.begin(), entry.end(), table + count * FaultSize);
    m_bytes[FaultCountOffset] = static_cast<std::uint8_t>(count + 1);
}

void Eeprom::clearFaults() {
    m_bytes[FaultCountOffset] = 0;
    std::fill(m_bytes.begin() + FaultTableOffset, m_bytes.end(), std::uint8_t{0xFF});
}
