#include "LinkState.h"

LinkState linkState(const SerialPort& port, const Globals& globals, bool isBusy,
                    std::optional<std::chrono::seconds> silence) {
    using Health = LinkState::Health;
    if (!port.isOpen())
        return {Health::Bad, QStringLiteral("Disconnected")};
    const QString name = port.serialPort().Name;
    if (globals.isUnknown() && isBusy)
        return {Health::Waiting, name + QStringLiteral(", asking...")};
    if (globals.isUnknown())
        return {Health::Bad, name + QStringLiteral(", no answer")};
    const QString place = QStringLiteral("%1, %2 bit/s, ").arg(name).arg(Baud::bitsPerSecond(port.Baud()));
    if (silence)
        return {Health::Bad, place + QStringLiteral("no answer for %1 s").arg(silence->count())};
    if (globals.isBootloader())
        return {Health::Waiting, place + QStringLiteral("Loader")};
    return {Health::Good, place + globals.m_strMcuVersion};
}
