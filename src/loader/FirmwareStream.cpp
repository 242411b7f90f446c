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
    m_next = m_end = nullptr;
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

void FirmwareStream::readChunk() {
    const auto kept = static_cast<std::size_t>(m_end - m_next);
    std::copy(m_next, m_end, m_characters.data());
    m_characters.resize(std::max(m_characters.size(), kept + ChunkLength));
    char* const chunk = m_characters.data() + kept;
    const qint64 length = m_file.read(chunk, ChunkLength);
    m_isExhausted = length <= 0;
    if (!m_isExhausted)
        m_endsInLineEnd = isLineEnd(chunk[length - 1]);
    m_next = m_characters.data();
    m_end = m_isExhausted ? chunk : std::remove_if(chunk, chunk + length, isLineEnd);
}
