// Reads any bytes as a configuration file, in both passes, with no amplifier behind the port.
#include <cstddef>
#include <cstdint>

#include <QBuffer>

#include "SaveRestoreM7Config.h"
#include "ScriptedDialogs.h"
#include "SimClock.h"
#include "SimulatedPort.h"

namespace {

class NoView : public ProgressView {
public:
    void setStaticText1(const QString&) override {}
    void setProgressBar1Maximum(int) override {}
    void setProgressBar1Value(int) override {}
    void showInPlace() override {}
    void closeWindow() override {}
};

std::unique_ptr<QIODevice> deviceOf(const QByteArray& content) {
    auto buffer = std::make_unique<QBuffer>();
    buffer->setData(content);
    buffer->open(QIODevice::ReadOnly);
    return buffer;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QByteArray content(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    SimClock clock;
    Vlx720 amplifier(clock);
    SimulatedPort port(clock, amplifier);
    SimulatedPortList ports;
    ScriptedDialogs dialogs(clock);
    Platform platform{clock, port, ports, dialogs, {}};
    Globals globals(clock);
    MemoryAccess memory(platform, globals);
    MemoryFileWriter file(clock, globals, memory);
    NoView view;
    SaveRestoreM7Config configuration(platform, globals, memory, file, view);
    for (const bool apply : {false, true}) {
        configuration.input().setFileInstream(deviceOf(content));
        Task<bool> pass = configuration.RestoreData(apply);
        if (!clock.run(pass, std::chrono::hours(24 * 365)))
            __builtin_trap();
        pass.result();
    }
    return 0;
}
