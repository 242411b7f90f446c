// The amplifier's commands, as they go out on the line. Case matters.
#pragma once

#include <QByteArray>

namespace Command {

// Each is answered by at least one ";" at the right speed.
inline const QByteArray Empty = QByteArrayLiteral(";");
inline const QByteArray FiveEmpty = QByteArrayLiteral(";;;;;");
// The bootloader's answer begins "VLX720", the main firmware's does not.
inline const QByteArray Identify = QByteArrayLiteral("I;");
inline const QByteArray ReadVersion = QByteArrayLiteral("^RVM;");

inline const QByteArray Operate = QByteArrayLiteral("^OS1;^OS;");
inline const QByteArray Standby = QByteArrayLiteral("^OS0;^OS;");
inline const QByteArray ClearFault = QByteArrayLiteral("^FLC;^FL;");
// From the main firmware to the waiting state, and back.
inline const QByteArray PowerOff = QByteArrayLiteral("^on0;");
inline const QByteArray PowerOn = QByteArrayLiteral("P;");
inline const QByteArray EnterHiddenMode = QByteArrayLiteral("M7H;");
inline const QByteArray LeaveHiddenMode = QByteArrayLiteral("M70;");
inline const QByteArray AutomaticInfoOff = QByteArrayLiteral("AI0;");

}  // namespace Command
