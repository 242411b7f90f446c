// Measures the main window: start, memory, processor time of the poll, parsing, sensing.
//
// Without arguments it runs itself for each figure, prints a table with the limits, and fails when one is
// not met.

#include <cstdio>
#include <ctime>
#include <optional>

#include <sys/resource.h>

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QLabel>
#include <QMainWindow>
#include <QProcess>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTimer>

#include "App.h"
#include "FaultCodes.h"
#include "LineRecord.h"
#include "PolledValues.h"
#include "ScriptedDialogs.h"
#include "SimClock.h"
#include "SimulatedPort.h"
#include "SystemClock.h"
#include "Text.h"
#include "Trends.h"

using namespace std::chrono_literals;

namespace {

constexpr int Starts = 9;
constexpr auto PollTime = 10s;
// What sensing an amplifier that answers at once has to wait: 100 ms, and three looks 5 ms apart.
constexpr double ProtocolWaitsMs = 115;

// The program with a simulated amplifier that answers at once, in real time.
struct LiveProgram {
    LiveProgram() {
        amplifier.setInstantLine(true);
        port.setInstantLine(true);
        QDir().mkpath(platform.folders.executable + QStringLiteral("/Help"));
        app.emplace(platform, [](const std::exception_ptr&) {}, &QApplication::quit);
        app->Event_Open();
    }

    QTemporaryDir world;
    SystemClock clock;
    Vlx720 amplifier{clock};
    SimulatedPort port{clock, amplifier};
    SimulatedPortList ports{{{QStringLiteral("ttyUSB0"), QStringLiteral("/dev/ttyUSB0")}}};
    ScriptedDialogs dialogs{clock};
    Platform platform{clock,
                      port,
                      ports,
                      dialogs,
                      {world.filePath(QStringLiteral("data")), world.filePath(QStringLiteral("config")),
                       world.path(), world.filePath(QStringLiteral("bin"))}};
    std::optional<App> app;
};

Task<> whenVisible(Clock& clock, const QWidget& window, std::function<void()> action) {
    while (!window.isVisible())
        co_await clock.sleep(1ms);
    action();
}

void tellAndQuit(double figure) {
    std::printf("%f\n", figure);
    std::fflush(stdout);
    QApplication::quit();
}

int runBareWindow() {
    QMainWindow window;
    auto* tabs = new QTabWidget;
    for (int tab = 0; tab < 5; ++tab)
        tabs->addTab(new QLabel(QStringLiteral("page")), QStringLiteral("tab"));
    window.setCentralWidget(tabs);
    window.resize(615, 540);
    window.show();
    QTimer::singleShot(0, [] { tellAndQuit(0); });
    return QApplication::exec();
}

int runStart() {
    LiveProgram program;
    const Task<> waiting = whenVisible(program.clock, program.app->mainWindow(), [] { tellAndQuit(0); });
    return QApplication::exec();
}

double residentMiB() {
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray& line : status.readAll().split('\n'))
        if (line.startsWith("VmRSS:"))
            return line.mid(6).chopped(2).trimmed().toDouble() / 1024;
    return 0;
}

double processorSeconds() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    const auto seconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
    };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

// Polls for a while, then tells memory in MiB, or processor time in percent of one core.
Task<> poll(LiveProgram& program, bool tellMemory) {
    while (!program.app->mainWindow().isVisible())
        co_await program.clock.sleep(1ms);
    program.app->mainWindow().setTab(static_cast<int>(Tab::Operate));
    co_await program.clock.sleep(1s);
    const double before = processorSeconds();
    co_await program.clock.sleep(PollTime);
    const double share =
        (processorSeconds() - before) / std::chrono::duration<double>(PollTime).count() * 100;
    tellAndQuit(tellMemory ? residentMiB() : share);
}

int runPoll(bool tellMemory) {
    LiveProgram program;
    const Task<> polling = poll(program, tellMemory);
    return QApplication::exec();
}

// The record of the line while the status is polled, in percent of one core: eight commands, two more than
// there are, and what answers them, each second.
double recordPercent() {
    constexpr int Seconds = 20000;
    SimClock clock;
    LineRecord record(clock);
    const std::clock_t start = std::clock();
    for (int second = 0; second < Seconds; ++second) {
        for (const PolledValue& value : PolledValues) {
            record.add(
                {.kind = TranscriptEvent::Kind::Out, .bytes = Text::toLine(value.token.toString() + u';')});
            record.add({.kind = TranscriptEvent::Kind::In, .bytes = "^WS0500 012;"});
        }
        clock.advance(1s);
    }
    return 100 * static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC / Seconds;
}

// The trends of so many seconds, and in each what the line can carry at most: a record of single bytes is the
// largest.
struct Kept {
    explicit Kept(std::size_t seconds) {
        for (std::size_t second = 0; second < seconds; ++second) {
            for (int series = 0; series < static_cast<int>(Trends::SeriesCount); ++series)
                trends.note(static_cast<Trends::Series>(series), 1);
            trends.noteBand(QString::number(second));
            for (int byte = 0; byte < 3840; ++byte)
                record.add({.kind = TranscriptEvent::Kind::In, .bytes = "^"});
            clock.advance(1s);
        }
    }

    SimClock clock;
    Trends trends{clock};
    LineRecord record{clock};
};

// In MiB, without the program's own code.
double keptMiB() {
    const Kept aSecond(1);
    const double before = residentMiB();
    const Kept anHour(Trends::SampleLimit);
    return residentMiB() - before;
}

struct Outcome {
    double milliseconds = 0;  // from the start of the process to its figure
    double figure = 0;
};

Outcome runSelf(const QString& mode) {
    QProcess process;
    QElapsedTimer elapsed;
    elapsed.start();
    process.start(QCoreApplication::applicationFilePath(), {mode}, QIODevice::ReadOnly);
    Outcome outcome;
    if (!process.waitForReadyRead(30000)) {
        std::fprintf(stderr, "%s gave no figure\n", qPrintable(mode));
        std::exit(2);
    }
    outcome.milliseconds = static_cast<double>(elapsed.nsecsElapsed()) / 1e6;
    outcome.figure = process.readAllStandardOutput().trimmed().toDouble();
    process.waitForFinished();
    return outcome;
}

double medianStart(const QString& mode) {
    std::vector<double> times;
    times.reserve(Starts);
    for (int start = 0; start < Starts; ++start)
        times.push_back(runSelf(mode).milliseconds);
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

// Mean time of one burst from its bytes to the painted panel, in milliseconds.
double burstMilliseconds() {
    LiveProgram program;
    Globals& globals = program.app->globals();
    program.app->mainWindow().setTab(static_cast<int>(Tab::Operate));
    program.app->mainWindow().show();
    program.app->monitor().stopPoll();
    QCoreApplication::processEvents();
    globals.FaultCodes = CreateFaultCodesArray();
    constexpr int Bursts = 2000;
    QElapsedTimer elapsed;
    elapsed.start();
    for (int burst = 0; burst < Bursts; ++burst) {
        // Values move between bursts as they do in the field: in the last digit or two.
        globals.m_VLXdata = QStringLiteral("^BN05;^FL00;^OS1;^WS%1 012;^TM%2;^VI532 %3;")
                                .arg(500 + burst % 10)
                                .arg(30 + burst / 100 % 10, 3, 10, QLatin1Char('0'))
                                .arg(150 + burst % 10);
        program.app->monitor().processVLXdata();
        QCoreApplication::sendPostedEvents();
    }
    return static_cast<double>(elapsed.nsecsElapsed()) / 1e6 / Bursts;
}

// Sensed time over prescribed waits: 100 ms and 20 ticks for a speed that stays silent, 100 ms and one look
// for the one that answers, one look for each of the other answers.
double sensingRatio(int speed, int silentSpeeds) {
    SimClock clock;
    Vlx720::Settings settings;
    settings.speed = speed;
    Vlx720 amplifier(clock, settings);
    SimulatedPort port(clock, amplifier);
    amplifier.setInstantLine(true);
    port.setInstantLine(true);
    SimulatedPortList ports;
    ScriptedDialogs dialogs(clock);
    Platform platform{clock, port, ports, dialogs, {}};
    Globals globals(clock);
    LineOwner line;
    RadioState radioState(platform, globals, line);
    port.Open();
    Task<bool> task = radioState.Refresh(0);
    if (!clock.run(task) || !task.result())
        return 1e9;
    const double looks = silentSpeeds == 0 ? 3 : 2;
    const double prescribed = silentSpeeds * (100 + 21 * 1000.0 / 60) + 100 + looks * 5;
    return static_cast<double>(clock.now().count()) / 1000 / prescribed;
}

bool judge(const char* what, double figure, const char* unit, double limit) {
    const bool isMet = figure <= limit;
    std::printf("%-58s %9.3f %-5s limit %8.3f  %s\n", what, figure, unit, limit, isMet ? "PASS" : "FAIL");
    std::fflush(stdout);
    return isMet;
}

int runAll() {
    const double bare = medianStart(QStringLiteral("--bare"));
    const double start = medianStart(QStringLiteral("--start")) - ProtocolWaitsMs;
    std::printf("%-58s %9.3f ms\n", "start of a bare window with a tab widget", bare);
    bool isMet = judge("start to shown main window, over the bare window", start - bare, "ms", 60);
    isMet = judge("resident memory while polling", runSelf(QStringLiteral("--memory")).figure, "MiB", 45) &&
            isMet;
    isMet =
        judge("processor time of the poll", runSelf(QStringLiteral("--processor")).figure, "%", 1) && isMet;
    isMet = judge("an hour of trends and a full record of the line", keptMiB(), "MiB", 1) && isMet;
    isMet = judge("record of the line while polling", recordPercent(), "%", 0.1) && isMet;
    isMet = judge("one burst of six answers, parsed and shown", burstMilliseconds(), "ms", 0.2) && isMet;
    isMet =
        judge("sensing at 38400 bit/s over the prescribed waits", sensingRatio(38400, 0), "", 1.05) && isMet;
    isMet =
        judge("sensing at 19200 bit/s over the prescribed waits", sensingRatio(19200, 1), "", 1.05) && isMet;
    isMet =
        judge("sensing at 9600 bit/s over the prescribed waits", sensingRatio(9600, 2), "", 1.05) && isMet;
    isMet =
        judge("sensing at 4800 bit/s over the prescribed waits", sensingRatio(4800, 3), "", 1.05) && isMet;
    return isMet ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    const QString mode = QCoreApplication::arguments().value(1);
    if (mode == u"--bare")
        return runBareWindow();
    if (mode == u"--start")
        return runStart();
    if (mode == u"--memory" || mode == u"--processor")
        return runPoll(mode == u"--memory");
    return runAll();
}
