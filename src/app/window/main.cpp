// The utility on the real serial port.

#include <QIcon>

#include "App.h"
#include "DefaultErrorHandler.h"
#include "GuardedApplication.h"
#include "QtDialogs.h"
#include "QtPortList.h"
#include "QtSerialPort.h"
#include "QtSpecialFolders.h"
#include "SystemClock.h"

int main(int argc, char** argv) {
    GuardedApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("vlxutility"));
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/vlxutility.png")));

    SystemClock clock;
    QtSerialPort serialPort(clock);
    QtPortList ports;
    QtDialogs dialogs(clock);
    Platform platform{clock, serialPort, ports, dialogs, qtSpecialFolders()};

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
    app.Event_Open();
    return QApplication::exec();
}
