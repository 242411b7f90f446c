#include "Console.h"

#include <algorithm>
#include <array>

#include <QStringList>

#include "SerialPort.h"

namespace {

constexpr int HighestFault = 99;

QString stateText(const Vlx720& amplifier) {
    switch (amplifier.state()) {
        case Vlx720::State::Off:
            return QStringLiteral("off");
        case Vlx720::State::Waiting:
            return QStringLiteral("waiting");
        case Vlx720::State::Main:
            return QStringLiteral("main");
        case Vlx720::State::Restarting:
            return QStringLiteral("restarting");
    }
    return {};
}

// A whole number in a range.
bool readNumber(const QString& text, int lowest, int highest, int& number) {
    bool isNumber = false;
    number = text.toInt(&isNumber);
    return isNumber && number >= lowest && number <= highest;
}

bool raiseFault(Vlx720& amplifier, const QStringList& operands) {
    int code = 0;
    const bool isGood = readNumber(operands.value(0), 1, HighestFault, code);
    if (isGood)
        amplifier.raiseFault(code);
    return isGood;
}

bool switchPower(Vlx720& amplifier, const QStringList& operands) {
    if (operands.value(0) == QLatin1String("on"))
        amplifier.powerOn();
    else if (operands.value(0) == QLatin1String("off"))
        amplifier.powerOff();
    else
        return false;
    return true;
}

bool pressButton(Vlx720& amplifier, const QStringList& /*operands*/) {
    amplifier.pressPowerButton();
    return true;
}

bool setSpeed(Vlx720& amplifier, const QStringList& operands) {
    const int bitsPerSecond = operands.value(0).toInt();
    const bool isGood = Baud::codeOf(bitsPerSecond) != 0;
    if (isGood)
        amplifier.setSpeed(bitsPerSecond);
    return isGood;
}

bool setBand(Vlx720& amplifier, const QStringList& operands) {
    int band = 0;
    const bool isGood = readNumber(operands.value(0), 0, MainFirmware::HighestBand, band);
    if (isGood)
        amplifier.setBand(band);
    return isGood;
}

bool setVersion(Vlx720& amplifier, const QStringList& operands) {
    amplifier.setFirmwareVersion(operands.value(0).toLatin1());
    return !operands.isEmpty();
}

bool misbehave(Vlx720& amplifier, const QStringList& operands) {
    const auto named = namedMisbehaviours();
    const auto found = std::find_if(named.begin(), named.end(), [&operands](const NamedMisbehaviour& m) {
        return operands.value(0) == m.name;
    });
    if (found == named.end())
        return false;
    Misbehaviour misbehaviour = found->example;
    if (operands.size() > 1)
        misbehaviour.nth = std::max(operands[1].toInt(), 0);
    amplifier.misbehave(misbehaviour);
    return true;
}

bool behave(Vlx720& amplifier, const QStringList& /*operands*/) {
    amplifier.behave();
    return true;
}

bool showStatus(Vlx720& /*amplifier*/, const QStringList& /*operands*/) {
    return true;
}

struct Command {
    QLatin1String name;
    QLatin1String operands;
    // False when the operands are wrong.
    bool (*run)(Vlx720& amplifier, const QStringList& operands);
};

constexpr std::array Commands = {
    Command{QLatin1String("fault"), QLatin1String("CODE"), raiseFault},
    Command{QLatin1String("power"), QLatin1String("on|off"), switchPower},
    Command{QLatin1String("button"), QLatin1String(""), pressButton},
    Command{QLatin1String("speed"), QLatin1String("38400|19200|9600|4800"), setSpeed},
    Command{QLatin1String("band"), QLatin1String("0..10"), setBand},
    Command{QLatin1String("version"), QLatin1String("NN.NN"), setVersion},
    Command{QLatin1String("misbehave"), QLatin1String("NAME [NTH]"), misbehave},
    Command{QLatin1String("behave"), QLatin1String(""), behave},
    Command{QLatin1String("status"), QLatin1String(""), showStatus},
};

QString usageOf(const Command& command) {
    return QStringLiteral("%1 %2").arg(command.name, command.operands).trimmed();
}

QString help() {
    QStringList lines;
    for (const Command& command : Commands)
        lines += usageOf(command);
    QStringList names;
    for (const NamedMisbehaviour& misbehaviour : namedMisbehaviours())
        names += misbehaviour.name;
    lines += QStringLiteral("NAME: ") + names.join(u' ');
    return lines.join(u'\n');
}

QString status(const Vlx720& amplifier) {
    return QStringLiteral("%1, %2 bit/s, version %3, band %4, %5, fault %6")
        .arg(stateText(amplifier))
        .arg(amplifier.speed())
        .arg(QString::fromLatin1(amplifier.firmwareVersion()))
        .arg(amplifier.band())
        .arg(amplifier.isOperating() ? QStringLiteral("operate") : QStringLiteral("standby"))
        .arg(amplifier.fault());
}

}  // namespace

QString runConsoleCommand(Vlx720& amplifier, const QString& line) {
    const QStringList words = line.split(u' ', Qt::SkipEmptyParts);
    if (words.isEmpty())
        return {};
    const auto* command = std::find_if(Commands.begin(), Commands.end(),
                                       [&words](const Command& c) { return words.first() == c.name; });
    if (command == Commands.end())
        return help();
    return command->run(amplifier, words.mid(1)) ? status(amplifier)
                                                 : QStringLiteral("usage: ") + usageOf(*command);
}
