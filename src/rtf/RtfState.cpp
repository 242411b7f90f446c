#include "RtfState.h"

#include "RtfModule.h"

namespace {

// The byte itself; a code that no byte has is that of a Unicode character.
QByteArray Chr(std::int32_t code) {
    constexpr std::int32_t Highest = 0x10FFFF;
    if (code >= 0 && code <= 0xFF)
        return QByteArray(1, static_cast<char>(code));
    if (code < 0 || code > Highest)
        return {};
    const auto character = static_cast<char32_t>(code);
    return RtfEncoding::fromText(QString::fromUcs4(&character, 1));
}

}  // namespace

void RtfState::SetPlain() {
    bold = italic = underline = outline = shadow = capitals = smallcapitals = false;
    expanded = 0;
}

void RtfState::SetEncoding(std::string_view word, std::int32_t value) {
    if (RtfIsWord(word, "mac"))
        encoding = RtfEncoding::MacRoman;
    else if (RtfIsWord(word, "ansi") || RtfIsWord(word, "pc") || RtfIsWord(word, "pca"))
        encoding = RtfEncoding::WindowsLatin1;  // the two PC sets as well
    else if (RtfIsWord(word, "ansicp"))
        encoding = RtfEncoding::ofCodePage(value, encoding);
    else if (RtfIsWord(word, "fcharset"))
        encoding = RtfEncoding::ofCharset(value, encoding);
}

QByteArray RtfState::Decode(std::int32_t code) const {
    const QByteArray byte = Chr(code);
    return encoding < 1 ? byte : RtfEncoding::convert(byte, encoding, nativeencoding);
}

QByteArray RtfState::DecodeUnicode(std::int32_t code) const {
    return encoding < 1
               ? Chr(code)
               : RtfEncoding::convert(QByteArray::number(code), RtfEncoding::Unicode, nativeencoding);
}
