#include "FTPReceivedFile.h"

#include <algorithm>

bool FTPReceivedFile::Create(const QString& path) {
    Close();
    QFile::remove(path);
    m_file.setFileName(path);
    m_offset = 0;
    return m_file.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered);
}

bool FTPReceivedFile::TakeUp(const QString& path, qint64 offset) {
    Close();
    m_file.setFileName(path);
    m_offset = offset;
    m_repeats = offset > 0;
    return m_file.open(QIODevice::ReadWrite | QIODevice::ExistingOnly | QIODevice::Unbuffered) &&
           m_file.size() == offset && m_file.seek(offset);
}

bool FTPReceivedFile::Write(const QByteArray& block) {
    m_repeats = m_repeats && repeats(block);
    m_received += block.size();
    return m_file.write(block) == block.size();
}

bool FTPReceivedFile::BeginsAgain(std::optional<qint64> told) const {
    return m_repeats && m_received >= m_offset && told != Length();
}

void FTPReceivedFile::Close() {
    m_file.close();
    m_received = 0;
    m_repeats = false;
}

void FTPReceivedFile::CloseUnchangedIfItBeginsAgain() {
    if (m_repeats && m_file.isOpen())
        m_file.resize(m_offset);
    Close();
}

bool FTPReceivedFile::repeats(const QByteArray& block) {
    const qsizetype count = std::min<qint64>(block.size(), m_offset - m_received);
    if (count <= 0)
        return true;
    m_file.seek(m_received);
    const bool isSame = m_file.read(count) == block.first(count);
    m_file.seek(Length());
    return isSame;
}
