#include "PowerOnBanner.h"

#include "MemoryProtocol.h"
#include "Text.h"

namespace {

constexpr auto Address = MemoryMap::BannerAddress;
constexpr auto Size = MemoryMap::BannerSize;
constexpr qsizetype DataPosition = 10;
constexpr std::uint8_t Erased = 0xFF;

}  // namespace

Task<std::optional<QString>> PowerOnBanner::ReadPowerOnBanner() {
    if (!m_globals.isMain())
        co_return std::nullopt;
    const QString command = FormatERCommand(0, Address, Size);
    const QString response = co_await m_memory.SendCommandGetResponse(command);
    if (!isConfigurationAnswer(Size, Address, command, response))
        co_return std::nullopt;
    QString text;
    for (int index = 0; index < Size; ++index) {
        const std::uint8_t byte = hexByteAt(response, DataPosition + 2 * index);
        if (byte == 0 || byte == Erased)
            break;
        text += QChar(byte);
    }
    co_return text;
}

Task<bool> PowerOnBanner::WritePowerOnBanner(QString text) {
    const QByteArray codes = text.toLatin1();
    if (codes.size() > MaximumLength || !m_globals.isMain())
        co_return false;
    const auto writing = m_globals.mustEnd.take();
    if (codes.isEmpty()) {
        co_await m_memory.SendCommandGetResponse(
            FormatEWCommand(0, Address, 1, QByteArray(1, static_cast<char>(Erased))));
        co_return m_memory.isPortOpen();
    }
    const auto length = static_cast<std::uint8_t>(codes.size());
    // The terminator first. That of a text of eight lies behind the banner's own place.
    co_await m_memory.SendCommandGetResponse(
        FormatEWCommand(0, static_cast<std::uint8_t>(Address + length), 1, QByteArray(1, '\0')));
    co_await m_memory.SendCommandGetResponse(FormatEWCommand(0, Address, length, codes));
    co_return m_memory.isPortOpen();
}
