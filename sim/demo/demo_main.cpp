// The utility with a simulated amplifier on its serial line, in one process.

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
#include "SampleImage.h"
#include "SimulatedPort.h"
#include "SimulatorWindow.h"
#include "SystemClock.h"
#include "Tour.h"

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

}  // namespace

int main(int argc, char** argv) {
    GuardedApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("vlxutility-demo"));
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/vlxutility.png")));
    QCommandLineParser parser;
    parser.addHelpOption();
    const QCommandLineOption tourOption(
        QStringLiteral("tour"), QStringLiteral("Walk through the program and leave pictures in <folder>."),
        QStringLiteral("folder"));
    parser.addOption(tourOption);
    parser.process(application);

    const QTemporaryDir world;
    SystemClock clock;
    Vlx720 amplifier(clock);
    SimulatedPort serialPort(clock, amplifier);
    SimulatedPortList ports({{QStringLiteral("simulated VLX720"), QStringLiteral("simulated")}});
    QtDialogs dialogs(clock);
    Platform platform{clock, serialPort, ports, dialogs, demoFolders(world)};

    std::optional<App> app;
    DefaultErrorHandler errors(dialogs, [&app](const QString& line) {
        if (app)
            app->globals().SetStatusText(line, false);
    });
    const auto onError = [&errors](const std::exception_ptr& error) { errors.handle(error); };
    application.setErrorHandler(onError);
    app.emplace(platform, onError, &QApplication::quit);
    dialogs.setMainWindow(&app->mainWindow());
    SimulatorWindow simulator(amplifier, serialPort);
    app->Event_Open();

    Tour tour(clock, *app, amplifier, parser.value(tourOption));
    std::optional<Task<>> walking;
    if (parser.isSet(tourOption))
        walking = tourAndQuit(tour);
    else
        simulator.show();
    return QApplication::exec();
}
