#include "MainFirmware.h"

#include <algorithm>
#include <array>

#include "MemoryCommand.h"

namespace {

// A message that has no end is dropped when it is longer than any command.
constexpr qsizetype MessageLimit = 1024;
constexpr int AnyLength = -1;

QByteArray digits(int value, int width) {
    return QByteArray::number(std::max(value, 0)).rightJustified(width, '0');
}

bool areDigits(const QByteArray& text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

}  // namespace

// Asks for a value: the bare token, which the answer repeats.
struct MainFirmware::Question {
    const char* token;
    QByteArray (MainFirmware::*value)() const;
};

// Sets or does something: a token and an operand of so many characters.
struct MainFirmware::Order {
    const char* token;
    int operandLength;
    void (MainFirmware::*obey)(const QByteArray& operand);

    bool fits(const QByteArray& message) const {
        return message.startsWith(token) &&
               (operandLength == AnyLength || operandOf(message).size() == operandLength);
    }
    QByteArray operandOf(const QByteArray& message) const {
        return message.mid(static_cast<qsizetype>(qstrlen(token)));
    }
};

void MainFirmware::start() {
    m_isRunning = true;
    m_message.clear();
    m_fault = 0;
    setOperating(false);
}

void MainFirmware::stop() {
    m_isRunning = false;
    m_fault = 0;
    setOperating(false);
}

void MainFirmware::hear(const QByteArray& bytes) {
    m_message += bytes;
    while (m_isRunning) {
        const qsizetype end = m_message.indexOf(';');
        if (end < 0)
            break;
        const QByteArray message = m_message.left(end);
        m_message.remove(0, end + 1);
        obey(message);
    }
    if (m_message.size() > MessageLimit)
        m_message.clear();
}

void MainFirmware::obey(const QByteArray& message) {
    using Self = MainFirmware;
    static constexpr std::array<Question, 9> Questions{{
        {"", &Self::nothing},
        {"I", &Self::identity},
        {"^RVM", &Self::version},
        {"^BN", &Self::bandDigits},
        {"^FL", &Self::faultDigits},
        {"^OS", &Self::operatingDigit},
        {"^WS", &Self::powerAndSwr},
        {"^TM", &Self::temperature},
        {"^VI", &Self::voltageAndCurrent},
    }};
    static constexpr std::array<Order, 8> Orders{{
        {"^BN", 2, &Self::selectBand},
        {"^OS", 1, &Self::selectOperating},
        {"^FLC", 0, &Self::clearFault},
        {"^on0", 0, &Self::startLoader},
        {"^LDM", 0, &Self::startLoader},
        {"^rpm", 0, &Self::restart},
        {"^ER", 8, &Self::readMemory},
        {"^EW", AnyLength, &Self::writeMemory},
    }};
    const auto* question = std::find_if(Questions.begin(), Questions.end(),
                                        [&message](const Question& q) { return message == q.token; });
    const auto* order =
        std::find_if(Orders.begin(), Orders.end(), [&message](const Order& o) { return o.fits(message); });
    if (question != Questions.end())
        m_board.answer(message + (this->*question->value)() + ';');
    else if (order != Orders.end())
        (this->*order->obey)(order->operandOf(message));
    // Anything else gets no answer; so do the commands that switch modes of the line.
}

void MainFirmware::setOperating(bool isOperating) {
    m_isOperating = isOperating;
    m_board.liveValues().setOperating(isOperating);
    m_board.noteChange();
}

void MainFirmware::raiseFault(int code) {
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(m_board.clock().now()).count();
    m_board.eeprom().addFault(static_cast<std::uint32_t>(seconds), code, m_board.liveValues().read().watts);
    m_fault = code;
    setOperating(false);
}

void MainFirmware::setBand(int band) {
    m_band = std::clamp(band, 0, HighestBand);
    m_board.noteChange();
}

QByteArray MainFirmware::bandDigits() const {
    return digits(m_band, 2);
}

QByteArray MainFirmware::faultDigits() const {
    return digits(m_fault, 2);
}

QByteArray MainFirmware::operatingDigit() const {
    return digits(m_isOperating ? 1 : 0, 1);
}

QByteArray MainFirmware::powerAndSwr() const {
    const Readings now = m_board.liveValues().read();
    return digits(now.watts, 3) + ' ' + digits(now.deciSwr, 3);
}

QByteArray MainFirmware::temperature() const {
    return digits(m_board.liveValues().read().celsius, 3);
}

QByteArray MainFirmware::voltageAndCurrent() const {
    const Readings now = m_board.liveValues().read();
    return digits(now.decivolts, 3) + ' ' + digits(now.deciamperes, 3);
}

void MainFirmware::selectBand(const QByteArray& operand) {
    if (areDigits(operand) && operand.toInt() <= HighestBand)
        setBand(operand.toInt());
}

void MainFirmware::selectOperating(const QByteArray& operand) {
    // A fault holds it in standby.
    if (operand == "0" || operand == "1")
        setOperating(operand == "1" && m_fault == 0);
}

void MainFirmware::clearFault(const QByteArray& /*operand*/) {
    m_fault = 0;
    m_board.noteChange();
}

void MainFirmware::startLoader(const QByteArray& /*operand*/) {
    m_board.startBootstrapLoader();
}

void MainFirmware::restart(const QByteArray& /*operand*/) {
    m_board.startMainFirmware();
}

void MainFirmware::readMemory(const QByteArray& operands) {
    auto command = MemoryCommand::parse(operands);
    if (!command)
        return;
    command->data = m_board.eeprom().read(command->page, command->address, command->count);
    m_board.answer("^ER" + command->format() + ';');
}

void MainFirmware::writeMemory(const QByteArray& operands) {
    auto command = MemoryCommand::parse(operands);
    if (!command || command->data.size() != command->count)
        return;
    if (!m_board.isMemoryWriteLost())
        m_board.eeprom().write(command->page, command->address, command->data);
    // The answer repeats the command without its data.
    command->data.clear();
    m_board.answer("^EW" + command->format() + ';');
}
