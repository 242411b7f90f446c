#include "SampleImage.h"

#include "Flash.h"

namespace {

constexpr int RecordLength = 16;

QByteArray record(std::uint16_t address, char type, const QByteArray& data) {
    QByteArray bytes;
    bytes += static_cast<char>(data.size());
    bytes += static_cast<char>(address >> 8);
    bytes += static_cast<char>(address & 0xFF);
    bytes += type;
    bytes += data;
    unsigned sum = 0;
    for (const char byte : bytes)
        sum += static_cast<unsigned char>(byte);
    bytes += static_cast<char>(0x100 - sum % 0x100);
    return ':' + bytes.toHex().toUpper() + "\r\n";
}

// Something that looks like a program: no long runs, the same at every start.
QByteArray programBytes(const QByteArray& version) {
    QByteArray bytes(Flash::End - Flash::Begin, '\0');
    std::uint32_t state = 720;
    for (char& byte : bytes) {
        state = state * 1664525 + 1013904223;
        byte = static_cast<char>(state >> 24);
    }
    bytes[0] = '\0';
    bytes[1] = '\0';
    const QByteArray stamp = "VLX720FP" + version;
    bytes.replace(16, stamp.size(), stamp);
    return bytes;
}

}  // namespace

QByteArray sampleImage(const QByteArray& version) {
    const QByteArray bytes = programBytes(version);
    QByteArray text = record(0, 4, QByteArray(2, '\0'));
    std::uint32_t address = Flash::Begin;
    for (qsizetype at = 0; at < bytes.size(); at += RecordLength) {
        if (address == 0x10000)
            text += record(0, 4, QByteArray("\0\1", 2));
        text += record(static_cast<std::uint16_t>(address), 0, bytes.mid(at, RecordLength));
        address += RecordLength;
    }
    return text + record(0, 1, {});
}
