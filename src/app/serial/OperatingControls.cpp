#include "OperatingControls.h"

#include "CommandSet.h"
#include "Text.h"

void OperatingControls::OperStby_Action() {
    const QString caption = m_panel.operStbyCaption();
    if (Text::equal(caption, u"Operate"))
        Serial1.Write(Command::Operate);
    else if (Text::equal(caption, u"Standby"))
        Serial1.Write(Command::Standby);
}

void OperatingControls::ClearCurrentFault_Action() {
    Serial1.Write(Command::ClearFault);
}

void OperatingControls::BandSelected_Action(int band) {
    Serial1.Write(Text::toLine(QStringLiteral("^BN%1;").arg(Text::Format(band, u"00"))));
    m_monitor.showBand(band);
}

Task<> OperatingControls::OnOff_Action() {
    const auto guard = m_line.take();
    m_monitor.stopPoll();
    const StartupSpan keepsDataHandlerOut(m_window);
    if (Text::equal(m_panel.onOffCaption(), u"OFF"))
        co_await switchOff();
    else
        co_await switchOn();
    m_monitor.startTimer();
}

Task<> OperatingControls::switchOff() {
    m_panel.setOnOffCaption(QStringLiteral("ON"));
    m_monitor.discardReceived();
    Serial1.Write(Command::PowerOff);
    co_await Serial1.XmitWait();
    // Before the status changes: the enabled state of OnOff itself follows the earlier one.
    m_monitor.EnableControls(false);
    m_monitor.setBootloaderSpeed();
    m_globals.m_FirmwareStatus = FirmwareStatus::Bootloader;
}

Task<> OperatingControls::switchOn() {
    // The speed stays at 38400 bit/s: an amplifier set to another one goes unheard until it is sensed.
    Serial1.Write(Command::PowerOn);
    co_await Serial1.XmitWait();
    m_panel.setOnOffCaption(QStringLiteral("OFF"));
    m_monitor.discardReceived();
    m_monitor.EnableControls(true);
    m_globals.m_FirmwareStatus = FirmwareStatus::Main;
}
