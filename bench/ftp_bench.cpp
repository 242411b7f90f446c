// How fast the FTP client is, beside curl and lftp in the same run: prints each figure with its limit.
#include <chrono>
#include <cstdio>

#include <unistd.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include "FTPSessionClass.h"
#include "RealServers.h"
#include "ScriptedDialogs.h"
#include "SystemClock.h"

namespace {

constexpr double MiB = 1024 * 1024;
constexpr double Never = 1e9;
constexpr int Turns = 3;
constexpr int MirrorTurns = 7;
constexpr int FileCount = 500;
constexpr int NameCount = 50'000;
constexpr qint64 DownloadSize = qint64{1024} * 1024 * 1024;
constexpr qint64 UploadSize = qint64{256} * 1024 * 1024;

bool allPassed = true;

void figure(const char* what, double value, const char* unit) {
    std::printf("%-44s %10.2f %s\n", what, value, unit);
}

void judge(const char* what, double value, const char* unit, double limit, bool isAtLeast) {
    const bool isPassed = isAtLeast ? value >= limit : value < limit;
    allPassed = allPassed && isPassed;
    std::printf("%-44s %10.2f %-6s (%s %.2f)  %s\n", what, value, unit, isAtLeast ? "at least" : "below",
                limit, isPassed ? "PASS" : "FAIL");
}

double residentMemory() {
    QFile file(QStringLiteral("/proc/self/statm"));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    return file.readAll().split(' ').value(1).toDouble() * 4096 / MiB;
}

// Watches the memory and waits for the end.
class BenchStatus final : public FTPStatusClass {
public:
    using FTPStatusClass::FTPStatusClass;
    void Error_FTP(const QString& text) override {
        std::printf("error: %s\n", qPrintable(text));
        allPassed = false;
        isDone = true;
    }
    void Successful_FTP(const QString&) override { isDone = true; }
    void Progress_FTP(std::int32_t) override {
        if (++m_blocks % 256 == 0)
            mostMemory = std::max(mostMemory, residentMemory());
    }

    bool isDone = false;
    double mostMemory = 0;

private:
    int m_blocks = 0;
};

void makeFile(const QString& path, qint64 size) {
    QFile file(path);
    file.open(QIODevice::WriteOnly);
    const QByteArray block(std::min<qint64>(size, 1024 * 1024), 'x');
    for (qint64 written = 0; written < size; written += block.size())
        file.write(block);
}

class Bench {
public:
    Bench() {
        renew();
        makeFile(m_server.root() + QStringLiteral("/work/large"), DownloadSize);
        makeFile(m_local.filePath(QStringLiteral("up")), UploadSize);
        for (int i = 0; i < FileCount; ++i)
            makeFile(folder(QStringLiteral("many")) + QStringLiteral("/file %1.txt").arg(i), 1024);
        for (int i = 0; i < NameCount; ++i)
            makeFile(folder(QStringLiteral("names")) + QStringLiteral("/VLX720FP%1.hex").arg(i), 0);
        m_server.openWork();
    }

    bool isReady() const {
        if (!m_server.problem().isEmpty())
            std::printf("%s\n", qPrintable(m_server.problem()));
        return m_server.problem().isEmpty();
    }

    // Curl and we take turns, and the best of each counts: the disk's other work should not decide.
    void download() {
        double curl = Never;
        double ours = Never;
        double growth = 0;
        const QString target = m_local.filePath(QStringLiteral("large"));
        for (int turn = 0; turn < Turns; ++turn) {
            curl = std::min(curl, timed([&] { runCurl({QStringLiteral("-o"), target, url("large")}); }));
            QFile::remove(target);
            logon();
            const double before = residentMemory();
            ours = std::min(ours, timed([this] { run("large", &FTPSessionClass::GetSingleFile); }));
            growth = std::max(growth, m_status->mostMemory - before);
            QFile::remove(target);
        }
        figure("download of 1 GB with curl", DownloadSize / MiB / curl, "MiB/s");
        figure("download of 1 GB", DownloadSize / MiB / ours, "MiB/s");
        judge("  against curl", curl / ours, "", 1.0, true);
        judge("  growth of resident memory", growth, "MiB", 8, false);
    }

    void upload() {
        double curl = Never;
        double inSmallBlocks = Never;
        double inLargeBlocks = Never;
        const QString source = m_local.filePath(QStringLiteral("up"));
        for (int turn = 0; turn < Turns; ++turn) {
            curl = std::min(curl, timed([&] { runCurl({QStringLiteral("-T"), source, url("up")}); }));
            inSmallBlocks = std::min(inSmallBlocks, send(2048));
            inLargeBlocks = std::min(inLargeBlocks, send(256 * 1024));
        }
        figure("upload of 256 MB with curl", UploadSize / MiB / curl, "MiB/s");
        figure("upload of 256 MB in blocks of 2048 bytes", UploadSize / MiB / inSmallBlocks, "MiB/s");
        figure("upload of 256 MB in blocks of 256 KiB", UploadSize / MiB / inLargeBlocks, "MiB/s");
        judge("  against curl", curl / inLargeBlocks, "", 0.7, true);
    }

    // One connection each; the mirror has the same names, sizes and folder. All folders stay to the end: what
    // one of the two has removed would slow down the other's new files.
    void mirror() {
        double lftp = Never;
        double ours = Never;
        QTemporaryDir targets;
        const auto fetched = [&](const QString& folder) {
            return QDir(targets.filePath(folder)).entryList(QDir::Files).size();
        };
        for (int turn = 0; turn < MirrorTurns; ++turn) {
            const QString theirs = QStringLiteral("theirs%1").arg(turn);
            const QString mine = QStringLiteral("mine%1").arg(turn);
            QDir(targets.path()).mkdir(mine);
            lftp = std::min(lftp, timed([&] { runLftp(targets.filePath(theirs)); }));
            ours = std::min(ours, timed([&] {
                                logon();
                                m_session->LocalDirectory = targets.filePath(mine) + u'/';
                                m_session->ServerDirectory = QStringLiteral("/work/many");
                                run(nullptr, &FTPSessionClass::GetDir);
                            }));
            allPassed = allPassed && fetched(theirs) == FileCount &&
                        fetched(mine + QStringLiteral("/many")) == FileCount;
        }
        figure("500 files of 1 KB with lftp mirror", lftp * 1000, "ms");
        figure("500 files of 1 KB with GetDir", ours * 1000, "ms");
        judge("  against lftp", lftp / ours, "", 1.0, true);
    }

    void listing() {
        logon();
        m_session->ServerDirectory = QStringLiteral("/work/names");
        const double before = residentMemory();
        m_status->isDone = false;
        const double seconds = timed([this] {
            m_session->GetDir();
            while (m_session->GetCurrentFTPStep() != u"NEXTTYPE" && !m_status->isDone)
                QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        });
        const bool isComplete = m_session->DirList.at(0).GetFileCount() == NameCount - 1;
        judge("names in a listing of 50,000", isComplete ? NameCount : 0, "", NameCount, true);
        judge("  listed by GetDir", seconds, "s", 2, false);
        judge("  growth of resident memory", residentMemory() - before, "MiB", 64, false);
    }

    void parse() {
        const QString line = QStringLiteral(
            "-rw-r--r--   1 ftp      ftp      12345678 Mar 09 14:05 VLX720FP01%1 and notes.hex");
        QStringList lines;
        for (int i = 0; i < 10'000; ++i)
            lines += line.arg(i);
        // The fastest of a few rounds: one is too short to stand for itself.
        qint64 sizes = 0;
        double seconds = 1;
        for (int round = 0; round < 5; ++round)
            seconds = std::min(seconds, timed([&] {
                                   for (const QString& text : lines)
                                       sizes += m_session->ParseDirListLine(text).Size;
                               }));
        allPassed = allPassed && sizes == qint64{12345678} * 50'000;
        judge("10,000 lines of a listing parsed", seconds * 1000, "ms", 20, false);
    }

private:
    QString folder(const QString& name) const {
        const QString path = m_server.root() + QStringLiteral("/work/") + name;
        QDir().mkpath(path);
        return path;
    }

    template <typename Work>
    static double timed(Work work) {
        // What was written before is written now, not while the clock runs.
        ::sync();
        const auto start = std::chrono::steady_clock::now();
        work();
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    }

    double send(int blockSize) {
        logon();
        m_session->SendBufferSize = blockSize;
        return timed([this] { run("up", &FTPSessionClass::PutSingleFile); });
    }

    void renew() {
        m_session = std::make_unique<FTPSessionClass>(m_clock, m_dialogs, m_globals);
        auto status = std::make_unique<BenchStatus>(*m_session, m_globals);
        m_status = status.get();
        m_session->FTPStatusInstance = std::move(status);
        m_session->SetLoginInfo(QStringLiteral("127.0.0.1"), QStringLiteral("anonymous"),
                                QStringLiteral("secret-word"));
        m_session->CommandPort = m_server.port();
        m_session->FileDelimiter = QStringLiteral("/");
        m_session->LocalDirectory = m_local.path() + u'/';
    }

    void logon() {
        renew();
        run(nullptr, &FTPSessionClass::Logon);
        m_session->ServerDirectory = QStringLiteral("/work");
        run(nullptr, &FTPSessionClass::ChangeDir);
    }

    void run(const char* file, void (FTPSessionClass::*operation)()) {
        m_status->isDone = false;
        if (file)
            m_session->AddFileName(QString::fromLatin1(file));
        (*m_session.*operation)();
        while (!m_status->isDone)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }

    QString url(const char* file) const {
        return QStringLiteral("ftp://127.0.0.1:%1/work/%2")
            .arg(m_server.port())
            .arg(QString::fromLatin1(file));
    }

    void runCurl(const QStringList& arguments) {
        runProgram(QStringLiteral("curl"),
                   QStringList{QStringLiteral("-s"), QStringLiteral("-S")} + arguments);
    }

    void runLftp(const QString& target) {
        const QString commands = QStringLiteral(
            "set ftp:ssl-allow no; set mirror:parallel-transfer-count 1; mirror --parallel=1 /work/many %1; "
            "quit");
        runProgram(QStringLiteral("lftp"),
                   {QStringLiteral("-u"), QStringLiteral("anonymous,secret-word"), QStringLiteral("-p"),
                    QString::number(m_server.port()), QStringLiteral("-e"), commands.arg(target),
                    QStringLiteral("127.0.0.1")});
    }

    static void runProgram(const QString& program, const QStringList& arguments) {
        if (QProcess::execute(program, arguments) != 0)
            allPassed = false;
    }

    RealServer m_server{RealServer::Kind::vsftpd};
    QTemporaryDir m_local;
    SystemClock m_clock;
    ScriptedDialogs m_dialogs{m_clock};
    Globals m_globals{m_clock};
    std::unique_ptr<FTPSessionClass> m_session;
    BenchStatus* m_status = nullptr;
};

}  // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    Bench bench;
    if (!bench.isReady())
        return 2;
    bench.download();
    bench.upload();
    bench.mirror();
    bench.listing();
    bench.parse();
    return allPassed ? 0 : 1;
}
