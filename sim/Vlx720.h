// A simulated VLX720: what it does with the bytes on its line, at their true pace.
#pragma once

#include <functional>

#include "BootstrapLoader.h"
#include "MainFirmware.h"
#include "Misbehaviour.h"
#include "Wire.h"

class Vlx720 final : private Board {
public:
    enum class State {
        Off,         // no mains power
        Waiting,     // bootstrap loader, at 38400 bit/s: waits for the power button or a firmware load
        Main,        // main firmware, at one of the four speeds
        Restarting,  // one of the two is starting; nothing is heard
    };

    static constexpr int LoaderSpeed = 38400;

    struct Settings {
        int speed = LoaderSpeed;  // of the main firmware, bit/s
        QByteArray firmwareVersion = QByteArrayLiteral("01.23");
        State state = State::Main;            // at first: Off, Waiting or Main
        State powerOnState = State::Waiting;  // Waiting or Main, if there is valid firmware
        Clock::Microseconds mainStartTime = std::chrono::milliseconds(1500);
        Clock::Microseconds loaderStartTime = std::chrono::milliseconds(50);
        BootstrapLoader::Timing loader = {};
    };

    explicit Vlx720(Clock& clock) : Vlx720(clock, Settings()) {}
    Vlx720(Clock& clock, const Settings& settings);
    ~Vlx720() override;

    // The line. Bytes that come in, with the speed at which they were sent: at another speed than its own
    // the amplifier hears garbage.
    void receive(const QByteArray& bytes, int bitsPerSecond);
    // Bytes that go out, with their speed: called from the event loop when the last bit has passed.
    std::function<void(const QByteArray& bytes, int bitsPerSecond)> transmit;
    // Drops the part of an answer that has passed while the rest is still on its way.
    void discardTransmitted() { m_line.discardPassed(); }
    // Answers without the time that they take on the line.
    void setInstantLine(bool isInstant) { m_line.setInstant(isInstant); }
    // Bytes that the amplifier never meant to send, at its speed and pace.
    void emitNoise(const QByteArray& bytes);

    State state() const { return m_state; }
    // The speed at which the amplifier listens now: that of the main firmware, but for the waiting state.
    int speed() const { return m_state == State::Waiting ? LoaderSpeed : m_speed; }
    // Speed of the main firmware, bit/s.
    void setSpeed(int bitsPerSecond);

    // Mains power. Losing it is at once and forgets all that was on its way.
    void powerOn();
    void powerOff();
    // The button at the front: from the waiting state to the main firmware and back.
    void pressPowerButton();

    // Main firmware only. The fault is entered in the fault table of the memory too. Codes 1 to 99.
    void raiseFault(int code);
    int fault() const { return m_main.fault(); }
    bool isOperating() const { return m_main.isOperating(); }
    int band() const { return m_main.band(); }
    void setBand(int band) { m_main.setBand(band); }

    using Board::eeprom;
    using Board::firmwareVersion;
    using Board::flash;
    using Board::liveValues;
    using Board::setFirmwareVersion;
    const BootstrapLoader& loader() const { return m_loader; }
    // For times that change after the construction.
    Settings& settings() { return m_settings; }

    // Adds one more thing that goes wrong, on top of those in force.
    void misbehave(const Misbehaviour& misbehaviour) { m_script.add(misbehaviour); }
    void behave() { m_script.clear(); }

    // Called when state, speed, band, operation or fault have changed.
    std::function<void()> Changed;

private:
    void answer(const QByteArray& bytes) override;
    void startMainFirmware() override;
    void startBootstrapLoader() override;
    bool isMemoryWriteLost() override { return m_script.losesMemoryWrite(); }
    void noteChange() override;

    void restartInto(State next, Clock::Microseconds startTime);
    void enter(State state);
    void stopProgram();

    Settings m_settings;
    int m_speed;
    State m_state = State::Off;
    State m_next = State::Off;
    ClockTimer m_started;
    MainFirmware m_main;
    BootstrapLoader m_loader;
    BoardProgram* m_program = nullptr;
    MisbehaviourScript m_script;
    Wire m_line;
};
