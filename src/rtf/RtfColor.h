// The colour table of an RTF document.
#pragma once

#include <cstdint>
#include <vector>

#include <QByteArray>

#include "RtfStream.h"
#include "Task.h"

struct RtfRgb {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;

    bool operator==(const RtfRgb&) const = default;
};

// Index 0 is the automatic colour.
class RtfColor {
public:
    // Later colours of a larger table are dropped.
    static constexpr std::size_t MostColors = 1 << 20;

    // Reads the table behind "colortbl", up to its "}". A table that ends with the file counts as well.
    // A part that a colour does not name is that of the colour before; the last colour is there twice.
    Task<bool> parse(RtfStream& stream);

    // Black for index 0 and for one beyond the table.
    RtfRgb getcolor(std::int32_t index) const;
    // The highest index.
    std::int32_t count() const { return static_cast<std::int32_t>(c.size()) - 1; }
    // The first index of the colour from 1 on; one more than the highest if there is none.
    std::int32_t getid(RtfRgb color) const;
    void addcolor(RtfRgb color);
    // The table as RTF.
    QByteArray getstring() const;

private:
    std::vector<RtfRgb> c{RtfRgb{}};
};
