// The bootstrap loader, which also is what runs while the amplifier waits for its power button.
//
// It knows ";", "I;", "P;", "^BN;" and, as the first byte of a message, "D". From the echo of "D" on, every
// byte belongs to a block of 68 bytes, whatever it is and however long it takes to come: there is no time-out
// and no fill character of its own, so the loader is out of step after a lost byte until fill characters have
// completed the block. Such a block has a wrong checksum, or else an impossible address, and is answered
// with "N"; then both sides stand at a block boundary. A loader that is in step takes fill characters for
// a block too: 68 of them bring it to the next boundary.
//
// Only after the final block is "P;" at a block boundary a command again. Until then the two bytes may be
// the beginning of a block.
#pragma once

#include "Board.h"

class BootstrapLoader final : public BoardProgram {
public:
    static constexpr int BlockSize = 68;
    static constexpr int BlockDataSize = 64;
    static constexpr char Echo = 'D';
    static constexpr char BlockTaken = 'A';
    static constexpr char ImageTaken = 'B';
    static constexpr char Refused = 'N';

    struct Timing {
        Clock::Microseconds echo{0};        // from "D" to its echo
        Clock::Microseconds blockWrite{0};  // from the end of a block to its answer
    };

    explicit BootstrapLoader(Board& board);

    void setTiming(const Timing& timing) { m_timing = timing; }

    void start() override;
    // A block that is being written at this moment stays half written.
    void stop() override;
    void hear(const QByteArray& bytes) override;

    // Blocks answered with "A" or "B" since the start of the program.
    int blocksTaken() const { return m_blocksTaken; }
    bool isTakingBlocks() const { return m_mode == Mode::Blocks; }

private:
    enum class Mode { Stopped, Commands, Blocks };
    struct Block;

    void hearCommandByte(char byte);
    void obey(const QByteArray& message);
    void startImage();
    // Takes what belongs to the present block and tells how many bytes that was.
    qsizetype hearBlockBytes(QByteArrayView bytes);
    void takeBlock(const Block& block);
    void program(std::uint32_t address, const QByteArray& data);
    void store(const Block& block);
    void finishPending();
    void answerAfter(Clock::Microseconds delay, char answer);

    Board& m_board;
    Timing m_timing;
    Mode m_mode = Mode::Stopped;
    QByteArray m_message;
    Clock::Microseconds m_lastHeard{0};
    QByteArray m_block;
    bool m_isEraseDue = false;
    bool m_isFinalTaken = false;
    int m_blocksTaken = 0;
    // The answer that is due when the loader is no longer busy, and the block that it is writing.
    char m_pendingAnswer = 0;
    QByteArray m_writing;
    ClockTimer m_busy;
};
