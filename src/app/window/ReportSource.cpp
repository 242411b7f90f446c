#include "ReportSource.h"

#include <QDir>
#include <QSysInfo>

#include "Report.h"
#include "ShortVersion.h"

namespace {

QStringList versions() {
    return {QStringLiteral("Tessarin VLX Utility ") + ShortVersion(),
            QStringLiteral("Qt %1, built with %2")
                .arg(QLatin1StringView(qVersion()), QStringLiteral(QT_VERSION_STR)),
            QStringLiteral("%1, %2 %3, %4")
                .arg(QSysInfo::prettyProductName(), QSysInfo::kernelType(), QSysInfo::kernelVersion(),
                     QSysInfo::currentCpuArchitecture())};
}

QStringList portFacts(Platform& platform, const Globals& globals) {
    const SerialPort& line = platform.Serial1;
    QStringList facts{
        QStringLiteral("Chosen: %1 (%2), %3")
            .arg(line.serialPort().Name, line.serialPort().path,
                 line.isOpen() ? QStringLiteral("open") : QStringLiteral("not open")),
        QStringLiteral("Speed: %1 bit/s, sensed %2")
            .arg(Baud::bitsPerSecond(line.Baud()))
            .arg(globals.m_dwBaudRate),
        QStringLiteral("Amplifier: %1, firmware %2").arg(globals.m_FirmwareStatus, globals.m_strMcuVersion)};
    for (int index = 0; index < platform.ports.SerialPortCount(); ++index) {
        const PortInfo port = platform.ports.SerialPort(index);
        facts += QStringLiteral("In the list: %1 (%2)").arg(port.Name, port.path);
    }
    return facts;
}

}  // namespace

SaveFileRequest reportRequest(const Clock& clock) {
    const QString time = clock.wallClock().toString(QStringLiteral("yyyy-MM-dd HHmm"));
    return {.title = QStringLiteral("Save a report"),
            .prompt = {},
            .initialFolder = QDir::homePath(),
            .suggestedName = QStringLiteral("VLX Report %1.txt").arg(time),
            .type = {QStringLiteral("Text"), QStringLiteral(".txt")}};
}

QByteArray gatherReport(Platform& platform, const Globals& globals, const REALEasyPrefs& prefs,
                        const QString& log, const LineRecord& record) {
    return reportText({.time = platform.clock.wallClock().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")),
                       .versions = versions(),
                       .port = portFacts(platform, globals),
                       .preferences = prefs.lines(),
                       .log = log,
                       .transcript = record.transcript()},
                      QDir::homePath());
}
