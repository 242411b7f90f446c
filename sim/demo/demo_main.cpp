// The utility with a simulated amplifier on its serial line, in one process; or with a real one, to keep
// what passes on the line.

#include <algorithm>
#include <cstdio>
#include <optional>
#include <string_view>

#include <QCommandLineParser>
#include <QFile>
#include <QIcon>
#include <QScreen>

#include "App.h"
#include "DefaultErrorHandler.h"
#include "DemoLine.h"
#include "DemoWorld.h"
#include "GuardedApplication.h"
#include "QtDialogs.h"
#include "SimulatorWindow.h"
#include "SystemClock.h"
#include "Tour.h"

namespace {

Task<> tourAndQuit(Tour& tour) {
    const bool isComplete = co_await tour.run();
    if (!isComplete)
        std::fputs("The tour could not write all of its pictures.\n", stderr);
    QCoreApplication::exit(isComplete ? 0 : 1);
}

constexpr int WindowGap = 12;

// Beside the main window, not under it, as far as the screen has room.
Task<> showBeside(SimulatorWindow& simulator, Clock& clock, const QWidget& mainWindow) {
    while (!mainWindow.isVisible())
        co_await clock.sleep(std::chrono::milliseconds(50));
    simulator.adjustSize();
    const QRect screen = mainWindow.screen()->availableGeometry();
    const int left =
        std::min(mainWindow.frameGeometry().right() + WindowGap, screen.right() - simulator.width());
    simulator.move(std::max(left, screen.left()), mainWindow.frameGeometry().top());
    simulator.setAttribute(Qt::WA_ShowWithoutActivating);
    simulator.show();
}

struct Options {
    QString tourFolder;
    DemoLine::Options line;
};

// Ends the program when it asked for help or cannot be understood.
Options readCommandLine(const QCoreApplication& application) {
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
        {QStringLiteral("replay"),
         QStringLiteral("Play the line from a transcript or a report in place of the simulated amplifier."),
         QStringLiteral("file")},
    });
    parser.process(application);
    return {parser.value(QStringLiteral("tour")),
            {.realPort = parser.value(QStringLiteral("port")),
             .recordFile = parser.value(QStringLiteral("record")),
             .replayFile = parser.value(QStringLiteral("replay"))}};
}

// Help needs no display.
bool asksForHelp(int argc, char** argv) {
    return std::any_of(argv, argv + argc,
                       [](std::string_view argument) { return argument == "--help" || argument == "-h"; });
}

}  // namespace

int main(int argc, char** argv) {
    if (asksForHelp(argc, argv))
        readCommandLine(QCoreApplication(argc, argv));
    GuardedApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("vlxutility-demo"));
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/vlxutility.png")));
    const Options options = readCommandLine(application);

    DemoWorld world(options.line.realPort.isEmpty());
    SystemClock clock;
    DemoLine line(clock, options.line);
    if (!line.failure().isEmpty()) {
        std::fputs(qPrintable(line.failure() + u'\n'), stderr);
        return 1;
    }
    QtDialogs dialogs(clock);
    Platform platform{clock, line.line(), line.ports, dialogs, world.folders()};

    Globals* log = nullptr;
    DefaultErrorHandler errors(dialogs, [&log](const QString& text) {
        if (log)
            log->SetStatusText(text, false);
    });
    const auto onError = [&errors](const std::exception_ptr& error) { errors.handle(error); };
    application.setErrorHandler(onError);
    App app(platform, onError, &QApplication::quit, world.firmwareServer());
    log = &app.globals();
    dialogs.setMainWindow(&app.mainWindow());
    SimulatorWindow simulator(line.amplifier, line.simulated, line.ports, world.server());
    QtDialogs::keepAwayFrom(simulator);
    app.Event_Open();

    Tour tour(clock, app, line.amplifier, options.tourFolder);
    std::optional<Task<>> walking;
    if (!options.tourFolder.isEmpty())
        walking = tourAndQuit(tour);
    else if (line.isSimulated())
        walking = showBeside(simulator, clock, app.mainWindow());
    return QApplication::exec();
}
