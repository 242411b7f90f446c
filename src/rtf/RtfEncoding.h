// Text encodings by their numbers.
#pragma once

#include <cstdint>

#include <QByteArray>
#include <QString>

namespace RtfEncoding {

constexpr std::int32_t MacRoman = 0;
constexpr std::int32_t Unicode = 256;  // big-endian
constexpr std::int32_t WindowsLatin1 = 1280;

// The number that a code page or a font's character set stands for; `otherwise` for one that has none.
std::int32_t ofCodePage(std::int32_t codePage, std::int32_t otherwise);
std::int32_t ofCharset(std::int32_t charset, std::int32_t otherwise);

// From one encoding to another; "?" stands for what the other has not. Empty when there is no converter
// for one of them.
QByteArray convert(QByteArrayView bytes, std::int32_t from, std::int32_t to);

// The reader's inner text, which is Mac Roman, to and from what the program shows.
QString toText(QByteArrayView bytes);
QByteArray fromText(const QString& text);

}  // namespace RtfEncoding
