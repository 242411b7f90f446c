// Firmware files of any content: both passes end, say a bounded number of things, and stay in step.

#include <QFile>
#include <QTemporaryDir>

#include "IntelHexReader.h"
#include "Require.h"
#include "ScriptedDialogs.h"
#include "SimClock.h"
#include "SimulatedPort.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("image.hex")));
    require(file.open(QIODevice::WriteOnly));
    file.write(reinterpret_cast<const char*>(data), static_cast<qint64>(size));
    file.close();

    // The reader has no use for an amplifier, and making one takes longer than reading.
    static SimClock clock;
    static Vlx720 amplifier(clock);
    static SimulatedPort port(clock, amplifier);
    static SimulatedPortList ports;
    ScriptedDialogs dialogs(clock);
    Platform platform{clock, port, ports, dialogs, {}};
    Globals globals(clock);
    qsizetype messages = 0;
    globals.StatusField = [&messages](const QString&) { ++messages; };
    IntelHexReader reader(platform, globals);

    Task<bool> verification = reader.Verify(file.fileName());
    require(clock.run(verification));
    const bool isGood = verification.result();
    require(isGood == (messages == 0 && dialogs.shown.isEmpty()));
    require(messages <= 2 && dialogs.shown.size() < IntelHexReader::LongestRecord);
    require(reader.state().m_dwcbRead <= size);

    // The second pass sees what the first one saw.
    reader.OpenPass(file.fileName());
    bool isReading = true;
    while (isReading && !reader.state().m_fIsEndOfFile && !reader.isAtEnd()) {
        Task<bool> next = reader.ReadNext();
        require(clock.run(next));
        isReading = next.result();
    }
    require(isReading == isGood);
    require(clock.pendingWaits() == 0);
    return 0;
}
