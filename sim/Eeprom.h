// The amplifier's configuration memory: four pages of 256 bytes.
#pragma once

#include <array>
#include <cstdint>

#include <QByteArray>

class Eeprom {
public:
    static constexpr int PageCount = 4;
    static constexpr int PageSize = 256;
    static constexpr int Size = PageCount * PageSize;

    // As delivered: a configuration of distinct bytes, serial number 1234, banner "VLX720", and a fault
    // table of a few entries.
    Eeprom();

    // Reads and writes wrap around inside the page, as the address is one byte.
    // Precondition: 0 <= page < PageCount.
    QByteArray read(int page, int address, int count) const;
    void write(int page, int address, const QByteArray& data);

    // All 1024 bytes, page after page.
    QByteArray contents() const;
    // Precondition: exactly Size bytes.
    void setContents(const QByteArray& contents);

    int serialNumber() const;
    void setSerialNumber(int number);
    // At most eight characters.
    void setBanner(const QByteArray& text);

    // Adds an entry to the fault table, the oldest one leaving when it is full. The time stamp has 24 bits.
    void addFault(std::uint32_t timestamp, int code, int data);
    void clearFaults();

private:
    std::array<std::uint8_t, Size> m_bytes{};
};
