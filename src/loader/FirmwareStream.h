// The open firmware file, read character by character without its line ends.
#pragma once

#include <optional>
#include <vector>

#include <QFile>
#include <QString>

// Reading is split in two so that a file of any shape (a gigabyte of line ends among them) is read in
// bounded steps: readChunk, called while input is needed, reads the file; read only takes what is there.
class FirmwareStream {
public:
    // What readChunk takes from the file.
    static constexpr std::size_t ChunkLength = 1 << 16;

    FirmwareStream() = default;
    FirmwareStream(const FirmwareStream&) = delete;
    FirmwareStream& operator=(const FirmwareStream&) = delete;

    // Replaces the former file. False when `path` is no regular file or may not be read.
    bool open(const QString& path);
    // Why the file could not be opened, or be read to its end; empty when nothing failed.
    const QString& failure() const { return m_failure; }
    void close() { m_file.close(); }
    // Bytes, as the file was when it was opened.
    qint64 length() const { return m_length; }

    // Fewer than `count` characters are at hand, and the file may have more.
    bool needsInput(std::ptrdiff_t count) const { return !m_isExhausted && m_end - m_next < count; }
    // One step; a read error ends the file.
    void readChunk();
    // The next character that is no line end; nothing when none is at hand.
    std::optional<char> read() {
        if (m_next == m_end)
            return std::nullopt;
        return *m_next++;
    }
    // Nothing is left in the file, not even a line end. Known as soon as more input was needed than has
    // been taken since.
    bool isAtEnd() const { return m_isExhausted && !m_endsInLineEnd && m_next == m_end; }

private:
    void fail(const QString& reason);

    QFile m_file;
    QString m_failure;
    qint64 m_length = 0;
    std::vector<char> m_characters;
    const char* m_next = nullptr;
    const char* m_end = nullptr;
    bool m_isExhausted = false;
    bool m_endsInLineEnd = false;
};
