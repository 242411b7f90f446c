#include "MemoryProtocol.h"

#include "Text.h"

namespace {

constexpr qsizetype ReadCommandLength = 12;
constexpr qsizetype DataPosition = 10;
constexpr std::uint8_t HeaderSize = 3;  // page, address, count

// Two's complement of the low byte of the sum: with it the bytes sum to 0.
std::uint8_t checksumOf(const QByteArray& bytes) {
    std::uint8_t sum = 0;
    for (const char byte : bytes)
        sum = static_cast<std::uint8_t>(sum + static_cast<std::uint8_t>(byte));
    return static_cast<std::uint8_t>(-sum);
}

QString formatCommand(const QString& opening, const QByteArray& header, const QByteArray& data,
                      std::uint8_t count) {
    return opening + ByteArrayToHex(header, HeaderSize) + ByteArrayToHex(data, count) +
           Text::Hex2(checksumOf(header + data.left(count))) + u';';
}

QByteArray headerBytes(std::uint8_t page, std::uint8_t address, std::uint8_t count) {
    const std::array<char, HeaderSize> bytes{static_cast<char>(page), static_cast<char>(address),
                                             static_cast<char>(count)};
    return {bytes.data(), HeaderSize};
}

qsizetype answerLength(std::uint8_t count) {
    return ReadCommandLength + 2 * qsizetype{count};
}

// Low byte of the sum of the data and of the checksum behind them.
std::uint8_t answerSum(const QString& response, std::uint8_t count) {
    int sum = 0;
    for (int i = 0; i <= count; ++i)
        sum += hexByteAt(response, DataPosition + 2 * i);
    return static_cast<std::uint8_t>(sum);
}

bool hasLengths(const QString& command, const QString& response, std::uint8_t count) {
    return command.size() == ReadCommandLength && response.size() == answerLength(count);
}

}  // namespace

QString FormatERCommand(std::uint8_t page, std::uint8_t address, std::uint8_t count) {
    return formatCommand(QStringLiteral("^ER"), headerBytes(page, address, count), QByteArray(), 0);
}

QString FormatEWCommand(std::uint8_t page, std::uint8_t address, std::uint8_t count, const QByteArray& data) {
    return formatCommand(QStringLiteral("^EW"), headerBytes(page, address, count), data, count);
}

QString ByteArrayToHex(const QByteArray& data, std::uint8_t count) {
    return QString::fromLatin1(data.left(count).toHex().toUpper());
}

std::uint8_t hexByteAt(QStringView text, qsizetype position) {
    return static_cast<std::uint8_t>(Text::IntVal(QStringLiteral("&h") + Text::Mid(text, position, 2)));
}

QString answerDigits(const QString& response, std::uint8_t count) {
    return Text::Mid(response, DataPosition, 2 * qsizetype{count});
}

bool ParseResponse(std::uint8_t page, std::uint8_t count, std::uint8_t address, const QString& command,
                   const QString& response) {
    if (!hasLengths(command, response, count))
        return false;
    if (!Text::equal(Text::Left(command, 8), Text::Left(response, 8)))
        return false;
    return static_cast<std::uint8_t>(count + page + address + answerSum(response, count)) == 0;
}

bool isConfigurationAnswer(std::uint8_t count, std::uint8_t address, const QString& command,
                           const QString& response) {
    if (!hasLengths(command, response, count))
        return false;
    if (!Text::equal(Text::Mid(command, 2, 8), Text::Mid(response, 2, 8)))
        return false;
    return static_cast<std::uint8_t>(count + address + answerSum(response, count)) == 0;
}
