// The live values of the amplifier: how each is asked for, found in its answer, and shown.
#pragma once

#include <algorithm>
#include <array>

#include <QStringView>

#include "OperatePanel.h"

struct PolledValue {
    enum class Kind { Number, Band, Fault, Mode };

    // Of the command that asks for it and of the answer. Several values may share one answer.
    QStringView token;
    Kind kind;
    // Numbers and the band only: the read-out, its control, its label, and its unit.
    OperatePanel::ReadOut readOut{};
    QStringView control{};
    QStringView label{};
    QStringView unit{};
    // Numbers only: where the three digits stand, counted from 1, how many of the value make one of the unit,
    // and the number format.
    int position = 0;
    int divisor = 1;
    QStringView format{};
    // The synchronous exchange shows the digits undivided.
    bool isRawInExchange = false;

    constexpr bool isReadOut() const { return kind == Kind::Number || kind == Kind::Band; }
};

// In the order of the poll. The simulated amplifier has its own table of answers by these tokens.
// clang-format off
inline constexpr auto PolledValues = std::to_array<PolledValue>({
    {u"^BN", PolledValue::Kind::Band,   OperatePanel::ReadOut::Band,        u"Band",        u"Band:",        u" MHz"},
    {u"^FL", PolledValue::Kind::Fault},
    {u"^OS", PolledValue::Kind::Mode},
    {u"^WS", PolledValue::Kind::Number, OperatePanel::ReadOut::Power,       u"Power",       u"Power:",       u" W", 4, 1,  u"##0"},
    {u"^WS", PolledValue::Kind::Number, OperatePanel::ReadOut::SWR,         u"SWR",         u"SWR:",         u"",   8, 10, u"#0.0", true},
    {u"^TM", PolledValue::Kind::Number, OperatePanel::ReadOut::Temperature, u"Temperature", u"Temperature:", u" C", 4, 1,  u"##0"},
    {u"^VI", PolledValue::Kind::Number, OperatePanel::ReadOut::PAVoltage,   u"PAVoltage",   u"PA Voltage:",  u" V", 4, 10, u"00.0"},
    {u"^VI", PolledValue::Kind::Number, OperatePanel::ReadOut::PACurrent,   u"PACurrent",   u"PA Current:",  u" A", 8, 10, u"#0.0"},
});
// clang-format on

inline constexpr int ReadOutCount = static_cast<int>(std::count_if(
    PolledValues.begin(), PolledValues.end(), [](const PolledValue& value) { return value.isReadOut(); }));

constexpr const PolledValue& polledValueOf(OperatePanel::ReadOut readOut) {
    return *std::find_if(PolledValues.begin(), PolledValues.end(), [readOut](const PolledValue& value) {
        return value.isReadOut() && value.readOut == readOut;
    });
}

// A read-out's value is its place on the panel: each place has one row, and no row lacks its words.
constexpr bool areReadOutsWhole() {
    for (int place = 0; place < ReadOutCount; ++place) {
        const auto isHere = [place](const PolledValue& value) {
            return value.isReadOut() && static_cast<int>(value.readOut) == place && !value.control.empty() &&
                   !value.label.empty() && (value.kind == PolledValue::Kind::Band || value.position > 0);
        };
        if (std::count_if(PolledValues.begin(), PolledValues.end(), isHere) != 1)
            return false;
    }
    return true;
}
static_assert(areReadOutsWhole());
