#include "FirmwareStream.h"

#include <algorithm>

#include <QDir>
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
    m_failure.clear();
    // A folder opens on some systems, and opening a pipe may wait for ever.
    const QFileInfo there(path);
    m_file.setFileName(path);
    if (there.exists() && !there.isFile())
        fail(QStringLiteral("Not a regular file"));
    else if (!m_file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        fail(m_file.errorString());
    else
        m_length = m_file.size();
    return m_failure.isEmpty();
}

void FirmwareStream::fail(const QString& reason) {
    m_failure = QStringLiteral("Cannot read %1: %2").arg(QDir::toNativeSeparators(m_file.fileName()), reason);
}

void FirmwareStream::readChunk() {
    const auto kept = static_cast<std::size_t>(m_end - m_next);
    std::copy(m_next, m_end, m_characters.data());
    m_characters.resize(std::max(m_characters.size(), kept + ChunkLength));
    char* const chunk = m_characters.data() + kept;
    const qint64 length = m_file.read(chunk, ChunkLength);
    if (length < 0)
        fail(m_file.errorString());
    m_isExhausted = length <= 0;
    if (!m_isExhausted)
        m_endsInLineEnd = isLineEnd(chunk[length - 1]);
    m_next = m_characters.data();
    m_end = m_isExhausted ? chunk : std::remove_if(chunk, chunk + length, isLineEnd);
}
