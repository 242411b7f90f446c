// The look of text at one point of an RTF document, and how its coded characters become text.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include <QByteArray>

#include "RtfColor.h"
#include "RtfEncoding.h"

enum class RtfAlignment : std::int32_t { Left = 1, Centre = 2, Right = 3, Justified = 4 };

struct RtfState {
    // Character styles off; font, size, colours, alignment and encodings stay.
    void SetPlain();
    RtfState Clone() const { return *this; }

    // Sets `encoding` by an encoding word, and by its value where the word takes one. Words and values that
    // name none leave it as it is.
    void SetEncoding(std::string_view word, std::int32_t value);
    // The text of "\'hh" and of "\uN". Of the latter not the character but the digits of its number are
    // converted, unless `encoding` is 0.
    QByteArray Decode(std::int32_t code) const;
    QByteArray DecodeUnicode(std::int32_t code) const;

    bool operator==(const RtfState&) const = default;

    bool bold = false;
    bool italic = false;
    bool underline = false;
    QByteArray font = QByteArrayLiteral("System");
    double textsize = 12.0;
    bool outline = false;
    bool shadow = false;
    RtfRgb foregroundcolor;
    std::optional<RtfRgb> backgroundcolor;
    double expanded = 0.0;  // letter spacing in points
    std::int32_t encoding = RtfEncoding::MacRoman;
    bool capitals = false;
    bool smallcapitals = false;
    RtfAlignment alignment = RtfAlignment::Left;
    std::int32_t nativeencoding = RtfEncoding::MacRoman;
};
