#include <algorithm>

#include <QFileInfo>
#include <QScopeGuard>

#include "ConfigurationLines.h"
#include "FileTypes1.h"
#include "SaveRestoreM7Config.h"
#include "Text.h"

namespace {

constexpr qsizetype SerialNumberPosition = 20;
constexpr qsizetype CrcPrefixPosition = 7;
constexpr QStringView CrcPrefix = u"= 0x";
constexpr qsizetype CrcPosition = 11;
constexpr qsizetype CrcDigits = 8;

// The number of a CRC line. The writer drops leading zeros and eight digits are asked for here, so one saved
// file in sixteen is taken for incomplete.
bool readCrc(const QString& line, std::uint32_t& value) {
    if (!Text::equal(Text::Mid(line, CrcPrefixPosition, CrcPrefix.size()), CrcPrefix))
        return false;
    const QString digits = Text::Mid(line, CrcPosition, CrcDigits);
    if (digits.size() < CrcDigits)
        return false;
    value = 0;
    for (qsizetype at = 0; at < CrcDigits; at += 2) {
        std::uint8_t byte = 0;
        if (!HexPairToBin(QStringView(digits).mid(at, 2), byte))
            return false;
        value = (value << 8) | byte;
    }
    return true;
}

// The words speak of a radio and its calibrations; they are as users know them.
MessageRequest otherUnitRequest() {
    return {.message = QStringLiteral("The Serial Number within the restore file\n"
                                      "does not match the Serial Number of your M7.\n"
                                      "You really shouldn't restore this radio from\n"
                                      "this file. It very probably won't help.\n"
                                      "If you continue anyway, you will need to\n"
                                      "reconfigure your crystal filters (including offsets)\n"
                                      "perform synthesizer calibration\n"
                                      "perform optional wattmeter calibration\n"
                                      "and perform Tx Gain calibration."),
            .explanation = QStringLiteral("Press No to abandon restore\nPress Yes to continue anyway."),
            .actionButton = QStringLiteral("No"),
            .alternateButton = QStringLiteral("Yes")};
}

}  // namespace

Task<bool> SaveRestoreM7Config::Restore() {
    const OpenFileRequest request{.title = QStringLiteral("Select VLXConfig file"),
                                  .initialFolder = m_globals.m_ConfigFolderPath,
                                  .type = FileTypes1::VLXConfigFile.type};
    const QString path = co_await m_platform.dialogs.openFile(request);
    if (path.isEmpty())
        co_return false;
    m_globals.m_ConfigFolderPath = QFileInfo(path).absolutePath();

    const auto close = qScopeGuard([this] { m_input.close(); });
    const bool isOpen = m_input.open(path);
    bool ok = false;
    if (m_globals.isMain() && isOpen)
        ok = co_await verifyAndApply(path);
    logIfAny(m_input.failure());
    m_globals.SetStatusText(
        ok ? QStringLiteral("Configuration was restored") : QStringLiteral("Configuration was not restored"),
        false);
    co_return ok;
}

Task<bool> SaveRestoreM7Config::verifyAndApply(QString path) {
    m_fCrcLineFound = m_fCrcVerified = false;
    const QString verifying = QStringLiteral("Verifying configuration file");
    m_globals.SetStatusText(verifying, true);
    const ProgressSpan progress(m_progress, verifying);
    const bool isGood = co_await RestoreData(false);
    if (!isGood)
        co_return false;
    // Both boxes are warnings, whatever their words say: the restore goes on. Only a file without any data
    // ends it, which would write zeros over the whole configuration.
    if (!m_fCrcLineFound || m_memLines == 0)
        co_await m_platform.dialogs.MsgBox(
            QStringLiteral("The configuration file is incomplete.\n\n"
                           "Cannot restore from an incomplete configuration file."));
    if (m_memLines == 0)
        co_return false;
    if (!m_fCrcVerified)
        co_await m_platform.dialogs.MsgBox(
            QStringLiteral("The configuration file has been altered after it was saved.\n\n"
                           "Cannot  restore from a modified configuration file."));
    if (!m_input.open(path))
        co_return false;

    const QString restoring = QStringLiteral("Restoring configuration");
    m_globals.SetStatusText(restoring, false);
    m_progress.setProgressBar1Value(0);
    m_progress.setStaticText1(restoring);
    m_progress.setProgressBar1Maximum(m_wLines / 2);
    const bool isRestored = co_await RestoreData(true);
    co_return isRestored;
}

Task<bool> SaveRestoreM7Config::RestoreData(bool apply) {
    m_wLines = 0;
    m_memLines = 0;
    m_globals.m_dwCrc32 = 0;
    m_bytearray.fill(0);
    // Only the last line that has a result counts: a MEM2 line that failed is made good by the CRC line.
    bool result = true;
    for (;;) {
        const bool isLine = co_await m_input.GetLine();
        if (!isLine)
            break;
        ++m_wLines;
        if (m_input.IsSerialNumber()) {
            const bool isCompared = co_await DoSerialNumberLine();
            if (!isCompared || m_fErrorStop)
                co_return false;
        } else if (m_input.IsCrc32()) {
            result = co_await DoCrcLine();
            if (!result) {
                co_await tellWhyCrcLineFailed();
                break;
            }
        } else if (m_input.IsMem()) {
            m_fCrcVerified = false;
            result = DoMemLine(apply);
        }
    }
    // What a failing disk kept back is not made up for with zeros.
    if (!m_input.failure().isEmpty())
        co_return false;
    if (!apply)
        co_return result;
    // A file that changed after the first pass was good is sent all the same, unless it has no data any more.
    if (m_memLines == 0)
        co_return false;
    const bool isWritten = co_await writeImage();
    co_return result&& isWritten;
}

Task<bool> SaveRestoreM7Config::DoSerialNumberLine() {
    const QString& line = m_input.line();
    const double number = Text::Val(Text::Mid(line, SerialNumberPosition));
    const bool isContained = Text::InStr(line, u"M7 Serial Number") > 0;
    m_fErrorStop = false;
    if (isContained && number != m_globals.m_SerialNumber) {
        m_fErrorStop = true;
        if (m_globals.m_AdvancedMode) {
            const MessageRequest request = otherUnitRequest();
            m_fErrorStop = co_await m_platform.dialogs.askCaution(request);
        } else {
            co_await m_platform.dialogs.MsgBox(
                QStringLiteral("The Serial Number within the restore file\n"
                               "does not match the Serial Number of your M7.\n"
                               "Restore cannot continue."));
        }
    }
    co_return isContained;
}

Task<bool> SaveRestoreM7Config::DoCrcLine() {
    m_fCrcVerified = false;
    m_fCrcLineFound = false;
    std::uint32_t expected = 0;
    if (!readCrc(m_input.line(), expected))
        co_return false;
    m_fCrcLineFound = true;
    const bool isEqual = expected == ~m_globals.m_dwCrc32;
    if (!isEqual) {
        // The computed value is shown as it stands, though it is its complement that was compared.
        const QString box = QStringLiteral("CRC compare failure, expected 0x%1, computed 0x%2")
                                .arg(Text::Hex(expected), Text::Hex(m_globals.m_dwCrc32));
        co_await m_platform.dialogs.MsgBox(box);
    }
    m_fCrcVerified = isEqual;
    co_return isEqual;
}

Task<> SaveRestoreM7Config::tellWhyCrcLineFailed() {
    const QString box = m_fCrcLineFound ? QStringLiteral(
                                              "The configuration file has been modified since it\n"
                                              "as written. Cannot restore from a modified \n"
                                              "configuration file.")
                                        : QStringLiteral(
                                              "The configuration file is incomplete\n"
                                              "as written. Cannot restore from an incomplete \n"
                                              "configuration file.");
    co_await m_platform.dialogs.MsgBox(box);
}

bool SaveRestoreM7Config::DoMemLine(bool apply) {
    std::uint8_t page = 0;
    std::uint8_t address = 0;
    QByteArray data;
    if (!ParseMemLine(m_input.line(), page, address, data) || !IsValidAddress(page, address))
        return false;
    ++m_memLines;
    // 32 bytes, whatever the line's count.
    const auto size = std::min<std::size_t>(MemoryMap::ChunkSize, m_bytearray.size() - address);
    if (apply)
        std::copy_n(data.cbegin(), size, m_bytearray.begin() + address);
    return true;
}

// False when the port has gone: what the amplifier answers is not looked at.
Task<bool> SaveRestoreM7Config::writeImage() {
    const auto writing = m_globals.mustEnd.take();
    int chunk = 0;
    for (const std::uint8_t address : MemoryMap::ConfigurationChunks) {
        const QByteArray bytes(reinterpret_cast<const char*>(m_bytearray.data()) + address,
                               MemoryMap::ChunkSize);
        m_progress.setProgressBar1Value(++chunk);
        co_await m_memory.SendCommandGetResponse(FormatEWCommand(0, address, MemoryMap::ChunkSize, bytes));
        if (!m_memory.isPortOpen())
            co_return false;
    }
    m_progress.setProgressBar1Maximum(0);
    m_progress.setStaticText1(QStringLiteral("Resetting MCU"));
    const bool isRestarted = co_await m_memory.ResetMcu();
    co_return isRestarted;
}
