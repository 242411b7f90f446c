// The state that windows and flows share, and the one way to report progress.
#pragma once

#include <array>
#include <cstdint>
#include <functional>

#include <QString>
#include <QStringList>

#include "Clock.h"
#include "UnbrokenWork.h"

// What is running in the amplifier, as Globals.m_FirmwareStatus tells it. Sensing writes "BootLoader" and
// the operating flows "Bootloader"; equality ignores letter case, so both are one state.
namespace FirmwareStatus {
inline const QString Unknown = QStringLiteral("Unknown");
inline const QString Main = QStringLiteral("Main");
inline const QString SensedBootLoader = QStringLiteral("BootLoader");
inline const QString Bootloader = QStringLiteral("Bootloader");
}  // namespace FirmwareStatus

// The tabs of TabPanel1, with the value of Globals.m_TabPanel.
enum class Tab : std::int32_t { Port = 0, Firmware = 1, Operate = 2, Configuration = 3, CommandTester = 4 };

class Globals {
public:
    // Takes one line, its end included, for a log on the screen.
    using LogSink = std::function<void(const QString& line)>;

    explicit Globals(Clock& clock) : m_clock(clock) {}
    Globals(const Globals&) = delete;
    Globals& operator=(const Globals&) = delete;

    // Writes one line to the activity log, with its time stamp. A trace message is dropped while trace is
    // off. While firmware loads, every message also goes to the load window's log, without time stamp,
    // and trace goes only there.
    void SetStatusText(const QString& text, bool isTrace);
    void UpdateTimeStamp();

    // What the line below the tabs says; "Ready" for an empty text.
    void showStatus(const QString& text);

    bool isMain() const;
    bool isBootloader() const;
    bool isUnknown() const { return !isMain() && !isBootloader(); }

    // The main window.
    std::int32_t m_TabPanel = 0;
    bool m_Verbose = false;  // trace

    // What sensing and the poll know of the amplifier.
    QString m_FirmwareStatus = FirmwareStatus::Unknown;
    double m_dwBaudRate = 0;               // bit/s, 0 when not known
    double m_dwMcuVersion = 0;             // 100 times the major part plus the minor part
    QString m_strMcuVersion;               // "01.23"; "---" when unknown, "N/A" when the answer was unusable
    QString m_VLXdata;                     // status answers received and not yet parsed
    std::int32_t m_BandNumber = 0;         // 0 to 10
    QStringList FaultCodes = {QString()};  // two rows a code once CreateFaultCodesArray has run

    // The port by its name.
    bool m_PortCheck = false;
    QString m_PortField;

    // Absolute folders; m_FolderPath ends in the path separator.
    QString m_FolderPath;
    QString m_ConfigFolderPath;
    QString m_FaultFolderPath;

    // The message on its way to the log.
    bool m_ifVerbose = false;  // it is a trace message
    QString m_StatusMsg;
    QString mTIMESTAMP;  // "14:05:07 "

    // Firmware loads.
    bool m_loadingfirmware = false;  // the window of a load is open
    bool m_cancelling = false;
    UnbrokenWork mustEnd;

    // Firmware retrieval.
    QString m_Data;
    bool mRETR = false;
    QString FTPFile;
    bool FTPDone = false;
    bool FTPError = false;
    QString m_MessageWindowResponse;
    bool m_showReleaseNotes = false;

    // Configuration files.
    std::uint32_t m_dwCrc32 = 0;
    std::int32_t m_SerialNumber = 0;
    bool m_AdvancedMode = false;  // nothing sets it: kept for its name

    LogSink StatusField;
    LogSink ActivityLog;
    // Takes the text of the line below the tabs.
    LogSink DisplayStatus;

private:
    void SetStatus1_Run();

    Clock& m_clock;
    qint64 m_stampedSecond = -1;  // of mTIMESTAMP
};
