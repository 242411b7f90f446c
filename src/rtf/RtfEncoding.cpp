#include "RtfEncoding.h"

#include <algorithm>
#include <iterator>
#include <map>

#include <QStringDecoder>
#include <QStringEncoder>

namespace {

struct Encoding {
    std::int32_t number;
    std::int32_t codePage;  // -1 where there is none
    const char* name;       // as the converters know it
};

// There is no converter for 1296 on most systems.
constexpr Encoding Encodings[] = {
    {RtfEncoding::MacRoman, -1, "macintosh"},
    {RtfEncoding::Unicode, -1, "UTF-16BE"},
    {1045, 860, "IBM860"},
    {1047, 862, "IBM862"},
    {1048, 863, "IBM863"},
    {1049, 864, "IBM864"},
    {1050, 865, "IBM865"},
    {1051, 866, "IBM866"},
    {1053, 874, "windows-874"},
    {1056, 932, "windows-932"},
    {1057, 936, "windows-936"},
    {1058, 949, "windows-949"},
    {1059, 950, "windows-950"},
    {RtfEncoding::WindowsLatin1, 1252, "windows-1252"},
    {1281, 1250, "windows-1250"},
    {1282, 1251, "windows-1251"},
    {1283, 1253, "windows-1253"},
    {1284, 1254, "windows-1254"},
    {1285, 1255, "windows-1255"},
    {1286, 1256, "windows-1256"},
    {1287, 1257, "windows-1257"},
    {1288, 1258, "windows-1258"},
    {1296, 1361, "Johab"},
    {2563, -1, "Big5"},
};

struct Charset {
    std::int32_t charset;
    std::int32_t encoding;
};

constexpr Charset Charsets[] = {{0, RtfEncoding::WindowsLatin1}, {77, RtfEncoding::MacRoman}, {136, 2563}};

struct Converter {
    explicit Converter(const char* name)
        : decode(name, QStringDecoder::Flag::Stateless), encode(name, QStringEncoder::Flag::Stateless) {}

    QStringDecoder decode;
    QStringEncoder encode;
};

// Null when there is none. Kept: making one takes longer than what most texts need of it.
Converter* converter(std::int32_t number) {
    static std::map<std::int32_t, Converter> made;
    const auto* const encoding = std::ranges::find(Encodings, number, &Encoding::number);
    if (encoding == std::end(Encodings))
        return nullptr;
    Converter& found = made.try_emplace(number, encoding->name).first->second;
    return found.decode.isValid() && found.encode.isValid() ? &found : nullptr;
}

}  // namespace

std::int32_t RtfEncoding::ofCodePage(std::int32_t codePage, std::int32_t otherwise) {
    const auto* const found = std::ranges::find(Encodings, codePage, &Encoding::codePage);
    return codePage < 0 || found == std::end(Encodings) ? otherwise : found->number;
}

std::int32_t RtfEncoding::ofCharset(std::int32_t charset, std::int32_t otherwise) {
    const auto* const found = std::ranges::find(Charsets, charset, &Charset::charset);
    return found == std::end(Charsets) ? otherwise : found->encoding;
}

QByteArray RtfEncoding::convert(QByteArrayView bytes, std::int32_t from, std::int32_t to) {
    Converter* const source = converter(from);
    Converter* const aim = converter(to);
    if (!source || !aim)
        return {};
    QString text = source->decode(bytes);
    // Some converters read a micro sign as the Greek letter, which Mac Roman has not.
    text.replace(u'\u03BC', u'\u00B5');
    if (!text.isEmpty())
        return aim->encode(text);
    // Half a character may give no text at all, and must not wait for the other half.
    source->decode.resetState();
    return QByteArray(bytes.size(), '?');
}

QString RtfEncoding::toText(QByteArrayView bytes) {
    return converter(MacRoman)->decode(bytes);
}

QByteArray RtfEncoding::fromText(const QString& text) {
    return converter(MacRoman)->encode(text);
}
