#include "Globals.h"

#include <utility>

#include "Text.h"

void Globals::SetStatusText(const QString& text, bool isTrace) {
    UpdateTimeStamp();
    m_ifVerbose = isTrace;
    if (isTrace && !m_Verbose)
        return;
    m_StatusMsg = text;
    SetStatus1_Run();
}

void Globals::SetStatus1_Run() {
    UpdateTimeStamp();
    if (StatusField && !(m_loadingfirmware && m_ifVerbose))
        StatusField(mTIMESTAMP + m_StatusMsg + u'\n');
    if (ActivityLog && m_loadingfirmware)
        ActivityLog(m_StatusMsg + u'\n');
}

void Globals::showStatus(const QString& text) {
    if (DisplayStatus)
        DisplayStatus(text.isEmpty() ? QStringLiteral("Ready") : text);
}

void Globals::UpdateTimeStamp() {
    if (const qint64 second = m_clock.wallSeconds(); std::exchange(m_stampedSecond, second) != second)
        mTIMESTAMP = m_clock.wallClock().toString(QStringLiteral("HH:mm:ss "));
}

bool Globals::isMain() const {
    return Text::equal(m_FirmwareStatus, FirmwareStatus::Main);
}

bool Globals::isBootloader() const {
    return Text::equal(m_FirmwareStatus, FirmwareStatus::Bootloader);
}
