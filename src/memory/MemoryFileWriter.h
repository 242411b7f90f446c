// Writes the text files of the memory tools: configuration and fault table.
#pragma once

#include "FileTypes1.h"
#include "FileWriter.h"
#include "Globals.h"
#include "MemoryAccess.h"
#include "Task.h"

// One file at a time. Every line ends in CR LF, on every platform.
class MemoryFileWriter {
public:
    using Failed = FileWriter::Failed;

    MemoryFileWriter(Clock& clock, Globals& globals, MemoryAccess& memory)
        : m_clock(clock), m_globals(globals), m_memory(memory) {}

    // The name to offer: serial number if the amplifier gives it, date and time, extension.
    Task<QString> CreateTimeStampedFilename(QString extension);

    // Begins the file at the absolute path. False when it cannot be made.
    bool create(const QString& path, Failed failed);
    // Begins the same file anew with another first line, and all others as they were.
    bool writeAgain(const QString& firstLine);
    // Closes the file; with LeavesNoFile it appears only now. False when something of it could not be
    // written.
    bool finish() { return filestream.finish(); }
    // Closes the file unfinished.
    void abandon() { filestream.abandon(); }
    // Why the file could not be made or written, and forgets it; empty when nothing failed.
    QString takeFailure() { return filestream.takeFailure(); }

    // Adds the line to the running CRC and writes it.
    bool WriteLine(const QString& line);

    // The heading's date and time, "2011/03/02 at 04:05:06".
    QString creationTime() const;
    bool SaveVLXUtilVersionInfo();
    bool SaveFirmwareRevisionInfo();
    // True also when the amplifier does not give its number: the line is then left out.
    Task<bool> SaveVLXSerialNumber();

    // The reason to report if the save fails. Each stage sets it before it begins, and it stays when a
    // save is over.
    QString m_ErrorText;

private:
    Clock& m_clock;
    Globals& m_globals;
    MemoryAccess& m_memory;
    QString m_path;
    Failed m_failed = Failed::LeavesNoFile;
    QStringList m_lines;  // of the file so far
    FileWriter filestream;
};
