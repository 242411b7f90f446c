#include "IntelHexReader.h"

#include <utility>

namespace {

constexpr std::uint8_t NoDigit = 0xFF;

constexpr std::array<std::uint8_t, 256> DigitValues = [] {
    std::array<std::uint8_t, 256> values{};
    values.fill(NoDigit);
    for (std::uint8_t digit = 0; digit < 10; ++digit)
        values[static_cast<std::size_t>('0') + digit] = digit;
    for (std::uint8_t digit = 0; digit < 6; ++digit) {
        values[static_cast<std::size_t>('a') + digit] = static_cast<std::uint8_t>(10 + digit);
        values[static_cast<std::size_t>('A') + digit] = static_cast<std::uint8_t>(10 + digit);
    }
    return values;
}();

}  // namespace

bool IntelHexReader::OpenPass(const QString& path) {
    if (!bs.open(path)) {
        m_globals.SetStatusText(bs.failure(), false);
        return false;
    }
    m_state.m_fIsReadOK = true;
    m_state.m_fIsEndOfFile = false;
    m_state.m_isOffsetGiven = false;
    // A pass that was cancelled in a message box has left them.
    m_hasBadDigit = false;
    m_messages.clear();
    return true;
}

Task<bool> IntelHexReader::Verify(QString path) {
    if (!OpenPass(path))
        co_return false;
    m_state.m_dwcbSumOfAllFiles = static_cast<std::uint32_t>(bs.length());
    for (;;) {
        const bool ok = co_await ReadNext();
        if (!ok)
            co_return false;
        if (bs.isAtEnd() || m_state.m_fIsEndOfFile)
            co_return true;
    }
}

Task<bool> IntelHexReader::ReadNext() {
    do {
        m_state.m_wCheckSum = 0;
        if (!m_state.m_fIsReadOK)
            co_return false;
        // One character more than a record, so that bs.isAtEnd() is known behind it.
        while (bs.needsInput(LongestRecord + 1)) {
            bs.readChunk();
            co_await m_clock.breathe();
        }
        readRecord();
        if (!m_state.m_fIsReadOK)
            co_await report();
    } while (m_state.m_fIsReadOK && !m_state.m_fIsEndOfFile && !m_isDataRecord);
    if (m_state.m_fIsReadOK)
        m_state.m_dwErrorCode = 0;
    co_return m_state.m_fIsReadOK;
}

void IntelHexReader::readRecord() {
    m_isDataRecord = false;
    if (ReadChar() != ':') {
        fail(QStringLiteral("Expected start character \":\" not found"));
        m_state.m_dwErrorCode = MissingStart;
        return;
    }
    m_state.m_bcb = ReadByte();
    const std::uint16_t address = ReadWord();
    const std::uint8_t type = ReadByte();
    // The checksum byte follows the data.
    for (std::size_t i = 0; i <= m_state.m_bcb; ++i)
        m_state.m_abData[i] = ReadByte();
    if (!m_messages.isEmpty())  // the stream ended: there is nothing to check
        return;
    if ((m_state.m_wCheckSum & 0xFF) != 0) {
        fail(QStringLiteral("Intel Hex checksum verification failed"));
        return;
    }
    actOn(type, address);
}

void IntelHexReader::actOn(std::uint8_t type, std::uint16_t address) {
    switch (type) {
        case 0:
            m_isDataRecord = true;
            m_state.m_dwAddress = m_state.m_dwOffset + address;
            break;
        case 1:
            m_state.m_fIsEndOfFile = true;
            break;
        case 2:
            // From the address field, and not from the data as elsewhere: a common record gives 0.
            setOffset(static_cast<std::uint32_t>(address) << 4);
            break;
        case 4:
            // One byte lower than elsewhere for the first byte: 0001 gives 0x10000, but 0100 gives 0x100.
            setOffset(static_cast<std::uint32_t>(m_state.m_abData[0]) << 8 |
                      static_cast<std::uint32_t>(m_state.m_abData[1]) << 16);
            break;
        case 3:
        case 5:
            break;
        default:
            fail(QStringLiteral("Intel Hex file contains an unrecognized record type"));
    }
}

void IntelHexReader::setOffset(std::uint32_t offset) {
    m_state.m_dwOffset = offset;
    m_state.m_isOffsetGiven = true;
}

void IntelHexReader::failAtEnd() {
    if (!m_messages.isEmpty())
        return;
    if (!bs.failure().isEmpty())
        fail(bs.failure());
    fail(QStringLiteral("End File record was not found"));
}

std::uint8_t IntelHexReader::ReadByte() {
    std::uint8_t value = 0;
    for (int nibble = 0; nibble < 2; ++nibble) {
        const std::optional<char> character = ReadChar();
        value = static_cast<std::uint8_t>(value << 4 | (character ? NibbleToBin(*character) : 0));
    }
    m_state.m_wCheckSum = static_cast<std::uint16_t>(m_state.m_wCheckSum + value);
    return value;
}

std::uint16_t IntelHexReader::ReadWord() {
    const std::uint8_t high = ReadByte();
    return static_cast<std::uint16_t>(high << 8 | ReadByte());
}

std::uint8_t IntelHexReader::NibbleToBin(char character) {
    const std::uint8_t value = DigitValues[static_cast<unsigned char>(character)];
    if (value != NoDigit)
        return value;
    m_hasBadDigit = true;
    m_state.m_fIsReadOK = false;
    return 0;
}

void IntelHexReader::fail(const QString& message) {
    m_messages += message;
    m_state.m_fIsReadOK = false;
}

// The bad digits stand before whatever else is wrong with the record: they were read first. One box tells of
// all of them.
Task<> IntelHexReader::report() {
    if (std::exchange(m_hasBadDigit, false))
        co_await m_dialogs.MsgBox(QStringLiteral("ERROR: Bad character in BIN file"));
    const QStringList messages = std::exchange(m_messages, {});
    for (const QString& message : messages)
        m_globals.SetStatusText(message, false);
}
