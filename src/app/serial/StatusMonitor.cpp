#include "StatusMonitor.h"

#include "CommandSet.h"
#include "Text.h"

using namespace std::chrono_literals;
using ReadOut = OperatePanel::ReadOut;

namespace {

constexpr qsizetype FullBandLength = 5;  // "^BN" and two digits
constexpr Ticks ExchangeLimit{20};

double valueAt(const QString& field, qsizetype position) {
    return Text::Val(Text::Mid(field, position, 3));
}

}  // namespace

StatusMonitor::StatusMonitor(Platform& platform, Globals& globals, LineOwner& line, WindowState& window,
                             OperatePanel& panel)
    : m_clock(platform.clock),
      Serial1(platform.Serial1),
      m_globals(globals),
      m_line(line),
      m_window(window),
      m_panel(panel),
      Timer1(platform.clock, PollPeriod, [this] { Timer1_Action(); }),
      m_offer(platform.clock, Clock::Microseconds{0}, [this] { offerReceived(); }) {}

void StatusMonitor::enterOperateTab() {
    stopPoll();
    m_sending = enter();
}

Task<> StatusMonitor::enter() {
    const StartupSpan entering(m_window);
    EnableControls(m_globals.isMain());
    if (m_globals.isUnknown())
        co_return;
    co_await sendPoll();
    m_panel.setOnOffCaption(m_globals.isMain() ? QStringLiteral("OFF") : QStringLiteral("ON"));
    startTimer();
    // What was answered meanwhile was kept from the data handler.
    m_offer.start(ClockTimer::Mode::Single);
}

void StatusMonitor::offerReceived() {
    if (Serial1.DataAvailable && !Serial1.LookAhead().isEmpty())
        Serial1.DataAvailable();
}

void StatusMonitor::stopPoll() {
    Timer1.stop();
    m_offer.stop();
    m_sending.reset();
}

void StatusMonitor::Timer1_Action() {
    const bool isStillSending = m_sending && !m_sending->isDone();
    if (!isStillSending && !m_line.isTaken())
        m_sending = sendPoll();
}

Task<> StatusMonitor::sendPoll() {
    if (m_globals.isMain()) {
        for (const QByteArray& command : Command::Poll) {
            Serial1.Write(command);
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
    co_await m_clock.sleep(100ms);
    const Ticks start = m_clock.ticks();
    QByteArray answer;
    do {
        co_await m_clock.sleep(5ms);
        answer += Serial1.ReadAll();
    } while (answer.size() != expectedLength && m_clock.ticks() - start <= ExchangeLimit);
    if (answer.size() == expectedLength)
        dispatch(Text::fromLine(answer), Source::Exchange);
}

void StatusMonitor::dispatch(const QString& field, Source source) {
    const QString token = Text::Left(field, 3);
    if (Text::equal(token, u"^BN"))
        showBandAnswer(field, source);
    else if (Text::equal(token, u"^VI"))
        showVoltageAndCurrent(field);
    else if (Text::equal(token, u"^TM"))
        m_panel.setReadOut(ReadOut::Temperature,
                           Text::Format(valueAt(field, 4), u"##0") + QStringLiteral(" C"));
    else if (Text::equal(token, u"^WS"))
        showPowerAndSwr(field, source);
    else if (Text::equal(token, u"^FL"))
        showFault(field);
    else if (Text::equal(token, u"^OS"))
        showMode(field);
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

void StatusMonitor::showVoltageAndCurrent(const QString& field) {
    m_panel.setReadOut(ReadOut::PAVoltage,
                       Text::Format(valueAt(field, 4) / 10, u"00.0") + QStringLiteral(" V"));
    m_panel.setReadOut(ReadOut::PACurrent,
                       Text::Format(valueAt(field, 8) / 10, u"#0.0") + QStringLiteral(" A"));
}

void StatusMonitor::showPowerAndSwr(const QString& field, Source source) {
    const double swr = source == Source::Stream ? valueAt(field, 8) / 10 : valueAt(field, 8);
    m_panel.setReadOut(ReadOut::Power, Text::Format(valueAt(field, 4), u"##0") + QStringLiteral(" W"));
    m_panel.setReadOut(ReadOut::SWR, Text::Format(swr, u"#0.0"));
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
    m_panel.setReadOut(ReadOut::Band, m_panel.bandCaption(band) + QStringLiteral(" MHz"));
}

void StatusMonitor::EnableControls(bool enable) {
    m_panel.enableReadOuts(enable);
    m_panel.enableOnOff(!m_globals.isUnknown());
}
