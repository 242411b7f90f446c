#include "Vlx720.h"

namespace {

// Noise is received as it passes, not as one long answer.
constexpr qsizetype NoisePiece = 16;

}  // namespace

Vlx720::Vlx720(Clock& clock, const Settings& settings)
    : Board(clock),
      m_settings(settings),
      m_speed(settings.speed),
      m_started(clock, Clock::Microseconds(0), [this] { enter(m_next); }),
      m_main(*this),
      m_loader(*this),
      m_line(clock, [this](const QByteArray& bytes, int bitsPerSecond) {
          if (transmit)
              transmit(bytes, bitsPerSecond);
      }) {
    setFirmwareVersion(settings.firmwareVersion);
    enter(settings.state);
}

Vlx720::~Vlx720() = default;

void Vlx720::receive(const QByteArray& bytes, int bitsPerSecond) {
    if (!m_program)
        return;
    const auto [heard, isPowerLost] = m_script.hear(bytes);
    m_program->hear(bitsPerSecond == speed() ? heard : heardAtWrongSpeed(heard, bitsPerSecond, speed()));
    if (isPowerLost)
        powerOff();
}

void Vlx720::answer(const QByteArray& bytes) {
    using Manner = MisbehaviourScript::Emission::Manner;
    const auto emission = m_script.answer(bytes);
    switch (emission.manner) {
        case Manner::AtOnce:
            return m_line.send(emission.bytes, speed());
        case Manner::Later:
            return m_line.sendLater(emission.delay, emission.bytes, speed());
        case Manner::Gathered:
            return m_line.gather(emission.delay, emission.bytes, speed());
        case Manner::Spread:
            return m_line.spread(emission.delay, emission.bytes, speed());
    }
}

void Vlx720::emitNoise(const QByteArray& bytes) {
    for (qsizetype from = 0; from < bytes.size(); from += NoisePiece)
        m_line.send(bytes.mid(from, NoisePiece), speed());
}

void Vlx720::setSpeed(int bitsPerSecond) {
    m_speed = bitsPerSecond;
    noteChange();
}

void Vlx720::powerOn() {
    if (m_state != State::Off)
        return;
    const bool startsMain = m_settings.powerOnState == State::Main && flash().isImageValid();
    startsMain ? startMainFirmware() : startBootstrapLoader();
}

void Vlx720::powerOff() {
    m_started.stop();
    stopProgram();
    m_line.cut();
    enter(State::Off);
}

void Vlx720::pressPowerButton() {
    if (m_state == State::Main)
        startBootstrapLoader();
    else if (m_state == State::Waiting && flash().isImageValid())
        startMainFirmware();
}

void Vlx720::raiseFault(int code) {
    if (m_state == State::Main)
        m_main.raiseFault(code);
}

void Vlx720::startMainFirmware() {
    restartInto(State::Main, m_settings.mainStartTime);
}

void Vlx720::startBootstrapLoader() {
    restartInto(State::Waiting, m_settings.loaderStartTime);
}

void Vlx720::restartInto(State next, Clock::Microseconds startTime) {
    stopProgram();
    m_next = next;
    m_started.setPeriod(startTime);
    m_started.start(ClockTimer::Mode::Single);
    enter(State::Restarting);
}

void Vlx720::stopProgram() {
    if (m_program)
        std::exchange(m_program, nullptr)->stop();
}

void Vlx720::enter(State state) {
    m_state = state;
    if (state == State::Main)
        m_program = &m_main;
    else if (state == State::Waiting)
        m_program = &m_loader;
    if (m_program) {
        m_loader.setTiming(m_settings.loader);
        m_program->start();
    }
    noteChange();
}

void Vlx720::noteChange() {
    if (Changed)
        Changed();
}
