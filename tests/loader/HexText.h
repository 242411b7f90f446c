// Firmware images for tests: their bytes, their HEX text, and what has to pass the line for them.
#pragma once

#include <random>

#include <QByteArray>
#include <QFile>

namespace HexText {

inline QByteArray record(int type, int address, const QByteArray& data = {}) {
    QByteArray bytes;
    bytes.append(static_cast<char>(data.size()));
    bytes.append(static_cast<char>(address >> 8))
        .append(static_cast<char>(address))
        .append(static_cast<char>(type));
    bytes.append(data);
    unsigned sum = 0;
    for (const char byte : bytes)
        sum += static_cast<unsigned char>(byte);
    return ':' + bytes.append(static_cast<char>(0x100 - (sum & 0xFF))).toHex().toUpper() + "\r\n";
}

inline QByteArray end() {
    return record(1, 0);
}

// Records of 16 bytes with an address record at the start and at each 64 KiB.
inline QByteArray dataRecords(int address, const QByteArray& image) {
    QByteArray text;
    for (int i = 0; i < image.size(); i += 16, address += 16) {
        if (i == 0 || address % 0x10000 == 0)
            text += record(4, 0, QByteArray::fromHex(address < 0x10000 ? "0000" : "0001"));
        text += record(0, address & 0xFFFF, image.mid(i, 16));
    }
    return text;
}

inline QByteArray file(const QByteArray& image) {
    return dataRecords(0x800, image) + end();
}

}  // namespace HexText

namespace Image {

constexpr int FullBlocks = 2006;

// `blocks` blocks from 0x800 on, the same for the same seed; its checksum word is left to the loader, and
// it carries the version 01.05.
inline QByteArray make(int blocks, unsigned seed = 1) {
    std::minstd_rand random(seed);
    QByteArray image(blocks * 64, '\0');
    for (char& byte : image)
        byte = static_cast<char>(random());
    return image.replace(0, 2, QByteArray(2, '\0')).replace(16, 12, "VLX720FP0105");
}

inline unsigned wordSum(const QByteArray& bytes) {
    unsigned sum = 0;
    for (int i = 0; i < bytes.size(); ++i)
        sum += static_cast<unsigned char>(bytes[i]) << (i % 2 == 0 ? 8 : 0);
    return sum & 0xFFFF;
}

// The image as it must stand in the amplifier: a word of 0 has become the one that makes the sum 0.
inline QByteArray loaded(QByteArray image) {
    if (image.startsWith(QByteArray(2, '\0'))) {
        const unsigned word = 0x10000 - wordSum(image);
        image[0] = static_cast<char>(word >> 8);
        image[1] = static_cast<char>(word);
    }
    return image;
}

// The wire format, as a table: offset in the block, size, contents.
//    0  64  data            65   1  address, middle byte      67   1  makes the sum of all 68 bytes 0
//   64   1  address, low    66   1  address, high byte; 2: final block
inline QByteArray wireBlock(const QByteArray& data, int address, int highByte) {
    QByteArray block = data;
    block.append(static_cast<char>(address)).append(static_cast<char>(address >> 8));
    block.append(static_cast<char>(highByte));
    unsigned sum = 0;
    for (const char byte : block)
        sum += static_cast<unsigned char>(byte);
    return block.append(static_cast<char>(0U - sum));
}

// All blocks for an image at 0x800, the final one among them.
inline QByteArray wireBlocks(const QByteArray& image) {
    QByteArray bytes;
    for (int i = 0; i < image.size(); i += 64) {
        QByteArray data = image.mid(i, 64);
        if (i == 0 && data.startsWith(QByteArray(2, '\0')))
            data[0] = static_cast<char>(0xAA);
        bytes += wireBlock(data, 0x800 + i, (0x800 + i) >> 16);
    }
    return bytes + wireBlock(loaded(image).left(64), 0x800, 2);
}

}  // namespace Image
