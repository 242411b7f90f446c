// The recorded values as they are named and counted. A new one has its row here, a member in Trends::Series,
// and one in the feed of the window that records it.
#pragma once

#include <array>
#include <cmath>

#include "Trends.h"

struct SeriesRow {
    Trends::Series series;
    const char* name;
    const char* unit;
    int decimals;
    double finest;  // step of the axis
};

inline constexpr auto SeriesTable = std::to_array<SeriesRow>({
    // clang-format off
    {Trends::Series::PAVoltage,   "PA Voltage",  "V", 1, 0.5},
    {Trends::Series::PACurrent,   "PA Current",  "A", 1, 0.5},
    {Trends::Series::Temperature, "Temperature", "C", 0, 5},
    {Trends::Series::Power,       "Power",       "W", 0, 50},
    {Trends::Series::SWR,         "SWR",         "",  1, 0.5},
    // clang-format on
});
static_assert(SeriesTable.size() == Trends::SeriesCount);

// "53.2 V"; a dash when the value is not known.
inline QString valueText(const SeriesRow& row, float value) {
    if (std::isnan(value))
        return QStringLiteral("-");
    const QString number = QString::number(static_cast<double>(value), 'f', row.decimals);
    return *row.unit ? number + u' ' + QLatin1StringView(row.unit) : number;
}
