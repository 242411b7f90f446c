#include "Flash.h"

#include <algorithm>

namespace {

constexpr char Unwritten = '\xFF';
const QByteArray VersionStamp = QByteArrayLiteral("VLX720FP");

// What a byte adds to the sum of the words: high byte at the even address.
std::uint32_t weightOf(char byte, std::uint32_t address) {
    const auto value = static_cast<std::uint8_t>(byte);
    return address % 2 == 0 ? value * 256U : value;
}

}  // namespace

Flash::Flash() {
    erase();
    m_isCommitted = true;
}

void Flash::erase() {
    m_bytes.fill(Unwritten, End - Begin);
    m_isWritten.assign(End - Begin, false);
    m_wordSum = 0;
    m_isCommitted = false;
}

bool Flash::isInWindow(std::uint32_t address, qsizetype count) {
    return address >= Begin && address + static_cast<std::uint64_t>(count) <= End;
}

bool Flash::write(std::uint32_t address, const QByteArray& bytes) {
    if (!isInWindow(address, bytes.size()))
        return false;
    char* const place = m_bytes.data() + (address - Begin);
    for (qsizetype i = 0; i < bytes.size(); ++i) {
        const auto at = address + static_cast<std::uint32_t>(i);
        if (m_isWritten[at - Begin])
            m_wordSum -= weightOf(place[i], at);
        m_wordSum += weightOf(bytes[i], at);
        m_isWritten[at - Begin] = true;
        place[i] = bytes[i];
    }
    return true;
}

bool Flash::isImageValid() const {
    return m_isCommitted && m_wordSum % 0x10000 == 0;
}

QByteArray Flash::read(std::uint32_t address, int count) const {
    return m_bytes.mid(address - Begin, count);
}

std::optional<QByteArray> Flash::stampedVersion() const {
    constexpr qsizetype DigitCount = 4;
    const qsizetype at = m_bytes.indexOf(VersionStamp);
    const QByteArray digits = at < 0 ? QByteArray() : m_bytes.mid(at + VersionStamp.size(), DigitCount);
    const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
    if (digits.size() != DigitCount || !std::all_of(digits.begin(), digits.end(), isDigit))
        return std::nullopt;
    return digits.left(2) + '.' + digits.right(2);
}
