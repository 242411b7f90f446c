// The amplifier's main firmware: commands that end in ";" and their answers.
#pragma once

#include "Board.h"

class MainFirmware final : public BoardProgram {
public:
    static constexpr int HighestBand = 10;

    explicit MainFirmware(Board& board) : m_board(board) {}

    void start() override;
    void stop() override;
    void hear(const QByteArray& bytes) override;

    // Trips to standby, and stays there until the fault is cleared. Codes 1 to 99.
    void raiseFault(int code);
    int fault() const { return m_fault; }
    bool isOperating() const { return m_isOperating; }
    int band() const { return m_band; }
    void setBand(int band);

private:
    struct Question;
    struct Order;

    void obey(const QByteArray& message);
    void setOperating(bool isOperating);

    // What the answer to a question tells, between the token and the ";".
    QByteArray nothing() const { return {}; }
    QByteArray identity() const { return "MAIN" + version(); }
    QByteArray version() const { return m_board.firmwareVersion(); }
    QByteArray bandDigits() const;
    QByteArray faultDigits() const;
    QByteArray operatingDigit() const;
    QByteArray powerAndSwr() const;
    QByteArray temperature() const;
    QByteArray voltageAndCurrent() const;

    void selectBand(const QByteArray& operand);
    void selectOperating(const QByteArray& operand);
    void clearFault(const QByteArray& operand);
    void startLoader(const QByteArray& operand);
    void restart(const QByteArray& operand);
    void readMemory(const QByteArray& operands);
    void writeMemory(const QByteArray& operands);

    Board& m_board;
    bool m_isRunning = false;
    QByteArray m_message;
    bool m_isOperating = false;
    int m_band = 0;
    int m_fault = 0;
};
