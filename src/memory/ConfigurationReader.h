// Reads a configuration file line by line.
#pragma once

#include <memory>

#include <QIODevice>
#include <QString>

#include "Clock.h"
#include "Globals.h"
#include "Task.h"

class ConfigurationReader {
public:
    // Characters of a line that are kept. Those beyond are hashed and otherwise passed over: no line that
    // means anything is nearly as long.
    static constexpr qsizetype LineLimit = 4096;

    ConfigurationReader(Clock& clock, Globals& globals) : m_clock(clock), m_globals(globals) {}

    // Opens a regular file; false when it cannot be opened.
    bool open(const QString& path);
    // Why the file could not be opened, or not be read to its end, in words for the log; empty when nothing
    // failed.
    QString failure() const { return m_failure; }
    // Reads from any open device instead.
    void setFileInstream(std::unique_ptr<QIODevice> device);
    void close() { setFileInstream(nullptr); }

    // The next line into strLine, its characters as Latin 1, and into the running CRC unless it is the CRC
    // line. CR ends a line and LF is dropped wherever it stands, so a file with LF alone has no line at all.
    // False at the end, where a last line without a CR is hashed and not handed on, and where reading failed.
    Task<bool> GetLine();
    const QString& line() const { return strLine; }

    // By the start of the line, in either case.
    bool IsCrc32() const;
    bool IsMem() const;
    // "M7 Serial Number": not the words that this program writes, whose own line is a comment to it.
    bool IsSerialNumber() const;

private:
    void fail(const QString& reason);
    bool readChunk();
    // Takes characters up to the next CR or to the end of the chunk; true when a CR has come.
    bool takeCharacters();

    Clock& m_clock;
    Globals& m_globals;
    std::unique_ptr<QIODevice> FileInstream;
    QString m_path;
    QString m_failure;
    QByteArray m_chunk;
    qsizetype m_at = 0;
    QString strLine;
};
