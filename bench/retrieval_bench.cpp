// How long it takes to copy new firmware, beside curl in the same run: prints each figure with its limit.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <optional>

#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include "FakePanels.h"
#include "LoopGap.h"
#include "RealServers.h"
#include "Retrieval.h"
#include "ScriptedDialogs.h"
#include "SimulatedPort.h"
#include "SystemClock.h"

namespace {

constexpr int Turns = 15;
constexpr qsizetype ImageSize = 300 * 1024;

bool allPassed = true;

void judge(const char* what, double value, const char* unit, double limit) {
    const bool isPassed = value < limit;
    allPassed = allPassed && isPassed;
    std::printf("%-52s %8.2f %-3s (below %.2f)  %s\n", what, value, unit, limit, isPassed ? "PASS" : "FAIL");
}

void write(const QString& path, const QByteArray& bytes) {
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    allPassed = allPassed && file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

double milliseconds(std::chrono::steady_clock::time_point since) {
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - since).count();
}

class Bench final : public NewFirmwareNotice {
public:
    Bench() {
        QByteArray image;
        while (image.size() < ImageSize)
            image += ":10080000000102030405060708090A0B0C0D0E0F70\r\n";
        const QString served = m_server.root() + QStringLiteral("/VLX/firmware/");
        write(served + QStringLiteral("VLX720FP0125.hex"), image + ":00000001FF\r\n");
        write(served + QStringLiteral("vlxfwnotes.rtf"), "{\\rtf1 Notes.}");
        QFile::setPermissions(m_server.root() + QStringLiteral("/VLX"), QFile::Permissions(0x7755));
        QFile::setPermissions(served, QFile::Permissions(0x7755));
        m_globals.m_FolderPath = m_local.path() + u'/';
        m_globals.StatusField = [this](const QString& line) {
            if (line.contains(u" files from Tessarin to "))
                m_copied = milliseconds(m_pressed);
        };
        m_port.Open();
    }

    bool isReady() const {
        if (!m_server.problem().isEmpty())
            std::printf("%s\n", qPrintable(m_server.problem()));
        return m_server.problem().isEmpty();
    }

    // The two take turns, and the best of each counts.
    void compare() {
        double curl = 1e9;
        double ours = 1e9;
        std::chrono::microseconds gap{0};
        for (int turn = 0; turn < Turns; ++turn) {
            curl = std::min(curl, timeOfCurl());
            m_copied = 1e9;
            gap = std::max(gap, longestGap([this] { return press(); }));
            ours = std::min(ours, m_copied);
            clear();
        }
        std::printf("%-52s %8.2f ms\n", "image of 300 KB and notes with curl -O", curl);
        std::printf("%-52s %8.2f ms\n", "the same from the press to the \"Copied\" line", ours);
        judge("  against curl", ours / curl, "", 3);
        judge("longest gap between two repaints", static_cast<double>(gap.count()) / 1000, "ms", 50);
    }

    Task<> show() override { co_return; }

private:
    Task<bool> noQuery() { co_return false; }
    Task<> press() {
        m_pressed = std::chrono::steady_clock::now();
        return m_retrieval.GetRevButton1_Action();
    }

    double timeOfCurl() {
        const QString url = QStringLiteral("ftp://127.0.0.1:%1/VLX/firmware/").arg(m_server.port());
        QProcess curl;
        curl.setWorkingDirectory(m_local.path());
        const auto start = std::chrono::steady_clock::now();
        curl.start(QStringLiteral("curl"),
                   {QStringLiteral("-s"), QStringLiteral("-O"), url + QStringLiteral("VLX720FP0125.hex"),
                    QStringLiteral("-O"), url + QStringLiteral("vlxfwnotes.rtf")});
        allPassed = curl.waitForFinished() && curl.exitCode() == 0 && allPassed;
        const double time = milliseconds(start);
        clear();
        return time;
    }

    void clear() {
        for (const char* name : {"VLX720FP0125.hex", "vlxfwnotes.rtf"})
            allPassed = QFile::remove(m_globals.m_FolderPath + QString::fromLatin1(name)) && allPassed;
    }

    RealServer m_server{RealServer::Kind::vsftpd};
    QTemporaryDir m_local;
    SystemClock m_clock;
    Vlx720 m_amplifier{m_clock};
    SimulatedPort m_port{m_clock, m_amplifier};
    SimulatedPortList m_ports;
    ScriptedDialogs m_dialogs{m_clock};
    Platform m_platform{m_clock, m_port, m_ports, m_dialogs, {}};
    Globals m_globals{m_clock};
    LineOwner m_line;
    WindowState m_window;
    FakeFirmwarePanel m_panel;
    FakePortPanel m_portPanel;
    RadioState m_radioState{m_platform, m_globals, m_line};
    FirmwareFolder m_folder{m_platform, m_globals, m_panel, m_window, *this, [this] { return noQuery(); }};
    AmplifierQuery m_query{m_clock, m_globals, m_line, m_radioState, m_portPanel};
    Retrieval m_retrieval{m_platform,
                          m_globals,
                          m_panel,
                          m_folder,
                          m_query,
                          FirmwareServer{QStringLiteral("127.0.0.1"), m_server.port(),
                                         QStringLiteral("anonymous"), QStringLiteral("secret-word")}};
    std::chrono::steady_clock::time_point m_pressed;
    double m_copied = 1e9;
};

}  // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    Bench bench;
    if (!bench.isReady())
        return 2;
    bench.compare();
    return allPassed ? 0 : 1;
}
