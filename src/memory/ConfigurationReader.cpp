#include "ConfigurationReader.h"

#include <algorithm>

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "Crc32.h"
#include "Text.h"

namespace {

constexpr qint64 ChunkSize = 64 * 1024;

bool startsWith(const QString& line, QStringView start) {
    return line.startsWith(start, Qt::CaseInsensitive);
}

}  // namespace

bool ConfigurationReader::open(const QString& path) {
    close();
    m_path = path;
    auto file = std::make_unique<QFile>(path);
    // A pipe or a device would keep the program waiting, or never end.
    const QFileInfo info(path);
    if (info.exists() && !info.isFile())
        fail(QStringLiteral("Not a regular file"));
    else if (!file->open(QIODevice::ReadOnly))
        fail(file->errorString());
    else
        setFileInstream(std::move(file));
    return m_failure.isEmpty();
}

void ConfigurationReader::fail(const QString& reason) {
    m_failure = QStringLiteral("Cannot read %1: %2").arg(QDir::toNativeSeparators(m_path), reason);
}

void ConfigurationReader::setFileInstream(std::unique_ptr<QIODevice> device) {
    FileInstream = std::move(device);
    m_failure.clear();
    m_chunk.clear();
    m_at = 0;
}

Task<bool> ConfigurationReader::GetLine() {
    strLine.clear();
    const std::uint32_t crcBefore = m_globals.m_dwCrc32;
    bool isWhole = false;
    while (!isWhole && readChunk()) {
        co_await m_clock.breathe();
        isWhole = takeCharacters();
    }
    if (IsCrc32())
        m_globals.m_dwCrc32 = crcBefore;
    co_return isWhole;
}

bool ConfigurationReader::readChunk() {
    if (m_at < m_chunk.size())
        return true;
    m_chunk.resize(ChunkSize);
    const qint64 count = FileInstream ? FileInstream->read(m_chunk.data(), ChunkSize) : 0;
    if (count < 0)
        fail(FileInstream->errorString());
    m_chunk.resize(std::max<qint64>(count, 0));
    m_at = 0;
    return !m_chunk.isEmpty();
}

bool ConfigurationReader::takeCharacters() {
    const qsizetype end = m_chunk.indexOf('\r', m_at);
    QByteArray characters = m_chunk.mid(m_at, end < 0 ? -1 : end - m_at);
    characters.replace('\n', QByteArrayView());
    CalcCrc32(m_globals, characters);
    strLine += Text::fromLine(characters.left(LineLimit - strLine.size()));
    m_at = end < 0 ? m_chunk.size() : end + 1;
    return end >= 0;
}

bool ConfigurationReader::IsCrc32() const {
    return startsWith(strLine, u"CRC32 ");
}

bool ConfigurationReader::IsMem() const {
    return startsWith(strLine, u"MEM2 ");
}

bool ConfigurationReader::IsSerialNumber() const {
    return startsWith(strLine, u"M7 Serial Number");
}
