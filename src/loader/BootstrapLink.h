// Talks to the amplifier's bootstrap loader on the serial line.
#pragma once

#include <cstdint>

#include <QByteArray>
#include <QString>

#include "Globals.h"
#include "Platform.h"
#include "Task.h"

// One block in flight at a time, each answered by one character. Nothing here can be called off: a
// cancelled exchange leaves the amplifier in its bootstrap loader, which the next load finds there.
class BootstrapLink {
public:
    // `address` is where the reader keeps the address of the last record: the messages tell it.
    BootstrapLink(Platform& platform, Globals& globals, const std::uint32_t& address)
        : m_clock(platform.clock), Serial1(platform.Serial1), m_globals(globals), m_dwAddress(address) {}
    BootstrapLink(const BootstrapLink&) = delete;
    BootstrapLink& operator=(const BootstrapLink&) = delete;

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

    // Kept for inspection; only the first decides anything.
    std::uint32_t m_dwCurrentBlockRetries = 0;
    std::uint32_t m_dwHighestBlockRetries = 0;
    std::uint32_t m_dwTotalBlockRetries = 0;

private:
    // Looks every 5 ms, each time for at most `atMost` characters, until `until` has come (anything, when it
    // is empty) or more than `limit` has passed.
    Task<Clock::Microseconds> awaitReply(QString& reply, qsizetype atMost, Ticks limit,
                                         QStringView until = {});
    Task<bool> sendUntilAnswered(QByteArray block, QString expected);
    void logResponse(const QString& response, const QString& gap, Clock::Microseconds elapsed);

    Clock& m_clock;
    SerialPort& Serial1;
    Globals& m_globals;
    const std::uint32_t& m_dwAddress;
    QString tcResponse;
};
