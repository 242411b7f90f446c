// A session with everything around it, its reports on record.
#pragma once

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include "FTPSessionClass.h"
#include "ScriptedDialogs.h"
#include "SimClock.h"
#include "SystemClock.h"

// Keeps what a session reports, by kind, and passes it on.
class RecordingStatus final : public FTPStatusClass {
public:
    using FTPStatusClass::FTPStatusClass;

    void Error_FTP(const QString& text) override {
        ends += QStringLiteral("error: ") + text;
        all += text;
        FTPStatusClass::Error_FTP(text);
        goOn();
    }
    void Successful_FTP(const QString& text) override {
        ends += QStringLiteral("ok: ") + text;
        all += text;
        FTPStatusClass::Successful_FTP(text);
        goOn();
    }
    void Response_FTP(const QString& text) override {
        responses += text;
        all += text;
        FTPStatusClass::Response_FTP(text);
    }
    void Status_FTP(const QString& text) override {
        statuses += text;
        all += text;
        FTPStatusClass::Status_FTP(text);
    }
    void Progress_FTP(std::int32_t count) override { progress = count; }

    // Called once, from inside the next report of an end.
    std::function<void()> next;

    QStringList ends;
    QStringList responses;
    QStringList statuses;
    QStringList all;
    std::int32_t progress = 0;

private:
    void goOn() {
        if (const auto work = std::exchange(next, nullptr))
            work();
    }
};

// Lets the event loop turn until the condition holds; false when it does not within the time.
inline bool waitUntil(const std::function<bool()>& condition, int milliseconds = 10'000) {
    const QDeadlineTimer deadline(milliseconds);
    while (!condition()) {
        if (deadline.hasExpired())
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, 5);
    }
    return true;
}

// Lets the event loop turn until nothing more comes for a moment.
inline void settle(int milliseconds = 30) {
    waitUntil([] { return false; }, milliseconds);
}

template <typename ClockType>
class SessionBench {
public:
    SessionBench() { renew(); }
    ~SessionBench() {
        session.reset();
        settle(1);
        EXPECT_EQ(clock.pendingWaits(), 0);
    }

    void renew() {
        session = std::make_unique<FTPSessionClass>(clock, dialogs, globals);
        auto recorder = std::make_unique<RecordingStatus>(*session, globals);
        status = recorder.get();
        session->FTPStatusInstance = std::move(recorder);
        session->FileDelimiter = QStringLiteral("/");
        session->LocalDirectory = local.path() + u'/';
        // Below the ports that systems hand out; test programs run side by side.
        const int first = 10'000 + static_cast<int>(QCoreApplication::applicationPid() % 100) * 50;
        session->SetDataPortRange(first, first + 49);
    }

    void connectTo(int port, const QString& user = QStringLiteral("anonymous"),
                   const QString& password = QStringLiteral("secret-word")) {
        session->SetLoginInfo(QStringLiteral("127.0.0.1"), user, password);
        session->CommandPort = port;
    }

    // Starts an operation and gives its report, "ok: ..." or "error: ...".
    template <typename Operation>
    std::string run(Operation operation, int milliseconds = 10'000) {
        const qsizetype before = status->ends.size();
        operation(*session);
        if (!waitUntil([&] { return status->ends.size() > before; }, milliseconds))
            return "no report";
        return status->ends.at(before).toStdString();
    }
    std::string run(void (FTPSessionClass::*operation)(), int milliseconds = 10'000) {
        return run([operation](FTPSessionClass& s) { (s.*operation)(); }, milliseconds);
    }
    std::string runWith(const QStringList& files, void (FTPSessionClass::*operation)(),
                        int milliseconds = 10'000) {
        session->Files = files;
        return run(operation, milliseconds);
    }
    std::string runIn(const QString& directory, void (FTPSessionClass::*operation)(),
                      int milliseconds = 10'000) {
        session->ServerDirectory = directory;
        return run(operation, milliseconds);
    }

    ClockType clock;
    ScriptedDialogs dialogs{clock};
    Globals globals{clock};
    QTemporaryDir local{QDir::tempPath() + QStringLiteral("/vlx ftp é XXXXXX")};
    std::unique_ptr<FTPSessionClass> session;
    RecordingStatus* status = nullptr;
};

inline void writeFile(const QString& path, const QByteArray& bytes) {
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly)) << path.toStdString();
    file.write(bytes);
}

inline QByteArray readFile(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no such file)");
}

// Every file and folder below a path, with the files' contents, in order.
inline QStringList tree(const QString& path) {
    QStringList lines;
    QDirIterator items(path, QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot,
                       QDirIterator::Subdirectories);
    while (items.hasNext()) {
        const QFileInfo item(items.next());
        const QString name = QDir(path).relativeFilePath(item.filePath());
        lines += item.isDir() ? name + u'/' : name + u'=' + QString::fromLatin1(readFile(item.filePath()));
    }
    lines.sort();
    return lines;
}
