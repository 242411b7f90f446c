#include "DemoWorld.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "SampleImage.h"

namespace {

const QByteArray ReleaseNotes =
    "{\\rtf1\\mac\\ansicpg10000{\\fonttbl\\f0\\fswiss Helvetica;}\n"
    "\\f0\\b\\fs28 VLX720 firmware release notes\\par\n"
    "\\fs24 Version 01.25\\b0\\par\n"
    "The fan starts two degrees earlier, and stops later.\\par\n"
    "\\b Version 01.24\\b0\\par\n"
    "The band follows the exciter on 50 MHz too.\\par\n"
    "\\i These notes belong to a simulated amplifier.\\i0\\par}\n";

}  // namespace

DemoWorld::DemoWorld(bool isSimulated) {
    if (!isSimulated)
        return;
    // The values move at once, and there is room for the simulator's window beside this one.
    write(QStringLiteral("config/VLXUtilPrefs"), "Tab\n2\nwinLEFT\n40\nwinTOP\n60\n");
    write(QStringLiteral("data/Tessarin/VLX Firmware/VLX720FP0124.hex"), sampleImage("0124"));
    const QString served = QStringLiteral("server/VLX/firmware/");
    write(served + QStringLiteral("VLX720FP0123.hex"), sampleImage("0123"));
    write(served + QStringLiteral("VLX720FP0125.hex"), sampleImage("0125"));
    write(served + QStringLiteral("vlxfwnotes.rtf"), ReleaseNotes);
    m_server.emplace(m_folder.filePath(QStringLiteral("server")));
}

SpecialFolders DemoWorld::folders() const {
    return {m_folder.filePath(QStringLiteral("data")), m_folder.filePath(QStringLiteral("config")),
            QDir::tempPath(), QCoreApplication::applicationDirPath()};
}

FirmwareServer DemoWorld::firmwareServer() const {
    FirmwareServer makers = FirmwareServer::makers();
    if (!m_server)
        return makers;
    return {QStringLiteral("127.0.0.1"), m_server->port(), makers.user, makers.password};
}

void DemoWorld::write(const QString& path, const QByteArray& bytes) const {
    QFile file(m_folder.filePath(path));
    QDir().mkpath(QFileInfo(file).path());
    if (file.open(QIODevice::WriteOnly))
        file.write(bytes);
}
