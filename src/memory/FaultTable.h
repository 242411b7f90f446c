// The amplifier's log of its faults: read, decoded, saved to a file.
#pragma once

#include <cstdint>

#include <QString>

#include "Globals.h"
#include "MemoryAccess.h"
#include "MemoryFileWriter.h"
#include "Platform.h"
#include "Task.h"

// One line of the list, as shown.
struct FaultTableRow {
    int code = 0;  // as a number, for its page in the manual
    QString timestamp;
    QString faultCode;
    QString data;
    QString description;
};

class FaultTableView {
public:
    FaultTableView() = default;
    FaultTableView(const FaultTableView&) = delete;
    FaultTableView& operator=(const FaultTableView&) = delete;
    virtual ~FaultTableView() = default;

    virtual void showWaitCursor(bool isShown) = 0;
    virtual void addRow(const FaultTableRow& row) = 0;
    virtual void enableSaveToFileButton() = 0;
};

// Lives as long as its window. The caller owns the line.
class FaultTable {
public:
    FaultTable(Platform& platform, Globals& globals, MemoryAccess& memory, MemoryFileWriter& file)
        : m_platform(platform), m_globals(globals), m_memory(memory), m_file(file) {}

    // Reads the whole area, 32 exchanges, and fills the view, newest entry first. No answer is checked: an
    // amplifier that is silent gives an empty table after half a minute. Throws OutOfBoundsError at a fault
    // code that has no name; the rows before it stand, and the table can be saved. Cancelling it is harmless.
    Task<> Begin(FaultTableView& view);
    // Asks for a file and writes it. A box tells of a file that cannot be written; what was written stays on
    // disk.
    Task<> SaveToFile();

private:
    Task<> readArea();
    Task<> writeFile(QString path);
    Task<QString> CreateTimeStampedFilename();
    bool SaveCreationTime();
    bool SaveEEPROMdata();
    bool writeImageLine(int offset);

    int countByte() const { return byteAt(CountOffset); }
    std::uint8_t byteAt(int offset) const;
    QString digitsAt(int offset, int count = 1) const;
    static int entryOffset(int index) { return FirstEntryOffset + EntrySize * index; }
    FaultTableRow decodeNumbers(int index) const;
    FaultTableRow decode(int index) const;

    static constexpr int AreaSize = 1024;  // pages 0 to 3
    static constexpr int CountOffset = 254;
    static constexpr int FirstEntryOffset = 256;
    static constexpr int EntrySize = 6;
    static constexpr int CodeOffset = 3;  // in an entry

    Platform& m_platform;
    Globals& m_globals;
    MemoryAccess& m_memory;
    MemoryFileWriter& m_file;
    // The area as hexadecimal digits, two a byte; shorter when the amplifier did not tell all of it.
    QString m_buffer;
};

// Hexadecimal of one to three digits padded to four; empty for a value that needs four or more.
QString Hex4(std::int32_t value);
