// The whole program on the bench: real widgets on the offscreen platform, a simulated amplifier, a
// simulated clock, answered dialogs.
#pragma once

#include <memory>

#include <QAccessible>
#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QPushButton>
#include <QTabWidget>
#include <QTextEdit>

#include "AmplifierBench.h"
#include "App.h"
#include "Child.h"

// What a screen reader says that the control is.
inline QString spokenName(const QWidget& control) {
    return QAccessible::queryAccessibleInterface(const_cast<QWidget*>(&control))->text(QAccessible::Name);
}

class AppBench {
public:
    explicit AppBench(const Vlx720::Settings& settings = {}) : m_bench(settings) {
        QDir().mkpath(helpFolder());
    }

    // Started, with that tab entered.
    explicit AppBench(Tab tab, const Vlx720::Settings& settings = {}) : AppBench(settings) {
        start();
        chooseTab(tab);
        clock().advance(std::chrono::milliseconds(300));
        port().clearWritten();
    }

    ~AppBench() {
        quit();
        EXPECT_EQ(errors, 0);
        clock().advance(std::chrono::seconds(5));
        EXPECT_EQ(clock().pendingWaits(), 0) << "something was left behind";
    }

    void removeHelpFolder() { QDir(helpFolder()).removeRecursively(); }

    // Before start(): a preferences file as an earlier run may have left it.
    void givePreferences(const QByteArray& contents) {
        QDir().mkpath(m_bench.platform.folders.preferences);
        QFile file(preferencesPath());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(contents);
    }

    void launch() {
        m_app = std::make_unique<App>(
            m_bench.platform, [this](const std::exception_ptr&) { ++errors; }, [this] { ++quits; },
            firmwareServer);
        m_app->Event_Open();
    }

    // Launches and waits for the main window.
    void start() {
        launch();
        EXPECT_TRUE(clock().runUntil([this] { return window().isVisible(); }));
        clock().advance(std::chrono::milliseconds(100));
    }

    void quit() {
        if (m_app)
            window().close();
        m_app.reset();
    }

    template <typename Control>
    Control* control(const QString& name) {
        return child<Control>(m_app->mainWindow(), name);
    }
    void press(const QString& button) { control<QPushButton>(button)->click(); }
    void chooseTab(Tab tab) {
        control<QTabWidget>(QStringLiteral("TabPanel1"))->setCurrentIndex(static_cast<int>(tab));
    }
    QString spoken(const QString& name) { return spokenName(*control<QWidget>(name)); }
    QString label(const QString& name) { return control<QLabel>(name)->text(); }
    QString logText() { return control<QTextEdit>(QStringLiteral("StatusField"))->toPlainText(); }
    QString preferencesPath() const {
        return m_bench.platform.folders.preferences + QStringLiteral("/VLXUtilPrefs");
    }
    QString dataFolder() const { return m_bench.platform.folders.applicationData; }

    App& app() { return *m_app; }
    Window1& window() { return m_app->mainWindow(); }
    Platform& platform() { return m_bench.platform; }
    SimClock& clock() { return m_bench.clock; }
    Vlx720& amplifier() { return m_bench.amplifier; }
    SimulatedPort& port() { return m_bench.port; }
    SimulatedPortList& ports() { return m_bench.ports; }
    ScriptedDialogs& dialogs() { return m_bench.dialogs; }

    FirmwareServer firmwareServer = FirmwareServer::makers();
    int errors = 0;
    int quits = 0;

private:
    QString helpFolder() const { return m_bench.platform.folders.executable + QStringLiteral("/Help"); }

    AmplifierBench m_bench;
    std::unique_ptr<App> m_app;
};
