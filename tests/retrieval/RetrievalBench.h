// Both routes to a server on loopback, with a simulated amplifier behind them. The simulated clock runs ten
// times as fast as the real one, which the sockets go by.
#pragma once

#include <functional>
#include <optional>

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QThread>

#include "AmplifierBench.h"
#include "FakePanels.h"
#include "Retrieval.h"
#include "SessionBench.h"

inline const QByteArray GoodImage = ":0108000000F7\r\n:00000001FF\r\n";
inline const QByteArray DamagedImage = ":0108000001F7\r\n:00000001FF\r\n";
inline const QByteArray Notes = "{\\rtf1 New.}";

struct RetrievalBench : AmplifierBench, NewFirmwareNotice {
    using Route = Task<> (Retrieval::*)();
    static constexpr Route FTP = &Retrieval::GetRevButton1_Action;
    static constexpr Route curl = &Retrieval::CopyWithCurl_Action;

    // The awkward name is a name to every program in between.
    explicit RetrievalBench(const QString& folderName = QStringLiteral("a\"; touch x; $(y) é/")) {
        window.mStartup = 0;
        port.Open();
        portPanel.setSerialPortMenuRows({QStringLiteral("ttyUSB0")});
        portPanel.setSerialPortMenuIndex(0);
        globals.m_FolderPath = world.filePath(folderName);
        globals.DisplayStatus = [this](const QString& text) { progress += text; };
        QDir().mkpath(globals.m_FolderPath);
        QDir().mkpath(served());
    }
    ~RetrievalBench() override {
        m_flow.reset();
        EXPECT_TRUE(panel.canCopy);
        EXPECT_FALSE(panel.isCopying);
        EXPECT_FALSE(QFileInfo::exists(local(QStringLiteral(".vlxcopying"))));
        EXPECT_FALSE(retrieval && retrieval->FTPDownload1.Session);
        EXPECT_FALSE(retrieval && retrieval->cURLdownload1.MyShell.IsRunning());
        retrieval.reset();
        settle(1);
        clock.advance(std::chrono::seconds(1));
        EXPECT_EQ(clock.pendingWaits(), 0) << "something was left behind";
    }

    QString root() const { return world.filePath(QStringLiteral("server")); }
    QString served(const QString& name = QString()) const {
        return root() + QStringLiteral("/VLX/firmware/") + name;
    }
    QString local(const QString& name) const { return globals.m_FolderPath + name; }
    QStringList files() const { return tree(globals.m_FolderPath); }

    void use(int serverPort) {
        retrieval.emplace(platform, globals, panel, folder, amplifierQuery,
                          FirmwareServer{QStringLiteral("127.0.0.1"), serverPort, QStringLiteral("anonymous"),
                                         QStringLiteral("secret-word")});
    }
    void start(Route route) { m_flow.emplace(((*retrieval).*route)()); }
    void cancel() { m_flow.reset(); }
    bool isDone() const { return !m_flow || m_flow->isDone(); }
    bool turnUntil(const std::function<bool()>& condition) {
        const QDeadlineTimer deadline(20'000);
        while (!condition()) {
            if (deadline.hasExpired())
                return false;
            QCoreApplication::processEvents();
            clock.advance(std::chrono::milliseconds(5));
            QThread::usleep(500);
        }
        return true;
    }
    void finish() {
        EXPECT_TRUE(turnUntil([this] { return isDone(); })) << log.join(u'\n').toStdString();
    }
    void run(Route route) {
        start(route);
        finish();
    }

    Task<> show() override {
        ++notices;
        co_await clock.sleep(std::chrono::seconds(1));
    }
    Task<bool> noQuery() { co_return false; }

    int notices = 0;
    QStringList progress;
    FakeFirmwarePanel panel;
    FakePortPanel portPanel;
    RadioState radioState{platform, globals, line};
    FirmwareFolder folder{platform, globals, panel, window, *this, [this] { return noQuery(); }};
    AmplifierQuery amplifierQuery{clock, globals, line, radioState, portPanel};
    std::optional<Retrieval> retrieval;

private:
    std::optional<Task<>> m_flow;
};
