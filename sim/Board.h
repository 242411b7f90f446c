// The amplifier's processor board, as the program that runs on it sees it.
#pragma once

#include <QByteArray>

#include "Clock.h"
#include "Eeprom.h"
#include "Flash.h"
#include "LiveValues.h"

class Board {
public:
    explicit Board(Clock& clock_) : clock(clock_), liveValues(clock_) {}
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

    Clock& clock;
    Eeprom eeprom;
    Flash flash;
    LiveValues liveValues;
    QByteArray firmwareVersion;
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
