// The utility with a simulated amplifier on its serial line, in one process; or with a real one, to keep
// what passes on the line.

#include <cstdio>
#include <optional>

#include <QCommandLineParser>
#include <QDir>
#include <QFile>
#include <QIcon>
#include <QTemporaryDir>

#include "App.h"
#include "DefaultErrorHandler.h"
#include "GuardedApplication.h"
#include "QtDialogs.h"
#include "QtSerialPort.h"
#include "SampleImage.h"
#include "SimulatedPort.h"
#include "SimulatorWindow.h"
#include "SystemClock.h"
#include "Tour.h"
#include "Transcript.h"

namespace {

// The demo's own world: nothing of it reaches the user's files, and all of it goes at the end.
SpecialFolders demoFolders(const QTemporaryDir& world) {
    SpecialFolders folders{world.filePath(QStringLiteral("data")), world.filePath(QStringLiteral("config")),
                           QDir::tempPath(), QCoreApplication::applicationDirPath()};
    QDir().mkpath(folders.applicationData + QStringLiteral("/Tessarin/VLX Firmware"));
    QFile image(folders.applicationData + QStringLiteral("/Tessarin/VLX Firmware/VLX720FP0124.hex"));
    if (image.open(QIODevice::WriteOnly))
        image.write(sampleImage("0124"));
    return folders;
}

Task<> tourAndQuit(Tour& tour) {
    const bool isComplete = co_await tour.run();
    if (!isComplete)
        std::fputs("The tour could not write all of its pictures.\n", stderr);
    QCoreApplication::exit(isComplete ? 0 : 1);
}

struct Options {
    QString tourFolder;
    QString realPort;
    QString recordFile;
};

// Ends the program when it asked for help or cannot be understood.
Options readCommandLine(const QApplication& application) {
    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addOptions({
        {QStringLiteral("tour"), QStringLiteral("Walk through the program and leave pictures in <folder>."),
         QStringLiteral("folder")},
        {QStringLiteral("port"),
         QStringLiteral("Use a real serial port in place of the simulated amplifier."),
         QStringLiteral("device")},
        {QStringLiteral("record"), QStringLiteral("Write a transcript of the line to <file>."),
         QStringLiteral("file")},
    });
    parser.process(application);
    return {parser.value(QStringLiteral("tour")), parser.value(QStringLiteral("port")),
            parser.value(QStringLiteral("record"))};
}

// The simulated line or a real one, with a record of it if that was asked for.
class DemoLine {
public:
    DemoLine(Clock& clock, const Options& options)
        : amplifier(clock), simulated(clock, amplifier), m_file(options.recordFile) {
        if (!options.realPort.isEmpty()) {
            m_real.emplace(clock);
            ports.ports = {{options.realPort, options.realPort}};
        }
        if (!options.recordFile.isEmpty() && m_file.open(QIODevice::WriteOnly | QIODevice::Text))
            m_recording.emplace(line(), clock, m_file);
    }

    bool isRecordFailed() const { return !m_file.fileName().isEmpty() && !m_file.isOpen(); }

    SerialPort& line() {
        if (m_recording)
            return *m_recording;
        return m_real ? static_cast<SerialPort&>(*m_real) : simulated;
    }

    Vlx720 amplifier;
    SimulatedPort simulated;
    SimulatedPortList ports{{{QStringLiteral("simulated VLX720"), QStringLiteral("simulated")}}};

private:
    QFile m_file;
    std::optional<QtSerialPort> m_real;
    std::optional<RecordingPort> m_recording;
};

}  // namespace

int main(int argc, char** argv) {
    GuardedApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("vlxutility-demo"));
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/vlxutility.png")));
    const Options options = readCommandLine(application);

    const QTemporaryDir world;
    SystemClock clock;
    DemoLine line(clock, options);
    if (line.isRecordFailed()) {
        std::fputs("The transcript cannot be written.\n", stderr);
        return 1;
    }
    QtDialogs dialogs(clock);
    Platform platform{clock, line.line(), line.ports, dialogs, demoFolders(world)};

    Globals* log = nullptr;
    DefaultErrorHandler errors(dialogs, [&log](const QString& text) {
        if (log)
            log->SetStatusText(text, false);
    });
    const auto onError = [&errors](const std::exception_ptr& error) { errors.handle(error); };
    application.setErrorHandler(onError);
    App app(platform, onError, &QApplication::quit);
    log = &app.globals();
    dialogs.setMainWindow(&app.mainWindow());
    SimulatorWindow simulator(line.amplifier, line.simulated);
    app.Event_Open();

    Tour tour(clock, app, line.amplifier, options.tourFolder);
    std::optional<Task<>> walking;
    if (!options.tourFolder.isEmpty())
        walking = tourAndQuit(tour);
    else if (options.realPort.isEmpty())
        simulator.show();
    return QApplication::exec();
}
