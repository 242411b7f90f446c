// The loader with a firmware folder on the bench.
#pragma once

#include "AmplifierBench.h"
#include "FakeFirmwarePanel.h"
#include "HexText.h"
#include "MCULoader.h"

struct LoadBench : AmplifierBench {
    explicit LoadBench(Vlx720::State state) : AmplifierBench(startingIn(state)) {
        // Otherwise the C library looks at the system's time zone file for every message.
        qputenv("TZ", "UTC");
        globals.m_FolderPath = world.path() + u'/';
        globals.m_FirmwareStatus =
            state == Vlx720::State::Waiting ? FirmwareStatus::SensedBootLoader : FirmwareStatus::Main;
        globals.m_dwBaudRate = 38400;
        port.Open();
    }

    static Vlx720::Settings startingIn(Vlx720::State state) { return {.state = state}; }

    // Makes this the newest image of the folder.
    void install(const QByteArray& hexText) {
        versionedFilename.m_mstrPath = QStringLiteral("VLX720FP0105.hex");
        panel.available = QStringLiteral("01.05");
        QFile file(globals.m_FolderPath + versionedFilename.m_mstrPath);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(hexText), hexText.size());
    }
    // The amplifier has taken the image as a whole.
    bool holds(const QByteArray& image) {
        return amplifier.flash().read(Flash::Begin, static_cast<int>(image.size())) == Image::loaded(image) &&
               amplifier.flash().isImageValid();
    }

    RadioState radioState{platform, globals, line};
    FakeFirmwarePanel panel;
    VersionedFilename versionedFilename;
    MCULoader loader{platform, globals, panel, radioState, line, versionedFilename};
};
