// Bytes of any kind from the amplifier: every field is handled, the tail waits, and cutting the bytes
// elsewhere changes nothing on the panel.

#include "FakePanels.h"
#include "FaultCodes.h"
#include "Require.h"
#include "ScriptedDialogs.h"
#include "SimClock.h"
#include "SimulatedPort.h"
#include "StatusMonitor.h"

namespace {

const QString Untouched = QStringLiteral("untouched");

struct Monitored {
    Monitored() {
        panel.onOff = Untouched;
        globals.FaultCodes = CreateFaultCodesArray();
        globals.m_FirmwareStatus = FirmwareStatus::Main;
    }

    void take(const QByteArray& bytes) {
        globals.m_VLXdata += QString::fromLatin1(bytes);
        monitor.processVLXdata();
    }

    SimClock clock;
    Vlx720 amplifier{clock};
    SimulatedPort port{clock, amplifier};
    SimulatedPortList ports;
    ScriptedDialogs dialogs{clock};
    Platform platform{clock, port, ports, dialogs, {}};
    Globals globals{clock};
    LineOwner line;
    WindowState window;
    FakeOperatePanel panel;
    StatusMonitor monitor{platform, globals, line, window, panel};
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0)
        return 0;
    // The first byte says where the rest is cut in two.
    const QByteArray bytes(reinterpret_cast<const char*>(data) + 1, static_cast<qsizetype>(size) - 1);
    const qsizetype cut = std::min<qsizetype>(data[0], bytes.size());
    Monitored whole;
    whole.take(bytes);
    require(!whole.globals.m_VLXdata.contains(u';'));
    require(whole.globals.m_BandNumber >= 0 && whole.globals.m_BandNumber < OperatePanel::BandCount);
    // A short band answer empties the tail on purpose: then the cut may matter.
    if (whole.panel.onOff != Untouched)
        return 0;

    Monitored halves;
    halves.take(bytes.left(cut));
    halves.take(bytes.mid(cut));
    require(halves.globals.m_VLXdata == whole.globals.m_VLXdata);
    require(halves.panel.readOuts == whole.panel.readOuts);
    require(halves.panel.fault == whole.panel.fault && halves.panel.mode == whole.panel.mode);
    return 0;
}
