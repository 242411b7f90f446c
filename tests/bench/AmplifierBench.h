// The bench that flows are tested on: a simulated amplifier on a simulated clock, answered dialogs, a
// temporary world with an awkward name, and a record of all that was logged.
#pragma once

#include <QDir>
#include <QStringList>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include "Globals.h"
#include "LineOwner.h"
#include "Platform.h"
#include "ScriptedDialogs.h"
#include "SimClock.h"
#include "SimulatedPort.h"
#include "WindowState.h"

class AmplifierBench {
public:
    explicit AmplifierBench(const Vlx720::Settings& settings = {}) : amplifier(clock, settings) {
        globals.StatusField = [this](const QString& text) {
            // Without the time stamp and the line end.
            log += text.mid(9).chopped(1);
            line_and_log += QStringLiteral("log ") + log.back();
        };
        port.Written = [this](const QByteArray& bytes) {
            line_and_log += QStringLiteral("out ") + QString::fromLatin1(bytes);
        };
        port.setSerialPort(ports.ports.front());
    }

    QTemporaryDir world{QDir::tempPath() + QStringLiteral("/vlx bench Ä XXXXXX")};
    SimClock clock;
    Vlx720 amplifier;
    SimulatedPort port{clock, amplifier};
    SimulatedPortList ports{{{QStringLiteral("ttyUSB0"), QStringLiteral("/dev/ttyUSB0")}}};
    ScriptedDialogs dialogs{clock};
    Platform platform{clock,
                      port,
                      ports,
                      dialogs,
                      {world.filePath(QStringLiteral("data")), world.filePath(QStringLiteral("config")),
                       world.filePath(QStringLiteral("tmp")), world.filePath(QStringLiteral("bin"))}};
    Globals globals{clock};
    LineOwner line;
    WindowState window;
    QStringList log;
    // The whole conversation in order: what went out on the line and what the log said.
    QStringList line_and_log;
};
