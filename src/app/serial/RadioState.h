// Finds out at what speed the amplifier listens, what runs in it, and its firmware version.
#pragma once

#include <cstdint>

#include <QByteArray>
#include <QString>

#include "Globals.h"
#include "LineOwner.h"
#include "LineReader.h"
#include "Platform.h"
#include "Task.h"

// The result stands in Globals: m_FirmwareStatus, m_dwBaudRate, m_strMcuVersion, m_dwMcuVersion. Refresh,
// SenseStatus and SendReadCommand take the line while they run; cancelled, they leave the port at the speed
// tried last. On a port that is closed, or closes meanwhile, the status is unknown at once.
class RadioState {
public:
    RadioState(Platform& platform, Globals& globals, LineOwner& line)
        : m_clock(platform.clock),
          Serial1(platform.Serial1),
          m_reader(platform.clock, platform.Serial1),
          m_globals(globals),
          m_line(line) {}

    // Senses, `retries` times again after a failure; true when the main firmware answered the version
    // request. A silent amplifier takes about 1.85 s a try.
    Task<bool> Refresh(std::int32_t retries);
    // Speed and status; false when no speed answered.
    Task<bool> SenseStatus(std::int32_t retries);
    // The speed in bit/s, 0 when none answered in `retries` rounds.
    Task<double> SenseBaudRate(std::int32_t retries);
    Task<bool> TestBaudRate(double bps, std::int32_t baudCode, bool& found);
    bool setStatus(const QString& status);

    Task<bool> ReadFirmWareVersions(std::int32_t ignored);
    Task<bool> SendReadVersionCommand(std::int32_t ignored, QString command);
    Task<bool> SendReadCommand(std::int32_t ignored, QString command);

private:
    Clock& m_clock;
    SerialPort& Serial1;
    LineReader m_reader;
    Globals& m_globals;
    LineOwner& m_line;

    QString strResult;           // answer of the last SendReadCommand, command token stripped
    QString strVersionResult;    // "01.23", or "99.99" when none was read
    double dwVersionResult = 0;  // the same as a number, 9999 when none was read
};
