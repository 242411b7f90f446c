#include "FaultTable.h"

#include <QFileInfo>
#include <QScopeGuard>

#include "Errors.h"
#include "FileTypes1.h"
#include "MemoryProtocol.h"
#include "Text.h"

namespace {

constexpr int PageSize = 256;
constexpr auto Chunk = MemoryMap::ChunkSize;
// Not the type code that the file dialogs know.
const QByteArray SavedTypeCode = QByteArrayLiteral("ttxt");
const QString EndRecord = QStringLiteral(":00000001FF");

std::uint8_t pageOf(int offset) {
    return static_cast<std::uint8_t>(offset / PageSize);
}

std::uint8_t addressOf(int offset) {
    return static_cast<std::uint8_t>(offset % PageSize);
}

// Where a file was, or the nearest folder above it that still exists.
QString nearestFolder(const QString& path) {
    QString folder = path;
    while (!folder.isEmpty() && !QFileInfo(folder).isDir()) {
        const QString above = QFileInfo(folder).path();
        folder = above == folder ? QString() : above;
    }
    return folder;
}

}  // namespace

Task<> FaultTable::Begin(FaultTableView& view) {
    view.showWaitCursor(true);
    const auto pointer = qScopeGuard([&view] { view.showWaitCursor(false); });
    co_await readArea();
    // Also when a code without a name ends the list.
    const auto save = qScopeGuard([this, &view] {
        if (!m_buffer.isEmpty())
            view.enableSaveToFileButton();
    });
    // Entry 0 is never shown.
    for (int index = countByte() - 1; index >= 1; --index)
        view.addRow(decode(index));
}

Task<> FaultTable::readArea() {
    m_buffer.clear();
    for (int offset = 0; offset < AreaSize; offset += Chunk) {
        const QString command = FormatERCommand(pageOf(offset), addressOf(offset), Chunk);
        const QString response = co_await m_memory.SendCommandGetResponse(command);
        m_buffer += answerDigits(response, Chunk);
    }
    // Of a port that has gone in between, the rest would be taken for zeros.
    if (!m_memory.isPortOpen())
        m_buffer.clear();
}

FaultTableRow FaultTable::decode(int index) const {
    FaultTableRow row = decodeNumbers(index);
    const int code = byteAt(entryOffset(index) + CodeOffset);
    if (2 * code + 1 >= m_globals.FaultCodes.size())
        throw OutOfBoundsError(QStringLiteral("The fault table holds the unknown fault code %1.").arg(code));
    row.description = m_globals.FaultCodes[2 * code + 1];
    return row;
}

// All that needs no name, and the code's short name if it has one.
FaultTableRow FaultTable::decodeNumbers(int index) const {
    const int offset = entryOffset(index);
    const int timestamp = byteAt(offset + 2) * 65536 + byteAt(offset) + byteAt(offset + 1) * 256;
    const int code = byteAt(offset + CodeOffset);
    return {.code = code,
            .timestamp = Text::Format(timestamp, u"00000000"),
            .faultCode = Text::Format(code, u"00") + u' ' + m_globals.FaultCodes.value(code * 2),
            .data = digitsAt(offset + 5) + digitsAt(offset + 4),
            .description = {}};
}

QString FaultTable::digitsAt(int offset, int count) const {
    return Text::Mid(m_buffer, 2 * offset + 1, 2 * count);
}

std::uint8_t FaultTable::byteAt(int offset) const {
    return hexByteAt(m_buffer, 2 * offset + 1);
}

Task<> FaultTable::SaveToFile() {
    const QString name = co_await CreateTimeStampedFilename();
    const SaveFileRequest request{.title = QStringLiteral("Save As"),
                                  .prompt = QString(),
                                  .initialFolder = nearestFolder(m_globals.m_FaultFolderPath),
                                  .suggestedName = name,
                                  .type = FileTypes1::VLXFaultTableFile.type};
    const QString path = co_await m_platform.dialogs.saveFile(request);
    if (path.isEmpty())
        co_return;
    // The file itself, not its folder as for a configuration.
    m_globals.m_FaultFolderPath = path;

    const auto close = qScopeGuard([this] { m_file.abandon(); });
    co_await writeFile(path);
    const QString failure = m_file.takeFailure();
    if (!failure.isEmpty())
        co_await m_platform.dialogs.MsgBox(failure);
}

Task<> FaultTable::writeFile(QString path) {
    if (!m_file.create(path, MemoryFileWriter::Failed::StaysOnDisk))
        co_return;
    FileTypes1::setCodes(path, FileTypes1::VLXFaultTableFile.creatorCode, SavedTypeCode);
    if (!m_globals.isMain())
        co_return;
    if (!SaveCreationTime() || !m_file.SaveVLXUtilVersionInfo() || !m_file.SaveFirmwareRevisionInfo())
        co_return;
    const bool isNumberSaved = co_await m_file.SaveVLXSerialNumber();
    if (isNumberSaved)
        SaveEEPROMdata();
}

Task<QString> FaultTable::CreateTimeStampedFilename() {
    return m_file.CreateTimeStampedFilename(FileTypes1::VLXFaultTableFile.type.extension);
}

bool FaultTable::SaveCreationTime() {
    return m_file.WriteLine(QStringLiteral("*VLX Fault Table saved on ") + m_file.creationTime());
}

bool FaultTable::SaveEEPROMdata() {
    for (int offset = 0; offset < AreaSize; offset += Chunk)
        if (!writeImageLine(offset))
            break;
    bool ok = m_file.WriteLine(EndRecord);
    for (int index = countByte() - 1; index >= 1; --index) {
        const FaultTableRow row = decodeNumbers(index);
        ok = m_file.WriteLine(
            QStringLiteral("FAULT %1 %2 %3 %4 %5")
                .arg(Text::Hex2(index), Hex4(entryOffset(index)), row.timestamp, row.faultCode, row.data));
    }
    return ok;
}

// An Intel HEX record with the page as the high byte of its address.
bool FaultTable::writeImageLine(int offset) {
    int sum = Chunk + pageOf(offset) + addressOf(offset);
    for (int index = 0; index < Chunk; ++index)
        sum += byteAt(offset + index);
    return m_file.WriteLine(QStringLiteral(":20") + Text::Hex2(pageOf(offset)) +
                            Text::Hex2(addressOf(offset)) + QStringLiteral("00") + digitsAt(offset, Chunk) +
                            Text::Hex2((256 - sum % 256) % 256));
}

QString Hex4(std::int32_t value) {
    const QString digits = Text::Hex(static_cast<std::uint32_t>(value));
    return digits.size() < 4 ? digits.rightJustified(4, u'0') : QString();
}
