#include "MemoryAccess.h"

#include "MemoryProtocol.h"
#include "Text.h"

using namespace std::chrono_literals;

namespace {

// Before the wait for the first look, and behind the last.
constexpr auto Margin = 5ms;
constexpr int LookCount = 201;
constexpr auto ResetWait = 100ms;
const QByteArray ResetCommand = QByteArrayLiteral("^rpm;");

}  // namespace

Task<QString> MemoryAccess::SendCommandGetResponse(QString command) {
    Serial1.Flush();
    Serial1.Write(Text::toLine(command));
    co_await m_reader.pause(Margin);
    const auto end = co_await m_reader.until([this] { return Serial1.LookAhead().endsWith(';'); }, LookCount);
    if (end == LineReader::End::Came)
        co_return Text::fromLine(Serial1.ReadAll());
    co_await m_reader.pause(Margin);
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
    Serial1.Write(m_strOriginalM7 + m_strOriginalAutoInfo);
}

Task<bool> MemoryAccess::ResetMcu() {
    Serial1.Write(ResetCommand);
    const bool isOpen = co_await m_reader.pause(ResetWait);
    Serial1.Flush();
    co_return isOpen;
}
