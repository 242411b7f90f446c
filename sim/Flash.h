// The amplifier's program memory, as far as firmware can be loaded into it.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include <QByteArray>

class Flash {
public:
    // The window of the firmware; the bootstrap loader lies outside and is out of reach.
    static constexpr std::uint32_t Begin = 0x800;
    static constexpr std::uint32_t End = 0x1FD80;

    // As delivered: firmware is installed, though none of its bytes is kept here.
    Flash();

    static bool isInWindow(std::uint32_t address, qsizetype count);

    // All bytes unwritten, no firmware installed.
    void erase();
    // False, with nothing written, unless all of the bytes lie in the window.
    bool write(std::uint32_t address, const QByteArray& bytes);
    // Marks the firmware as completely loaded. Writing to the window does not take the mark away.
    void commit() { m_isCommitted = true; }

    // Whether there is firmware that can be started: committed, and its 16-bit words, high byte first,
    // sum to 0 modulo 65536. Unwritten words count as 0.
    bool isImageValid() const;

    // Bytes of the window, to which the address must belong; 0xFF where nothing was written.
    QByteArray read(std::uint32_t address, int count) const;
    bool isWritten(std::uint32_t address) const { return m_isWritten[address - Begin]; }
    // The version that the firmware carries: the four digits after the text "VLX720FP" anywhere in it, as
    // "01.23". None when it has no such stamp.
    std::optional<QByteArray> stampedVersion() const;

private:
    QByteArray m_bytes;
    std::vector<bool> m_isWritten;
    std::uint32_t m_wordSum = 0;
    bool m_isCommitted = true;
};
