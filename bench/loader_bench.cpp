// Figures for the loader: verification against objcopy, and a load of a full image in real time on a
// simulated line. Takes about two minutes; ends with 1 when a figure is not reached.
#include <cstdio>
#include <ctime>

#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QProcess>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTimer>

#include "FakeFirmwarePanel.h"
#include "HexText.h"
#include "LoadWindow.h"
#include "ScriptedDialogs.h"
#include "SimulatedPort.h"
#include "SystemClock.h"

namespace {

constexpr int Repetitions = 15;
constexpr int MegabyteFile = 1000000;
constexpr double LineSpeed = 38400;
constexpr double BitsPerByte = 10;
constexpr double PollStep = 0.005;
constexpr double HandOverWait = 2.0;  // after "^LDM;"
constexpr double LongestRepaintGap = 0.050;

struct Rig {
    Rig() {
        globals.m_FolderPath = folder.path() + u'/';
        globals.m_FirmwareStatus = FirmwareStatus::Main;
        globals.m_dwBaudRate = LineSpeed;
        versionedFilename.m_mstrPath = QStringLiteral("VLX720FP0105.hex");
        panel.available = QStringLiteral("01.05");
        port.Open();
    }

    QString write(const QByteArray& contents) const {
        QFile file(globals.m_FolderPath + versionedFilename.m_mstrPath);
        if (!file.open(QIODevice::WriteOnly) || file.write(contents) != contents.size())
            qFatal("cannot write %s", qPrintable(file.fileName()));
        return file.fileName();
    }

    QTemporaryDir folder;
    SystemClock clock;
    Vlx720 amplifier{clock};
    SimulatedPort port{clock, amplifier};
    SimulatedPortList ports;
    ScriptedDialogs dialogs{clock};
    Platform platform{clock, port, ports, dialogs, {}};
    Globals globals{clock};
    LineOwner line;
    RadioState radioState{platform, globals, line};
    FakeFirmwarePanel panel;
    VersionedFilename versionedFilename;
    MCULoader loader{platform, globals, panel, radioState, line, versionedFilename};
};

bool report(bool isReached, const char* what, const QString& figures) {
    std::printf("%s  %-34s %s\n", isReached ? "PASS" : "FAIL", what, qPrintable(figures));
    std::fflush(stdout);
    return isReached;
}

template <typename Run>
double fastest(Run run) {
    double best = 1e9;
    for (int i = 0; i < Repetitions; ++i) {
        QElapsedTimer timer;
        timer.start();
        run();
        best = std::min(best, static_cast<double>(timer.nsecsElapsed()) / 1e9);
    }
    return best;
}

// Linear addresses throughout, as objcopy reads them.
QByteArray megabyteOfRecords() {
    QByteArray text;
    for (int address = 0; text.size() < MegabyteFile; address += 16) {
        if (address % 0x10000 == 0)
            text += HexText::record(4, 0, QByteArray(1, '\0') + static_cast<char>(address >> 16));
        text += HexText::record(0, address & 0xFFFF, QByteArray(16, static_cast<char>(address >> 4)));
    }
    return text + HexText::end();
}

double objcopyTime(const QString& file) {
    return fastest([&file] {
        const QStringList arguments{QStringLiteral("-I"),
                                    QStringLiteral("ihex"),
                                    QStringLiteral("-O"),
                                    QStringLiteral("binary"),
                                    file,
                                    file + QStringLiteral(".bin")};
        if (QProcess::execute(QStringLiteral("objcopy"), arguments) != 0)
            qFatal("objcopy is needed, and must read the file");
    });
}

bool benchVerification() {
    Rig rig;
    const double startUp = objcopyTime(rig.write(HexText::record(0, 0, "x") + HexText::end()));
    const QString file = rig.write(megabyteOfRecords());
    const double theirs = objcopyTime(file) - startUp;
    const double ours = fastest([&rig, &file] {
        QEventLoop loop;
        Task<bool> verification = rig.loader.Verify(file);
        while (!verification.isDone())
            loop.processEvents(QEventLoop::WaitForMoreEvents);
        if (!verification.result())
            qFatal("the file does not verify");
    });
    return report(ours <= theirs, "verification of 1 MB",
                  QStringLiteral("%1 ms; objcopy %2 ms without its start-up of %3 ms")
                      .arg(ours * 1e3, 0, 'f', 2)
                      .arg(theirs * 1e3, 0, 'f', 2)
                      .arg(startUp * 1e3, 0, 'f', 2));
}

struct Moment {
    Clock::Microseconds time{0};
    std::clock_t processor = 0;
};

bool benchLoad(bool isTraceOn) {
    Rig rig;
    const QByteArray image = Image::make(Image::FullBlocks);
    rig.write(HexText::file(image));
    rig.globals.m_Verbose = isTraceOn;

    // From the first byte on the line to the answer to the final block.
    Moment begin;
    Moment end;
    rig.port.Written = [&](const QByteArray& bytes) {
        if (bytes == "^LDM;")
            begin = {rig.clock.now(), std::clock()};
        if (bytes == "P;")
            end = {rig.clock.now(), std::clock()};
    };
    QWidget mainWindow;
    Task<bool> flow = LoadMcu(rig.platform, rig.globals, rig.loader, rig.versionedFilename, mainWindow);
    double longestGap = 0;
    QElapsedTimer sinceTurn;
    sinceTurn.start();
    QTimer turn;
    QObject::connect(&turn, &QTimer::timeout, &turn, [&] {
        longestGap = std::max(longestGap, static_cast<double>(sinceTurn.nsecsElapsed()) / 1e9);
        sinceTurn.restart();
        auto* const closeIt = mainWindow.findChild<QPushButton*>(QStringLiteral("CloseIt"));
        if (end.time.count() > 0 && closeIt && closeIt->isEnabled())
            closeIt->click();
    });
    turn.start(10);
    QEventLoop loop;
    while (!flow.isDone())
        loop.processEvents(QEventLoop::WaitForMoreEvents);

    const bool isLoaded =
        rig.amplifier.flash().read(Flash::Begin, static_cast<int>(image.size())) == Image::loaded(image);
    constexpr int answers = 1 + Image::FullBlocks + 1;
    const double lineTime =
        static_cast<double>(5 + 1 + (Image::FullBlocks + 1) * 68 + answers) * BitsPerByte / LineSpeed;
    const double limit = lineTime + answers * PollStep + HandOverWait;
    const double taken = std::chrono::duration<double>(end.time - begin.time).count();
    const double share = static_cast<double>(end.processor - begin.processor) / CLOCKS_PER_SEC / taken;
    const double shareLimit = isTraceOn ? 0.06 : 0.03;
    const char* const trace = isTraceOn ? " (trace on)" : " (trace off)";
    bool isReached = report(isLoaded && taken <= limit, (std::string("load of a full image") + trace).c_str(),
                            QStringLiteral("%1 s of %2 s allowed; the line's own time is %3 s, ratio %4")
                                .arg(taken, 0, 'f', 2)
                                .arg(limit, 0, 'f', 2)
                                .arg(lineTime, 0, 'f', 2)
                                .arg(taken / lineTime, 0, 'f', 3));
    isReached &= report(share < shareLimit, (std::string("processor time") + trace).c_str(),
                        QStringLiteral("%1 % of one core, the amplifier's included; below %2 %")
                            .arg(share * 100, 0, 'f', 2)
                            .arg(shareLimit * 100, 0, 'f', 0));
    isReached &=
        report(longestGap < LongestRepaintGap, (std::string("longest repaint gap") + trace).c_str(),
               QStringLiteral("%1 ms, on a timer of 10 ms; below 50 ms").arg(longestGap * 1e3, 0, 'f', 1));
    return isReached;
}

}  // namespace

int main(int argc, char** argv) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    bool isReached = benchVerification();
    for (const bool isTraceOn : {false, true})
        isReached &= benchLoad(isTraceOn);
    return isReached ? 0 : 1;
}
