// The local file of a download.
#pragma once

#include <optional>

#include <QByteArray>
#include <QFile>
#include <QString>

// A download that takes up what a cut one left is watched: a server that passes over the offset sends the
// beginning again, and the file is then put back to what it was.
class FTPReceivedFile {
public:
    // Empty and new, whatever was there.
    bool Create(const QString& path);
    // To go on behind its first `offset` bytes, which are all that it has.
    bool TakeUp(const QString& path, qint64 offset);
    bool Write(const QByteArray& block);
    bool IsOpen() const { return m_file.isOpen(); }
    // Length so far.
    qint64 Length() const { return m_offset + m_received; }
    // Bytes that have come.
    qint64 Received() const { return m_received; }
    // Whether what has come may be told as a file of `told` bytes: the whole, or what was left of it.
    bool HasLength(qint64 told) const { return told == m_received || told == Length(); }
    // Whether what has come is the beginning of the file once more. A server that told the length of the
    // whole file is believed.
    bool BeginsAgain(std::optional<qint64> told) const;
    void Close();
    // Closes the file as it was when it was taken up, if what has come is its beginning once more.
    void CloseUnchangedIfItBeginsAgain();

private:
    bool repeats(const QByteArray& block);

    QFile m_file;
    qint64 m_offset = 0;
    qint64 m_received = 0;
    bool m_repeats = false;  // all that has come stands at the file's beginning too
};
