// Talks to the amplifier's bootstrap loader on the serial line.
#pragma once

#include <cstdint>
#include <functional>

#include <QByteArray>
#include <QString>

#include "Globals.h"
#include "LineReader.h"
#include "Platform.h"
#include "Task.h"

// One block in flight at a time, each answered by one character. Nothing here can be called off: a
// cancelled exchange leaves the amplifier in its bootstrap loader, which the next load finds there.
class BootstrapLink {
public:
    // Called when a wait for the loader begins or goes on that may be long: what it is for, and the time
    // that is left before the loader is given up. An empty text tells that it is over.
    using LongWait = std::function<void(const QString& what, std::chrono::seconds left)>;

    BootstrapLink(Platform& platform, Globals& globals)
        : m_clock(platform.clock),
          Serial1(platform.Serial1),
          m_reader(platform.clock, platform.Serial1),
          m_globals(globals) {}
    BootstrapLink(const BootstrapLink&) = delete;
    BootstrapLink& operator=(const BootstrapLink&) = delete;

    // Every call ends at once, as without an answer, when the port closes.
    //
    // Brings the loader to where it accepts blocks, at 38400 bit/s; false after 20 s without an echo.
    Task<bool> EnterDownloadMode();
    // Sends the first `count` bytes of `block` until `expected` comes back, at most ten times. False when
    // it never did, or when nothing at all answered the fill characters in between: 170 s at worst.
    Task<bool> WriteBlockToRadio(QByteArray block, std::uint32_t count, std::uint32_t blockNumber,
                                 QString expected);
    Task<bool> SynchronizeToBlockBoundary(std::uint32_t byteCount, std::uint32_t& fillCount,
                                          QString& response);
    // Sends up to `byteCount` fill characters, one by one, until the loader answers with anything, which
    // it does at the end of a block. False when it never did; true for no characters at all.
    Task<bool> SynchronizeCommon(std::uint8_t fillByte, std::uint32_t byteCount, std::uint32_t& fillCount,
                                 QString& response);
    // Starts the main firmware from the bootstrap loader and waits until it should be up.
    Task<> LeaveDownloadMode();

    // Of the last record read: the messages tell it.
    std::uint32_t m_dwAddress = 0;
    LongWait TellLongWait;

    // Kept for inspection; only the first decides anything.
    std::uint32_t m_dwCurrentBlockRetries = 0;
    std::uint32_t m_dwHighestBlockRetries = 0;
    std::uint32_t m_dwTotalBlockRetries = 0;

private:
    // The first thing that comes, at most `atMost` characters of it; empty when nothing did in time.
    Task<QString> awaitReply(qsizetype atMost);
    Task<bool> fill(std::uint32_t byteCount, std::uint32_t& fillCount, QString& response);
    void tellLongWait(const QString& what, Ticks left = Ticks{0}) const;
    Task<bool> sendUntilAnswered(QByteArray block, QString expected);
    void logResponse(const QString& response, const QString& gap, Clock::Microseconds elapsed);

    Clock& m_clock;
    SerialPort& Serial1;
    LineReader m_reader;
    Globals& m_globals;
    QString tcResponse;
};
