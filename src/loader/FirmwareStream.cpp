#include "FirmwareStream.h"

#include <algorithm>

#include <QFileInfo>

namespace {

bool isLineEnd(char character) {
    return character == '\n' || character == '\r';
}

}  // namespace

bool FirmwareStream::open(const QString& path) {
    m_file.close();
    m_characters.clear();
    m_position = 0;
    m_isExhausted = false;
    m_endsInLineEnd = false;
    m_length = 0;
    // A folder opens on some systems, and opening a pipe may wait for ever.
    if (!QFileInfo(path).isFile())
        return false;
    m_file.setFileName(path);
    if (!m_file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return false;
    m_length = m_file.size();
    return true;
}

bool FirmwareStream::readAhead(qsizetype count) {
    if (m_isExhausted || m_characters.size() - m_position >= count)
        return false;
    const QByteArray chunk = m_file.read(ChunkLength);
    m_isExhausted = chunk.isEmpty();
    if (!m_isExhausted)
        append(chunk);
    return !m_isExhausted && m_characters.size() - m_position < count;
}

void FirmwareStream::append(const QByteArray& chunk) {
    m_endsInLineEnd = isLineEnd(chunk.back());
    m_characters.remove(0, m_position);
    m_position = 0;
    const qsizetype kept = m_characters.size();
    m_characters.resize(kept + chunk.size());
    const auto end = std::remove_copy_if(chunk.begin(), chunk.end(), m_characters.begin() + kept, isLineEnd);
    m_characters.resize(end - m_characters.begin());
}
