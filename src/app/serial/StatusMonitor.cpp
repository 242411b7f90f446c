#include "StatusMonitor.h"

#include "CommandSet.h"
#include "PolledValues.h"
#include "Text.h"

using namespace std::chrono_literals;
using Kind = PolledValue::Kind;

namespace {

constexpr qsizetype FullBandLength = 5;  // "^BN" and two digits
constexpr Ticks ExchangeLimit{20};
constexpr qsizetype TokenLength = 3;
constexpr qsizetype NumberLength = 3;
constexpr QStringView Identity = u"VLX720";

bool isIdentity(const QString& field) {
    return Text::Left(field, Identity.size()) == Identity;
}

}  // namespace

StatusMonitor::StatusMonitor(Platform& platform, Globals& globals, LineOwner& line, WindowState& window,
                             OperatePanel& panel)
    : m_clock(platform.clock),
      Serial1(platform.Serial1),
      m_reader(platform.clock, platform.Serial1),
      m_globals(globals),
      m_line(line),
      m_window(window),
      m_panel(panel),
      Timer1(platform.clock, PollPeriod, [this] { Timer1_Action(); }),
      m_offer(platform.clock, Clock::Microseconds{0}, [this] { offerReceived(); }),
      m_answers(platform.clock, globals, panel) {}

void StatusMonitor::enterOperateTab() {
    stopPoll();
    m_entered.emplace(m_clock);
    m_sending = enter();
}

Task<> StatusMonitor::entered() {
    if (m_entered)
        co_await m_entered->wait();
}

Task<> StatusMonitor::enter() {
    const StartupSpan entering(m_window);
    EnableControls(m_globals.isMain());
    if (!m_globals.isUnknown()) {
        co_await sendPoll();
        m_panel.setOnOffCaption(m_globals.isMain() ? QStringLiteral("OFF") : QStringLiteral("ON"));
        startTimer();
        // What was answered meanwhile was kept from the data handler.
        m_offer.start(ClockTimer::Mode::Single);
    }
    m_entered->open();
}

void StatusMonitor::offerReceived() {
    if (Serial1.DataAvailable && !Serial1.LookAhead().isEmpty())
        Serial1.DataAvailable();
}

void StatusMonitor::stopPoll() {
    Timer1.stop();
    m_offer.stop();
    m_sending.reset();
    if (m_entered)
        m_entered->open();
}

void StatusMonitor::Timer1_Action() {
    const bool isStillSending = m_sending && !m_sending->isDone();
    if (isStillSending || m_line.isTaken())
        return;
    if (Serial1.isOpen())
        m_answers.look();
    else
        m_answers.lost();
    m_sending = sendPoll();
}

Task<> StatusMonitor::sendPoll() {
    m_answers.asked();
    if (m_globals.isMain()) {
        QStringView asked;
        for (const PolledValue& value : PolledValues) {
            // Values that share an answer stand side by side.
            if (std::exchange(asked, value.token) == value.token)
                continue;
            Serial1.Write(Text::toLine(value.token.toString() + u';'));
            co_await Serial1.XmitWait();
        }
    } else if (m_globals.isBootloader()) {
        Serial1.Write(Command::Identify);
        co_await Serial1.XmitWait();
    }
}

void StatusMonitor::takeReceived() {
    m_globals.m_VLXdata += Text::fromLine(Serial1.Read(TurnLimit));
    processVLXdata();
    if (!Serial1.LookAhead().isEmpty())
        m_offer.start(ClockTimer::Mode::Single);
}

void StatusMonitor::discardReceived() {
    Serial1.Flush();
    m_globals.m_VLXdata.clear();
}

void StatusMonitor::processVLXdata() {
    const QString received = std::move(m_globals.m_VLXdata);
    const qsizetype finished = received.lastIndexOf(u';') + 1;
    m_globals.m_VLXdata = Text::Right(received.mid(finished), UnfinishedLimit);
    for (qsizetype begin = 0; begin < finished;) {
        const qsizetype end = received.indexOf(u';', begin);
        dispatch(received.mid(begin, end - begin), Source::Stream);
        begin = end + 1;
    }
}

Task<> StatusMonitor::SendCommandParseResponse(QString command, std::int32_t expectedLength) {
    const auto guard = m_line.take();
    Serial1.Flush();
    Serial1.Write(Text::toLine(command));
    co_await m_reader.pause(100ms);
    QByteArray answer;
    const auto end = co_await m_reader.until(
        [&] {
            answer += Serial1.ReadAll();
            return answer.size() == expectedLength;
        },
        ExchangeLimit);
    if (end == LineReader::End::Came)
        dispatch(Text::fromLine(answer), Source::Exchange);
}

void StatusMonitor::dispatch(const QString& field, Source source) {
    const QString token = Text::Left(field, TokenLength);
    bool isAnswer = m_globals.isBootloader() && isIdentity(field);
    for (const PolledValue& value : PolledValues) {
        if (!Text::equal(token, value.token))
            continue;
        isAnswer = true;
        show(value, field, source);
    }
    if (isAnswer)
        m_answers.came();
}

void StatusMonitor::show(const PolledValue& value, const QString& field, Source source) {
    switch (value.kind) {
        case Kind::Number:
            showNumber(value, field, source);
            break;
        case Kind::Band:
            showBandAnswer(field, source);
            break;
        case Kind::Fault:
            showFault(field);
            break;
        case Kind::Mode:
            showMode(field);
            break;
    }
}

void StatusMonitor::showNumber(const PolledValue& value, const QString& field, Source source) {
    const int divisor = source == Source::Exchange && value.isRawInExchange ? 1 : value.divisor;
    const double number = Text::Val(Text::Mid(field, value.position, NumberLength)) / divisor;
    m_panel.setReadOut(value.readOut, Text::Format(number, value.format) + value.unit.toString());
}

void StatusMonitor::showBandAnswer(const QString& field, Source source) {
    const double band = Text::Val(Text::Mid(field, 4));
    if (band < 0 || band >= OperatePanel::BandCount)
        return;
    if (source == Source::Stream) {
        if (field.size() < FullBandLength)
            switchToBootloader();
        else if (m_globals.isBootloader())
            // The panel stays dim and OnOff keeps its caption until the next tab change or press.
            m_globals.m_FirmwareStatus = FirmwareStatus::Main;
    }
    // Also after a short answer: it marks band 0, though no band was reported.
    m_globals.m_BandNumber = static_cast<std::int32_t>(band);
    showBand(m_globals.m_BandNumber);
}

void StatusMonitor::switchToBootloader() {
    const StartupSpan switching(m_window);
    stopPoll();
    m_panel.setOnOffCaption(QStringLiteral("ON"));
    discardReceived();
    EnableControls(false);
    setBootloaderSpeed();
    m_globals.m_FirmwareStatus = FirmwareStatus::Bootloader;
    startTimer();
}

void StatusMonitor::setBootloaderSpeed() {
    if (Serial1.Baud() == Baud::Code38400)
        return;
    Serial1.setBaud(Baud::Code38400);
    Serial1.Reset();
}

void StatusMonitor::showFault(const QString& field) {
    const QString code = Text::Mid(field, 4, 2);
    if (code == u"00") {
        m_panel.setCurrentFault(QString());
        return;
    }
    const int row = 2 * Text::IntVal(code);
    if (row >= 0 && row < m_globals.FaultCodes.size())
        m_panel.setCurrentFault(m_globals.FaultCodes[row]);
}

void StatusMonitor::showMode(const QString& field) {
    const QString mode = Text::Mid(field, 4, 1);
    if (mode == u"0")
        m_panel.setMode(OperatePanel::Mode::Standby);
    else if (mode == u"1")
        m_panel.setMode(OperatePanel::Mode::Operate);
    else
        m_panel.setMode(OperatePanel::Mode::Other);
}

void StatusMonitor::showBand(int band) {
    m_panel.markBand(band);
    m_panel.setReadOut(
        OperatePanel::ReadOut::Band,
        m_panel.bandCaption(band) + polledValueOf(OperatePanel::ReadOut::Band).unit.toString());
}

void StatusMonitor::EnableControls(bool enable) {
    m_panel.enableReadOuts(enable);
    m_panel.enableOnOff(!m_globals.isUnknown());
}
