// The bench of the golden runs: all that passes on the line, is logged, shown or asked, each with its time,
// in one transcript.
#pragma once

#include <QBuffer>
#include <QFile>

#include "AmplifierBench.h"
#include "FakePanels.h"
#include "FaultCodes.h"
#include "HexText.h"
#include "MCULoader.h"
#include "MemoryTools.h"
#include "RecordingPort.h"
#include "StatusMonitor.h"
#include "VersionCheck.h"

// Log lines and the like stand in the transcript as comments, so that it stays one that can be replayed.
class GoldenBench : public AmplifierBench,
                    public LoadView,
                    public ProgressView,
                    public ConfigurationPanel,
                    public MemoryWindows,
                    public FaultTableView {
public:
    explicit GoldenBench(const Vlx720::Settings& settings) : AmplifierBench(settings) {
        window.mStartup = 0;  // the program runs
        globals.StatusField = nullptr;
        globals.ActivityLog = [this](const QString& text) { note("log", text.chopped(1)); };
        globals.m_Verbose = globals.m_loadingfirmware = true;
        globals.FaultCodes = CreateFaultCodesArray();
        globals.m_ConfigFolderPath = world.path();
        globals.m_FolderPath = world.path() + u'/';
        line.Changed = [this](bool isTaken) {
            note("line", isTaken ? QStringLiteral("taken") : QStringLiteral("free"));
        };
        dialogs.Shown = [this](const QString& text) { note("box", text); };
        portPanel.setSerialPortMenuRows({ports.ports.front().Name});
        portPanel.setSerialPortMenuIndex(0);
        recording.setSerialPort(ports.ports.front());
        recording.Open();
    }

    template <typename T>
    T run(Task<T> flow) {
        EXPECT_TRUE(clock.run(flow));
        return flow.result();
    }
    // Before any other flow.
    bool sense() { return run(versions.CheckVLXVersion()); }

    void install(const QByteArray& image) {
        versionedFilename.m_mstrPath = QStringLiteral("VLX720FP0105.hex");
        firmwarePanel.available = QStringLiteral("01.05");
        QFile file(globals.m_FolderPath + versionedFilename.m_mstrPath);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(HexText::file(image));
    }
    // The next file dialog's answer.
    QString choose(const QString& name) {
        dialogs.files.push_back(world.filePath(name));
        return dialogs.files.back();
    }
    void noteFile(const QString& path) {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        const SaveFileRequest& asked = dialogs.saveRequests.back();
        note("dialog", QStringList{asked.title, asked.suggestedName, asked.type.extension}.join(u'|'));
        note("file", QString::fromLatin1(file.readAll()));
    }
    void note(const char* what, const QString& text) {
        QString shown = text;
        shown.replace(u'\r', QStringLiteral("\\r")).replace(u'\n', QStringLiteral("\\n\n#     "));
        record.write(
            QStringLiteral("# %1 %2 %3\n").arg(clock.now().count()).arg(QLatin1String(what), shown).toUtf8());
    }

    void setProgressBar1Maximum(int maximum) override { note("bar", QStringLiteral("of %1").arg(maximum)); }
    void setProgressBar1Value(int value) override { note("bar", QString::number(value)); }
    void showLongWait(const QString&, std::chrono::seconds) override {}
    void setStaticText1(const QString& text) override { note("window", text); }
    void showInPlace() override { note("window", QStringLiteral("shown")); }
    void closeWindow() override { note("window", QStringLiteral("closed")); }
    void setEditBannerButtonEnabled(bool) override {}
    void showWaitCursor(bool isShown) override {
        note("cursor", isShown ? QStringLiteral("wait") : QStringLiteral("back"));
    }
    void addRow(const FaultTableRow& row) override {
        note("row", QStringList{row.timestamp, row.faultCode, row.data, row.description}.join(u'|'));
    }
    void enableSaveToFileButton() override { note("window", QStringLiteral("can save")); }
    Task<> showFaultTableWindow(FaultTable& table) override {
        co_await table.Begin(*this);
        const QString path = choose(QStringLiteral("a.VLXFaultTable"));
        co_await table.SaveToFile();
        noteFile(path);
    }
    Task<> showBannerWindow(PowerOnBanner& banner) override {
        for (const char* text : {"AB", "", "ABCDEFGH"}) {
            noteBanner(co_await banner.ReadPowerOnBanner());
            co_await banner.WritePowerOnBanner(QString::fromLatin1(text));
        }
        noteBanner(co_await banner.ReadPowerOnBanner());
    }

    void noteBanner(const std::optional<QString>& text) {
        note("banner", text.value_or(QStringLiteral("(unread)")));
    }

    struct Record : QBuffer {
        Record() { open(QIODevice::ReadWrite); }
    } record;
    TranscriptWriter writer{clock, record};
    RecordingPort recording{port, [this](const TranscriptEvent& event) { writer.write(event); }};
    Platform recorded{clock, recording, ports, dialogs, platform.folders};
    FakePortPanel portPanel;
    FakeFirmwarePanel firmwarePanel;
    FakeOperatePanel operatePanel;
    VersionedFilename versionedFilename;
    RadioState radioState{recorded, globals, line};
    VersionCheck versions{recorded, globals, radioState, window, portPanel, firmwarePanel};
    StatusMonitor monitor{recorded, globals, line, window, operatePanel};
    MCULoader loader{recorded, globals, firmwarePanel, radioState, line, versionedFilename};
    MemoryTools tools{recorded, globals, line, *this, *this, *this};
};
