// The utility on the real serial port.

#include <cstdio>

#include <QIcon>
#include <QSessionManager>

#include "App.h"
#include "CommandLine.h"
#include "DefaultErrorHandler.h"
#include "GuardedApplication.h"
#ifdef Q_OS_LINUX
#include "LoginInhibitor.h"
#endif
#include "QtDialogs.h"
#include "QtPortList.h"
#include "QtSerialPort.h"
#include "QtSpecialFolders.h"
#include "QuitSignals.h"
#include "SystemClock.h"

int main(int argc, char** argv) {
    const QByteArray answer = commandLineAnswer({argv, static_cast<std::size_t>(argc)});
    if (!answer.isEmpty()) {
        std::fputs(answer.constData(), stdout);
        return 0;
    }
    GuardedApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("vlxutility"));
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/vlxutility.png")));

    SystemClock clock;
    QtSerialPort serialPort(clock);
    QtPortList ports;
    QtDialogs dialogs(clock);
#ifdef Q_OS_LINUX
    LoginInhibitor inhibitor;
    SleepInhibitor* const sleep = &inhibitor;
#else
    SleepInhibitor* const sleep = nullptr;
#endif
    Platform platform{clock, serialPort, ports, dialogs, qtSpecialFolders(), sleep};

    Globals* log = nullptr;
    DefaultErrorHandler errors(dialogs, [&log](const QString& line) {
        if (log)
            log->SetStatusText(line, false);
    });
    const auto onError = [&errors](const std::exception_ptr& error) { errors.handle(error); };
    application.setErrorHandler(onError);
    App app(platform, onError, &QApplication::quit);
    log = &app.globals();
    dialogs.setMainWindow(&app.mainWindow());
    const QuitSignals quitSignals([&app] { app.requestQuit(); });
    // The end of the session waits for work that must end first.
    QObject::connect(&application, &QGuiApplication::commitDataRequest, &application,
                     [&app](QSessionManager& session) {
                         if (!app.requestQuit())
                             session.cancel();
                     });
    app.Event_Open();
    return QApplication::exec();
}
