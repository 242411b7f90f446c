// The open firmware file, read character by character without its line ends.
#pragma once

#include <optional>

#include <QByteArray>
#include <QFile>
#include <QString>

// Reading is split in two so that a file of any shape (a gigabyte of line ends among them) is read in
// bounded steps: readAhead, called until it has enough, does the input; read only takes what is there.
class FirmwareStream {
public:
    // What one step of readAhead takes from the file.
    static constexpr qint64 ChunkLength = 1 << 16;

    // Replaces the former file. False when `path` is no regular file or may not be read.
    bool open(const QString& path);
    void close() { m_file.close(); }
    // Bytes, as the file was when it was opened.
    qint64 length() const { return m_length; }

    // One step towards `count` characters at hand; true while another step is needed. At the end of the
    // file, or after a read error, whatever is at hand is enough.
    bool readAhead(qsizetype count);
    // The next character that is no line end; nothing at the end of what was read ahead.
    std::optional<char> read() {
        if (m_position == m_characters.size())
            return std::nullopt;
        return m_characters[m_position++];
    }
    // Nothing is left in the file, not even a line end. Tells the truth while characters that were read
    // ahead are left, and after readAhead has asked for more than were taken since.
    bool isAtEnd() const { return m_isExhausted && !m_endsInLineEnd && m_position == m_characters.size(); }

private:
    void append(const QByteArray& chunk);

    QFile m_file;
    qint64 m_length = 0;
    QByteArray m_characters;
    qsizetype m_position = 0;
    bool m_isExhausted = false;
    bool m_endsInLineEnd = false;
};
