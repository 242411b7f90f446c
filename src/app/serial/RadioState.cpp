#include "RadioState.h"

#include "CommandSet.h"
#include "Text.h"

using namespace std::chrono_literals;

namespace {

// "More than 60 ticks have passed" and the like: the limit is the last tick that is still waited for.
constexpr Ticks ProbeLimit{20};
constexpr Ticks IdentifyLimit{60};
constexpr Ticks AnswerLimit{60};
constexpr qsizetype IdentifyLength = 9;
const QString BootloaderIdentity = QStringLiteral("VLX720");
const QString NoVersion = QStringLiteral("99.99");
constexpr double NoVersionNumber = 9999;

}  // namespace

Task<bool> RadioState::Refresh(std::int32_t retries) {
    const auto guard = m_line.take();
    for (;;) {
        bool ok = co_await SenseStatus(1);
        if (ok)
            ok = co_await ReadFirmWareVersions(0);
        // Of a port that has gone nothing is known any more, whatever was found before.
        if (!Serial1.isOpen())
            co_return setStatus(FirmwareStatus::Unknown);
        if (ok || retries <= 0)
            co_return ok;
        --retries;
        co_await m_reader.pause(50ms);
    }
}

Task<bool> RadioState::SenseStatus(std::int32_t retries) {
    const auto guard = m_line.take();
    setStatus(FirmwareStatus::Unknown);
    const double rate = co_await SenseBaudRate(retries);
    if (rate == 0)
        co_return false;
    if (rate != 38400)  // only the main firmware knows another speed
        co_return setStatus(FirmwareStatus::Main);

    Serial1.Flush();
    Serial1.Write(Command::Identify);
    co_await Serial1.XmitWait();
    QByteArray answer;
    co_await m_reader.until(
        [&] {
            answer += Serial1.ReadAll();
            return answer.size() >= IdentifyLength;
        },
        IdentifyLimit);
    const bool isBootloader = Text::StrComp(Text::Left(Text::fromLine(answer), 6), BootloaderIdentity) == 0;
    co_return setStatus(isBootloader ? FirmwareStatus::SensedBootLoader : FirmwareStatus::Main);
}

bool RadioState::setStatus(const QString& status) {
    m_globals.m_FirmwareStatus = status;
    if (!m_globals.isUnknown())
        return true;
    m_globals.m_dwBaudRate = 0;
    m_globals.m_dwMcuVersion = 0;
    m_globals.m_strMcuVersion = QStringLiteral("---");
    return false;
}

Task<double> RadioState::SenseBaudRate(std::int32_t retries) {
    m_globals.m_dwBaudRate = 0;
    // A late answer to the poll would be taken for the echo of the first speed.
    Serial1.Flush();
    bool found = false;
    do {
        for (const Baud::Speed& speed : Baud::Speeds) {
            const bool answered = co_await TestBaudRate(speed.bitsPerSecond, speed.code, found);
            if (answered)
                co_return m_globals.m_dwBaudRate;
        }
        co_await m_reader.pause(30ms);
    } while (--retries > 0);
    co_return m_globals.m_dwBaudRate;
}

Task<bool> RadioState::TestBaudRate(double bps, std::int32_t baudCode, bool& found) {
    Serial1.setBaud(baudCode);
    Serial1.Reset();
    Serial1.Write(Command::Empty);
    co_await Serial1.XmitWait();
    Serial1.Write(Command::FiveEmpty);
    co_await Serial1.XmitWait();
    co_await m_reader.pause(100ms);

    QByteArray answer;
    co_await m_reader.until(
        [&] {
            answer = Serial1.ReadAll();
            return !answer.isEmpty();
        },
        ProbeLimit);
    Serial1.Flush();
    // Noise at a wrong speed is taken to hold no semicolon.
    if (!answer.contains(';'))
        co_return false;
    m_globals.m_dwBaudRate = bps;
    found = true;
    co_return true;
}

Task<bool> RadioState::ReadFirmWareVersions(std::int32_t /*ignored*/) {
    const bool ok = co_await SendReadVersionCommand(0, QString::fromLatin1(Command::ReadVersion));
    if (ok) {
        m_globals.m_dwMcuVersion = dwVersionResult;
        m_globals.m_strMcuVersion = strVersionResult == NoVersion ? QStringLiteral("N/A") : strVersionResult;
    }
    co_return ok;
}

Task<bool> RadioState::SendReadVersionCommand(std::int32_t /*ignored*/, QString command) {
    m_globals.SetStatusText(QStringLiteral("Send \"") + command + u'"', true);
    const bool ok = co_await SendReadCommand(0, command);
    if (ok && strResult.size() == 5) {
        dwVersionResult = Text::Val(Text::Left(strResult, 2)) * 100 + Text::Val(Text::Right(strResult, 2));
        strVersionResult = Text::Format(dwVersionResult, u"00\\.00");
    } else {
        strVersionResult = NoVersion;
        dwVersionResult = NoVersionNumber;
    }
    co_return ok;
}

Task<bool> RadioState::SendReadCommand(std::int32_t /*ignored*/, QString command) {
    Serial1.Flush();
    if (!m_globals.isMain())
        co_return false;
    const auto guard = m_line.take();
    Serial1.Write(Text::toLine(command));
    const Clock::Microseconds start = m_clock.now();
    strResult.clear();
    QByteArray answer;
    co_await m_reader.until(
        [&] {
            answer += Serial1.ReadAll();
            return answer.endsWith(';');
        },
        AnswerLimit);
    strResult = Text::fromLine(answer);
    const double milliseconds = static_cast<double>((m_clock.now() - start).count()) / 1000;
    m_globals.SetStatusText(
        QStringLiteral("Response \"%1\"   %2 msec").arg(strResult, Text::Format(milliseconds, u"##")), true);

    const qsizetype tokenLength = Text::NthField(command, u";", 1).size();
    strResult = Text::Trim(Text::NthField(strResult, u";", 1)).mid(tokenLength);
    Serial1.Flush();
    // A silent amplifier in the main firmware counts as an answer, an empty one.
    co_return m_globals.isMain();
}
