// The poll of the "Operate" tab, and what its answers change on the panel.
#pragma once

#include <optional>

#include "AnswerWatch.h"
#include "Gate.h"
#include "Globals.h"
#include "LineOwner.h"
#include "LineReader.h"
#include "OperatePanel.h"
#include "Platform.h"
#include "PolledValues.h"
#include "WindowState.h"

class StatusMonitor {
public:
    // What m_VLXdata keeps of a text without a ";" at most, in characters; the oldest go first.
    static constexpr qsizetype UnfinishedLimit = 1 << 20;
    static constexpr std::chrono::milliseconds PollPeriod{1000};
    // What is parsed in one turn of the event loop at most, in bytes. A second's answers have about fifty;
    // more lies in the port only when it was flooded while another tab was shown.
    static constexpr qsizetype TurnLimit = 1024;

    StatusMonitor(Platform& platform, Globals& globals, LineOwner& line, WindowState& window,
                  OperatePanel& panel);

    // Entering the "Operate" tab: shows what the status allows, sends the first poll at once and starts
    // the timer.
    void enterOperateTab();
    // Ends when the tab has been entered, or the entering was broken off. One flow at a time.
    Task<> entered();
    // The open port has gone: what the panel shows is old.
    void portLost() { m_answers.lost(); }
    // For how long the poll has had no answer, once that counts; nothing while it stands still.
    std::optional<std::chrono::seconds> silence() const {
        return isPolling() ? m_answers.silence() : std::nullopt;
    }
    // Stops the timer and drops what a poll under way has not sent yet.
    void stopPoll();
    void startTimer() { Timer1.start(ClockTimer::Mode::Repeating); }
    bool isPolling() const { return Timer1.isOn(); }

    // Bytes have come while the "Operate" tab is shown. Those past TurnLimit are offered again by
    // DataAvailable.
    void takeReceived();
    // Parses m_VLXdata and updates the panel; the unfinished tail stays.
    void processVLXdata();
    // Empties the port and m_VLXdata.
    void discardReceived();

    // A synchronous exchange. `expectedLength` is the answer's with its ";"; an answer of another length
    // is dropped without a word.
    Task<> SendCommandParseResponse(QString command, std::int32_t expectedLength);

    void EnableControls(bool enable);
    // Marks the band, 0 to 10, and shows it among the read-outs.
    void showBand(int band);
    // The bootloader speaks 38400 bit/s only.
    void setBootloaderSpeed();

private:
    // The synchronous exchange and the stream differ on purpose in "^BN" and in the SWR of "^WS".
    enum class Source { Stream, Exchange };

    void Timer1_Action();
    void offerReceived();
    Task<> sendPoll();
    Task<> enter();
    void dispatch(const QString& field, Source source);
    void show(const PolledValue& value, const QString& field, Source source);
    void showNumber(const PolledValue& value, const QString& field, Source source);
    void showBandAnswer(const QString& field, Source source);
    void showFault(const QString& field);
    void showMode(const QString& field);
    void switchToBootloader();

    Clock& m_clock;
    SerialPort& Serial1;
    LineReader m_reader;
    Globals& m_globals;
    LineOwner& m_line;
    WindowState& m_window;
    OperatePanel& m_panel;
    ClockTimer Timer1;
    ClockTimer m_offer;
    AnswerWatch m_answers;
    std::optional<Gate> m_entered;
    std::optional<Task<>> m_sending;
};
