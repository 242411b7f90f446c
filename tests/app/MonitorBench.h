// The poll with a simulated amplifier and without a window.
#pragma once

#include "AmplifierBench.h"
#include "FakePanels.h"
#include "FaultCodes.h"
#include "StatusMonitor.h"

// The monitor as the main window has it, without a window.
struct Monitored : AmplifierBench {
    explicit Monitored(const Vlx720::Settings& settings = {}) : AmplifierBench(settings) {
        port.setBaud(Baud::codeOf(settings.speed));
        port.Open();
        port.DataAvailable = [this] {
            if (!window.mStartup && !line.isTaken())
                monitor.takeReceived();
        };
        globals.FaultCodes = CreateFaultCodesArray();
        globals.m_FirmwareStatus =
            settings.state == Vlx720::State::Waiting ? FirmwareStatus::Bootloader : FirmwareStatus::Main;
        window.mStartup = false;
    }

    // As if these bytes had come in one piece.
    void take(const QByteArray& bytes) {
        globals.m_VLXdata += QString::fromLatin1(bytes);
        monitor.processVLXdata();
    }

    FakeOperatePanel panel;
    StatusMonitor monitor{platform, globals, line, window, panel};
};
