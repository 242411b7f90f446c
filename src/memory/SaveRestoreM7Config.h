// Saves the amplifier's configuration memory to a file, and puts it back.
#pragma once

#include <array>
#include <cstdint>

#include "ConfigurationReader.h"
#include "Globals.h"
#include "MemoryAccess.h"
#include "MemoryFileWriter.h"
#include "MemoryProtocol.h"
#include "Platform.h"
#include "ProgressView.h"
#include "Task.h"

// One user at a time, who owns the line. The state stays from one run to the next, and some of it shows: an
// error text.
class SaveRestoreM7Config {
public:
    SaveRestoreM7Config(Platform& platform, Globals& globals, MemoryAccess& memory, MemoryFileWriter& file,
                        ProgressView& progress)
        : m_platform(platform),
          m_globals(globals),
          m_memory(memory),
          m_file(file),
          m_progress(progress),
          m_input(platform.clock, globals) {}

    // True when the file is complete on the disk. Failed or cancelled, it leaves the disk as it was.
    Task<bool> Save();
    // True when the image was sent on a port that was open to the end. Nothing is written to the amplifier
    // before the first pass through the file was good; cancelled in the second, it leaves the amplifier with
    // part of the image (it holds Globals::mustEnd meanwhile).
    Task<bool> Restore();

    // One pass through the open file. `apply` false verifies; true fills the image, and writes it to the
    // amplifier whatever the file turned out to be, unless reading it failed.
    Task<bool> RestoreData(bool apply);
    ConfigurationReader& input() { return m_input; }

private:
    Task<bool> runSaveStages();
    QString creationLine() const;
    bool SaveCreationTime();
    Task<bool> SaveEEPROMData();
    Task<bool> SaveCrc();

    Task<bool> verifyAndApply(QString path);
    Task<bool> DoSerialNumberLine();
    Task<bool> DoCrcLine();
    bool DoMemLine(bool apply);
    Task<> tellWhyCrcLineFailed();
    Task<bool> writeImage();
    void logIfAny(const QString& failure);

    Platform& m_platform;
    Globals& m_globals;
    MemoryAccess& m_memory;
    MemoryFileWriter& m_file;
    ProgressView& m_progress;

    ConfigurationReader m_input;
    std::array<std::uint8_t, MemoryMap::ConfigurationSize> m_bytearray{};  // the memory image
    int m_wLines = 0;                                                      // lines read in the last pass
    int m_memLines = 0;                                                    // of those, MEM2 lines with data
    // Cleared when a restore begins, but not for its second pass: only by a CRC line and, for the latter, by
    // each MEM2 line.
    bool m_fCrcLineFound = false;
    bool m_fCrcVerified = false;
    bool m_fErrorStop = false;  // a serial number mismatch stops the restore
};
