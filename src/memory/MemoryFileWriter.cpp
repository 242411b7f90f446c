#include "MemoryFileWriter.h"

#include <algorithm>

#include "Crc32.h"
#include "ShortVersion.h"
#include "Text.h"

namespace {

constexpr QStringView SerialNumberPattern = u"00000";

}  // namespace

Task<QString> MemoryFileWriter::CreateTimeStampedFilename(QString extension) {
    const bool isNumbered = co_await m_memory.GetSerialNumber();
    const QString time = m_clock.wallClock().toString(QStringLiteral("yyyyMMdd'T'HHmmss"));
    if (!isNumbered)
        co_return time + extension;
    co_return QStringLiteral("SN") + Text::Format(m_globals.m_SerialNumber, SerialNumberPattern) + u'.' +
        time + extension;
}

bool MemoryFileWriter::create(const QString& path, Failed failed) {
    m_path = path;
    m_failed = failed;
    m_lines.clear();
    return filestream.create(path, failed);
}

bool MemoryFileWriter::writeAgain(const QString& firstLine) {
    QStringList lines = m_lines;
    lines.front() = firstLine;
    m_globals.m_dwCrc32 = 0;
    return create(m_path, m_failed) &&
           std::all_of(lines.cbegin(), lines.cend(), [this](const QString& line) { return WriteLine(line); });
}

bool MemoryFileWriter::WriteLine(const QString& line) {
    m_lines += line;
    const QByteArray bytes = line.toLatin1();
    CalcCrc32(m_globals, bytes);
    return filestream.write(bytes + "\r\n");
}

QString MemoryFileWriter::creationTime() const {
    return m_clock.wallClock().toString(QStringLiteral("yyyy/MM/dd 'at' HH:mm:ss"));
}

bool MemoryFileWriter::SaveVLXUtilVersionInfo() {
    m_ErrorText = QStringLiteral("Error writing VLX Utility Version");
    return WriteLine(QStringLiteral("VLX Utility Version = ") + ShortVersion());
}

bool MemoryFileWriter::SaveFirmwareRevisionInfo() {
    m_ErrorText = QStringLiteral("Error writing MCU Version.");
    return WriteLine(QStringLiteral("VLX Firmware Version = ") + m_globals.m_strMcuVersion);
}

Task<bool> MemoryFileWriter::SaveVLXSerialNumber() {
    m_ErrorText = QStringLiteral("Error writing Serial Number.");
    const bool isNumbered = co_await m_memory.GetSerialNumber();
    if (!isNumbered)
        co_return true;
    co_return WriteLine(QStringLiteral("VLX Serial Number = ") +
                        Text::Format(m_globals.m_SerialNumber, SerialNumberPattern));
}
