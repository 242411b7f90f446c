#include "FaultCodes.h"

#include <array>

namespace {

struct FaultCode {
    QStringView shortName;
    QStringView longText;
};

// By their codes; those that the amplifier does not use are empty.
// clang-format off
constexpr auto FaultTable = std::to_array<FaultCode>({
    {u"PWR ON",   u"Power was turned on"},
    {u"PWR OFF",  u"Power lost without controlled shutdown"},
    {u"HI CURR",  u"Excessive power amplifier current"},
    {},
    {u"HI TEMP",  u"Power amplifier temperature over limit"},
    {},
    {u"PWRIN HI", u"Excessive driving power"},
    {u"CNTR ERR", u"Frequency counter failure"},
    {u"60V HIGH", u"60V supply over limit"},
    {u"REFL HI",  u"Excessive reflected power (High SWR)"},
    {},
    {u"PA DISS",  u"Power amplifiers are dissipating excessive power"},
    {u"POUT HI",  u"Excessive power output"},
    {u"60V FAIL", u"60V supply failure"},
    {u"270V ERR", u"270V supply failure"},
    {u"GAIN ERR", u"Excessive gain"},
});
// clang-format on

}  // namespace

QStringList CreateFaultCodesArray() {
    QStringList rows;
    for (const FaultCode& code : FaultTable)
        rows << code.shortName.toString() << code.longText.toString();
    return rows;
}
