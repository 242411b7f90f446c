// Reads the records of an Intel HEX firmware image: for the verification of the whole file and for the
// load that fills the blocks from it.
#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include <QString>
#include <QStringList>

#include "Dialogs.h"
#include "FirmwareStream.h"
#include "Globals.h"
#include "Platform.h"
#include "Task.h"

// What the reader has found so far, under the names that it goes by.
struct IntelHexState {
    bool m_fIsReadOK = false;
    bool m_fIsEndOfFile = false;
    std::uint16_t m_wCheckSum = 0;  // sum of the byte values since the record began
    std::uint8_t m_bcb = 0;         // byte count of the last record
    // Data of the last record and its checksum behind it; a shorter record leaves older bytes.
    std::array<std::uint8_t, 256> m_abData{};
    // Not cleared between two passes: an image begins with an address record.
    std::uint32_t m_dwOffset = 0;
    bool m_isOffsetGiven = false;           // by a record of this pass
    std::uint32_t m_dwAddress = 0;          // of the last data record, m_dwOffset included
    std::uint32_t m_dwErrorCode = 0;        // MissingStart, or 0: kept for its name
    std::uint32_t m_dwcbRead = 0;           // characters accepted since the program began: kept for its name
    std::uint32_t m_dwcbSumOfAllFiles = 0;  // bytes of the file that Verify saw last
};

// A pull reader with one user at a time. A record is ":", a byte count, an address word, a type, the data
// and a checksum, all as pairs of hexadecimal digits; line ends may stand anywhere, other white space
// nowhere. After a fault nothing is read until a new pass begins.
//
// The waits are in ReadNext and Verify alone: ReadNext reads ahead what the longest record needs, and the
// calls for one character, byte or word are plain functions on that.
class IntelHexReader {
public:
    // The characters of a record of 255 data bytes, ":" among them.
    static constexpr std::ptrdiff_t LongestRecord = 1 + 2 * (1 + 2 + 1 + 255 + 1);

    IntelHexReader(Platform& platform, Globals& globals)
        : m_clock(platform.clock), m_dialogs(platform.dialogs), m_globals(globals) {}
    IntelHexReader(const IntelHexReader&) = delete;
    IntelHexReader& operator=(const IntelHexReader&) = delete;

    // True when every record of the file is whole, up to the end record or to the end of the file. A file
    // that cannot be opened gives false with the reason in the log alone. Leaves the file open.
    Task<bool> Verify(QString path);
    // Opens the file and makes it ready for a pass; false when it cannot be opened.
    bool OpenPass(const QString& path);

    // Reads up to the next data record, the end record or a fault. True: m_fIsEndOfFile tells whether the
    // end record came, and otherwise m_bcb, m_abData and m_dwAddress hold a data record.
    Task<bool> ReadNext();

    // The next character that is no line end; nothing at the end of the stream, which is a fault.
    std::optional<char> ReadChar() {
        const std::optional<char> character = bs.read();
        if (character)
            ++m_state.m_dwcbRead;
        else
            failAtEnd();
        return character;
    }
    std::uint8_t ReadByte();
    std::uint16_t ReadWord();
    // 0 for a character that is no hexadecimal digit, which is a fault.
    std::uint8_t NibbleToBin(char character);

    const IntelHexState& state() const { return m_state; }
    // Nothing is left in the file.
    bool isAtEnd() const { return bs.isAtEnd(); }
    // Lets the file go.
    void close() { bs.close(); }

private:
    static constexpr std::uint32_t MissingStart = 0xE200000B;

    void readRecord();
    void setOffset(std::uint32_t offset);
    void actOn(std::uint8_t type, std::uint16_t address);
    void fail(const QString& message);
    void failAtEnd();
    Task<> report();

    Clock& m_clock;
    Dialogs& m_dialogs;
    Globals& m_globals;

    FirmwareStream bs;
    IntelHexState m_state;
    bool m_isDataRecord = false;
    // What the last record is to be blamed for: told once it has been read.
    bool m_hasBadDigit = false;
    QStringList m_messages;
};
