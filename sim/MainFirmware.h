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
    struct Command;

    void obey(const QByteArray& message);
    void setOperating(bool isOperating);

    void answerEmpty(const QByteArray&);
    void identify(const QByteArray&);
    void readVersion(const QByteArray&);
    void readBand(const QByteArray&);
    void selectBand(const QByteArray& digits);
    void readFault(const QByteArray&);
    void clearFault(const QByteArray&);
    void readOperating(const QByteArray&);
    void selectOperating(const QByteArray& digit);
    void readPower(const QByteArray&);
    void readTemperature(const QByteArray&);
    void readSupply(const QByteArray&);
    void powerDown(const QByteArray&);
    void startLoad(const QByteArray&);
    void restart(const QByteArray&);
    void readMemory(const QByteArray& operands);
    void writeMemory(const QByteArray& operands);
    void accept(const QByteArray&) {}

    Board& m_board;
    bool m_isRunning = false;
    QByteArray m_message;
    bool m_isOperating = false;
    int m_band = 0;
    int m_fault = 0;
};
