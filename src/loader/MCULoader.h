// Loads new firmware into the amplifier: verifies the image, sends it through the bootstrap loader, and
// reads the new version back.
#pragma once

#include <cstdint>
#include <utility>

#include <QString>

#include "BootstrapLink.h"
#include "FirmwarePanel.h"
#include "ImageBlock.h"
#include "ImagePlan.h"
#include "IntelHexReader.h"
#include "LineOwner.h"
#include "LoadView.h"
#include "RadioState.h"
#include "VersionedFilename.h"

// One load or verification at a time. A load that is cancelled leaves the amplifier in its bootstrap
// loader: the user removes its power and loads again, as after any failed load.
class MCULoader {
public:
    MCULoader(Platform& platform, Globals& globals, FirmwarePanel& panel, RadioState& radioState,
              LineOwner& line, const VersionedFilename& versionedFilename);
    MCULoader(const MCULoader&) = delete;
    MCULoader& operator=(const MCULoader&) = delete;

    // The whole-file pass on a path; false with the reader's messages.
    Task<bool> Verify(QString path) { return m_reader.Verify(std::move(path)); }
    // The same for a file of the firmware folder, with the result in the log.
    Task<bool> ValidateIntelHex(QString filename);

    // Verifies and loads the newest local image. What went wrong stands in the log.
    Task<bool> Load(LoadView& view);
    // Sends a file of the firmware folder and reads the version back; before that, the user is asked about a
    // file that is no complete image. A version that differs from the file's still counts as success when the
    // amplifier answered: only the log tells.
    Task<bool> Load2(QString filename, LoadView& view);

private:
    struct Image;

    // What was planned of the file, before anything is sent.
    struct Plan {
        QByteArray digest;
        bool hasEndRecord = false;
    };

    Task<bool> exchange(QString filename, LoadView& view);
    Task<bool> makePlan(QString path, Plan& plan);
    Task<bool> isWantedAllTheSame(QString objection);
    // What a file is that ends without an end record.
    enum class End { IsFault, IsNoFault };
    Task<bool> nextBlock(Image& image, End end);
    Task<bool> sendBlocks(Image& image, LoadView& view);
    bool isAsPlanned(const Image& image, const Plan& plan);
    Task<bool> sendBlock(Image& image, LoadView& view);
    Task<bool> sendFinalBlock(Image& image, LoadView& view);
    Task<bool> readBackVersion();

    Dialogs& m_dialogs;
    Globals& m_globals;
    FirmwarePanel& m_panel;
    RadioState& m_radioState;
    LineOwner& m_line;
    const VersionedFilename& m_versionedFilename;
    IntelHexReader m_reader;
    BootstrapLink m_link;
};
