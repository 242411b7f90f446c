#include "MemoryAccess.h"

#include "MemoryProtocol.h"
#include "Text.h"

using namespace std::chrono_literals;

namespace {

constexpr auto FirstWait = 10ms;
constexpr auto LookStep = 5ms;
constexpr int LookCount = 201;
const QByteArray ResetCommand = QByteArrayLiteral("^rpm;");

}  // namespace

Task<QString> MemoryAccess::SendCommandGetResponse(QString command) {
    Serial1.Flush();
    Serial1.Write(Text::toLine(command));
    co_await m_clock.sleep(FirstWait);
    for (int look = 0; look < LookCount; ++look) {
        if (Serial1.LookAhead().endsWith(';'))
            co_return Text::fromLine(Serial1.ReadAll());
        co_await m_clock.sleep(LookStep);
    }
    co_return QString();
}

Task<bool> MemoryAccess::GetSerialNumber() {
    m_globals.m_SerialNumber = 0;
    if (!m_globals.isMain())
        co_return false;
    constexpr auto Address = MemoryMap::SerialNumberAddress;
    constexpr auto Count = MemoryMap::SerialNumberSize;
    const QString command = FormatERCommand(0, Address, Count);
    const QString response = co_await SendCommandGetResponse(command);
    const bool isAnswer = ParseResponse(0, Count, Address, command, response);
    if (isAnswer)
        m_globals.m_SerialNumber = hexByteAt(response, 12) * 256 + hexByteAt(response, 10);
    co_return isAnswer;
}

void MemoryAccess::LeaveHiddenCommandMode() {
    if (m_strOriginalM7.isEmpty())
        m_strOriginalM7 = QStringLiteral("M70;");
    if (m_strOriginalAutoInfo.isEmpty())
        m_strOriginalAutoInfo = QStringLiteral("AI0;");
    Serial1.Write(Text::toLine(m_strOriginalM7 + m_strOriginalAutoInfo));
}

void MemoryAccess::ResetMcu() {
    Serial1.Write(ResetCommand);
}
