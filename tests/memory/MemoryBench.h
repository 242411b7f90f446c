// A simulated amplifier with the memory tools, their windows replaced by records.
#pragma once

#include <QFile>

#include "AmplifierBench.h"
#include "FaultCodes.h"
#include "MemoryTools.h"

// What ProgressWin, the tab panel and the modal windows were told, in order.
class ToolRecord : public ProgressView, public TabPanelLock, public MemoryWindows {
public:
    explicit ToolRecord(SimClock& clock) : m_clock(clock) {}

    void setStaticText1(const QString& text) override { told += text; }
    void setProgressBar1Maximum(int maximum) override { told += QStringLiteral("of %1").arg(maximum); }
    void setProgressBar1Value(int value) override { told += QString::number(value); }
    void showInPlace() override { told += QStringLiteral("show"); }
    void closeWindow() override { told += QStringLiteral("close"); }
    void setTabPanelEnabled(bool enabled) override {
        isPanelEnabled = enabled;
        told += enabled ? QStringLiteral("unlock") : QStringLiteral("lock");
    }
    void setEditBannerButtonEnabled(bool enabled) override {
        told += enabled ? QStringLiteral("banner on") : QStringLiteral("banner off");
    }
    Task<> showFaultTableWindow(FaultTable&) override { return showWindow(); }
    Task<> showBannerWindow(PowerOnBanner&) override { return showWindow(); }

    QStringList told;
    bool isPanelEnabled = true;

private:
    Task<> showWindow() {
        told += QStringLiteral("window");
        co_await m_clock.sleep(std::chrono::seconds(1));
    }

    SimClock& m_clock;
};

class MemoryBench : public AmplifierBench {
public:
    MemoryBench() {
        port.Open();
        globals.m_FirmwareStatus = FirmwareStatus::Main;
        globals.m_strMcuVersion = QStringLiteral("01.23");
        globals.m_ConfigFolderPath = world.path();
        globals.FaultCodes = CreateFaultCodesArray();
    }

    QString path(const QString& name) const { return world.filePath(name); }

    void save(const QString& name) {
        dialogs.files.push_back(path(name));
        run(tools.SaveConfig_Action());
    }
    void restore(const QString& name) {
        dialogs.files.push_back(path(name));
        run(tools.RestoreConfig_Action());
    }
    void run(Task<> flow) {
        EXPECT_TRUE(clock.run(flow));
        EXPECT_NO_THROW(flow.result());
        expectNothingLeftBehind();
    }
    // A well-behaved amplifier, freshly switched on.
    void powerAnew() {
        amplifier.behave();
        amplifier.powerOff();
        amplifier.settings().powerOnState = Vlx720::State::Main;
        amplifier.powerOn();
        clock.advance(std::chrono::seconds(2));
        EXPECT_EQ(amplifier.state(), Vlx720::State::Main);
    }
    // After every flow, however it ended.
    void expectNothingLeftBehind() {
        clock.advance(std::chrono::seconds(3));  // answers that are still on their way
        EXPECT_EQ(clock.pendingWaits(), 0);
        EXPECT_FALSE(line.isTaken());
        EXPECT_TRUE(record.isPanelEnabled);
        EXPECT_FALSE(tools.isWriting());
    }

    QByteArray read(const QString& name) const {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    void write(const QString& name, const QByteArray& content) const {
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        EXPECT_EQ(file.write(content), content.size());
    }
    QStringList files() const { return QDir(world.path()).entryList(QDir::Files | QDir::Hidden); }
    // All pages of the amplifier's memory but the configuration.
    QByteArray restOfMemory() { return amplifier.eeprom().contents().mid(MemoryMap::ConfigurationSize); }

    ToolRecord record{clock};
    MemoryTools tools{platform, globals, line, record, record, record};
};
