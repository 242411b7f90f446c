#include "MemoryFileWriter.h"

#include <utility>

#include <QDir>
#include <QFile>
#include <QSaveFile>

#include "Crc32.h"
#include "ShortVersion.h"
#include "Text.h"

namespace {

constexpr QStringView SerialNumberPattern = u"00000";

// A disk that fills up may take a part; the reason comes with the rest.
bool writeAll(QFileDevice& file, const QByteArray& bytes) {
    qint64 done = 0;
    while (done < bytes.size()) {
        const qint64 step = file.write(bytes.constData() + done, bytes.size() - done);
        if (step <= 0)
            return false;
        done += step;
    }
    return true;
}

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
    m_failure.clear();
    if (failed == Failed::LeavesNoFile)
        filestream = std::make_unique<QSaveFile>(path);
    else
        filestream = std::make_unique<QFile>(path);
    if (filestream->open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        return true;
    m_failure =
        QStringLiteral("Cannot create %1: %2").arg(QDir::toNativeSeparators(path), filestream->errorString());
    filestream.reset();
    return false;
}

bool MemoryFileWriter::finish() {
    const auto file = std::exchange(filestream, nullptr);
    if (!file)
        return false;
    auto* const replacing = qobject_cast<QSaveFile*>(file.get());
    if (replacing && m_failure.isEmpty() && !replacing->commit())
        m_failure = QStringLiteral("Cannot complete %1: %2")
                        .arg(QDir::toNativeSeparators(file->fileName()), file->errorString());
    return m_failure.isEmpty();
}

void MemoryFileWriter::abandon() {
    filestream.reset();
}

bool MemoryFileWriter::WriteLine(const QString& line) {
    const QByteArray bytes = line.toLatin1();
    CalcCrc32(m_globals, bytes);
    if (!filestream)
        return false;
    if (writeAll(*filestream, bytes + "\r\n"))
        return true;
    m_failure = QStringLiteral("Cannot write %1: %2")
                    .arg(QDir::toNativeSeparators(filestream->fileName()), filestream->errorString());
    return false;
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
