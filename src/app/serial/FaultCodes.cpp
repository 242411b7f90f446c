#include "FaultCodes.h"

// clang-format off
QStringList CreateFaultCodesArray() {
    return {
        QStringLiteral("PWR ON"),   QStringLiteral("Power was turned on"),
        QStringLiteral("PWR OFF"),  QStringLiteral("Power lost without controlled shutdown"),
        QStringLiteral("HI CURR"),  QStringLiteral("Excessive power amplifier current"),
        QString(),                  QString(),
        QStringLiteral("HI TEMP"),  QStringLiteral("Power amplifier temperature over limit"),
        QString(),                  QString(),
        QStringLiteral("PWRIN HI"), QStringLiteral("Excessive driving power"),
        QStringLiteral("CNTR ERR"), QStringLiteral("Frequency counter failure"),
        QStringLiteral("60V HIGH"), QStringLiteral("60V supply over limit"),
        QStringLiteral("REFL HI"),  QStringLiteral("Excessive reflected power (High SWR)"),
        QString(),                  QString(),
        QStringLiteral("PA DISS"),  QStringLiteral("Power amplifiers are dissipating excessive power"),
        QStringLiteral("POUT HI"),  QStringLiteral("Excessive power output"),
        QStringLiteral("60V FAIL"), QStringLiteral("60V supply failure"),
        QStringLiteral("270V ERR"), QStringLiteral("270V supply failure"),
        QStringLiteral("GAIN ERR"), QStringLiteral("Excessive gain"),
    };
}
// clang-format on
