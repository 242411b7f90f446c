// The amplifier's processor board, as the program that runs on it sees it.
#pragma once

#include <QByteArray>

#include "Clock.h"
#include "Eeprom.h"
#include "Flash.h"
#include "LiveValues.h"

class Board {
public:
    explicit Board(Clock& clock) : m_clock(clock), m_liveValues(clock) {}
    Board(const Board&) = delete;
    Board& operator=(const Board&) = delete;
    virtual ~Board() = default;

    // Sends bytes on the line.
    virtual void answer(const QByteArray& bytes) = 0;
    // Ends the program that runs and starts another one, which answers after its start time.
    virtual void startMainFirmware() = 0;
    virtual void startBootstrapLoader() = 0;
    // Whether the write that the memory was asked for just now does not take place.
    virtual bool isMemoryWriteLost() = 0;
    // Something that a control panel shows has changed.
    virtual void noteChange() = 0;

    Clock& clock() { return m_clock; }
    Eeprom& eeprom() { return m_eeprom; }
    Flash& flash() { return m_flash; }
    LiveValues& liveValues() { return m_liveValues; }
    const LiveValues& liveValues() const { return m_liveValues; }

    // The version that the main firmware tells: two digits, a point, two digits. Firmware that is loaded
    // brings its own if it is stamped with one (see Flash), and otherwise leaves this.
    QByteArray firmwareVersion() const { return m_firmwareVersion; }
    void setFirmwareVersion(const QByteArray& version) { m_firmwareVersion = version; }

private:
    Clock& m_clock;
    Eeprom m_eeprom;
    Flash m_flash;
    LiveValues m_liveValues;
    QByteArray m_firmwareVersion;
};

// A program that runs on the board.
class BoardProgram {
public:
    BoardProgram() = default;
    BoardProgram(const BoardProgram&) = delete;
    BoardProgram& operator=(const BoardProgram&) = delete;
    virtual ~BoardProgram() = default;

    virtual void start() = 0;
    // Power goes, or another program takes over.
    virtual void stop() = 0;
    virtual void hear(const QByteArray& bytes) = 0;
};
