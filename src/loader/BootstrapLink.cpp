#include "BootstrapLink.h"

#include <algorithm>
#include <limits>

#include "CommandSet.h"
#include "Text.h"

using namespace std::chrono_literals;

namespace {

const QByteArray EnterLoader = QByteArrayLiteral("^LDM;");
const QByteArray Begin = QByteArrayLiteral("D");
const QString BeginEcho = QStringLiteral("D");
const QByteArray Fill = QByteArrayLiteral("N");

constexpr double DownloadSpeed = 38400;
constexpr Ticks EchoLimit{1200};
constexpr Ticks ReplyLimit{150};
constexpr std::uint32_t SendsOfABlock = 10;
constexpr qsizetype Everything = std::numeric_limits<qsizetype>::max();

}  // namespace

Task<bool> BootstrapLink::EnterDownloadMode() {
    if (!m_globals.isBootloader()) {
        Serial1.Write(EnterLoader);
        co_await Serial1.XmitWait();
        co_await m_reader.pause(2000ms);
    }
    if (m_globals.m_dwBaudRate != DownloadSpeed) {
        Serial1.setBaud(Baud::Code38400);
        Serial1.Reset();
    }
    Serial1.Flush();
    m_globals.SetStatusText(QStringLiteral("Send \"D\""), true);
    Serial1.Write(Begin);
    const Clock::Microseconds start = m_clock.now();
    tellLongWait(QStringLiteral("Waiting for the boot loader"), EchoLimit);
    const auto end = co_await m_reader.until(
        [this] {
            tcResponse = Text::fromLine(Serial1.Read(1));
            return Text::equal(tcResponse, BeginEcho);
        },
        EchoLimit);
    tellLongWait({});
    if (end == LineReader::End::Closed)
        tcResponse.clear();
    // Start minus end, and so negative, in this line alone.
    logResponse(tcResponse, QStringLiteral("   "), start - m_clock.now());
    // A stray character in the very last look counts as an echo.
    if (!tcResponse.isEmpty())
        co_return true;
    m_globals.SetStatusText(QStringLiteral("VLX Bootstrap Loader did not echo \"D\""), false);
    m_globals.SetStatusText(QStringLiteral("Remove VLX power and retry firmware load"), false);
    co_return false;
}

Task<bool> BootstrapLink::WriteBlockToRadio(QByteArray block, std::uint32_t count,
                                            std::uint32_t /*blockNumber*/, QString expected) {
    const QByteArray bytes = block.left(count);
    const bool isDumped = m_globals.m_Verbose && m_globals.m_loadingfirmware;
    const QString dump = isDumped ? QString::fromLatin1(bytes.toHex().toUpper()) : QString();
    m_globals.SetStatusText(QStringLiteral("Send %1 bytes x%2").arg(Text::Str(count), dump), true);

    const bool isAnswered = co_await sendUntilAnswered(bytes, expected);
    m_dwHighestBlockRetries = std::max(m_dwHighestBlockRetries, m_dwCurrentBlockRetries);
    m_dwTotalBlockRetries += m_dwCurrentBlockRetries;
    co_return isAnswered;
}

Task<bool> BootstrapLink::sendUntilAnswered(QByteArray block, QString expected) {
    for (m_dwCurrentBlockRetries = 0; m_dwCurrentBlockRetries < SendsOfABlock; ++m_dwCurrentBlockRetries) {
        Serial1.Flush();
        Serial1.Write(block);
        const Clock::Microseconds start = m_clock.now();
        const QString reply = co_await awaitReply(Everything);
        logResponse(reply, QStringLiteral("    "), m_clock.now() - start);
        if (Text::equal(reply, expected)) {
            if (m_dwCurrentBlockRetries > 0)
                m_globals.SetStatusText(QStringLiteral("Retry %1 successful at address %2")
                                            .arg(Text::Str(m_dwCurrentBlockRetries), Text::Str(m_dwAddress)),
                                        false);
            co_return true;
        }
        std::uint32_t fillCount = 0;
        QString response;
        const bool isInStep = co_await SynchronizeToBlockBoundary(static_cast<std::uint32_t>(block.size()),
                                                                  fillCount, response);
        if (!isInStep)
            co_return false;
    }
    co_return false;
}

Task<bool> BootstrapLink::SynchronizeToBlockBoundary(std::uint32_t byteCount, std::uint32_t& fillCount,
                                                     QString& response) {
    return SynchronizeCommon(170, byteCount, fillCount, response);
}

// The fill byte is taken and not sent: on the line it is always "N".
Task<bool> BootstrapLink::SynchronizeCommon(std::uint8_t /*fillByte*/, std::uint32_t byteCount,
                                            std::uint32_t& fillCount, QString& response) {
    response.clear();
    co_await m_reader.pause(100ms);
    Serial1.Flush();
    const bool isInStep = co_await fill(byteCount, fillCount, response);
    tellLongWait({});
    co_return isInStep;
}

Task<bool> BootstrapLink::fill(std::uint32_t byteCount, std::uint32_t& fillCount, QString& response) {
    for (std::uint32_t i = 0; i < byteCount; ++i) {
        if (!Serial1.isOpen())
            co_return false;
        tellLongWait(QStringLiteral("No answer, trying again"), (byteCount - i) * ReplyLimit);
        Serial1.Write(Fill);
        fillCount = i + 1;
        response = co_await awaitReply(1);
        if (!response.isEmpty()) {
            m_globals.SetStatusText(
                QStringLiteral("Retry %1 successful at addresss x%2, %3 fill bytes")
                    .arg(Text::Str(m_dwCurrentBlockRetries + 1), Text::Hex(m_dwAddress), Text::Str(i)),
                false);
            co_return true;
        }
    }
    co_return byteCount == 0;
}

Task<> BootstrapLink::LeaveDownloadMode() {
    Serial1.Write(Command::PowerOn);
    m_globals.SetStatusText(QStringLiteral("Waiting for VLX reset to complete"), false);
    co_await m_reader.pause(4000ms);
}

Task<QString> BootstrapLink::awaitReply(qsizetype atMost) {
    QString reply;
    co_await m_reader.until(
        [&] {
            reply = Text::fromLine(Serial1.Read(atMost));
            return !reply.isEmpty();
        },
        ReplyLimit);
    co_return reply;
}

void BootstrapLink::tellLongWait(const QString& what, Ticks left) const {
    if (TellLongWait)
        TellLongWait(what, std::chrono::duration_cast<std::chrono::seconds>(left));
}

void BootstrapLink::logResponse(const QString& response, const QString& gap, Clock::Microseconds elapsed) {
    const double milliseconds = static_cast<double>(elapsed.count()) / 1000;
    m_globals.SetStatusText(
        QStringLiteral("Response \"%1\"%2\"%3 msec").arg(response, gap, Text::Format(milliseconds, u"##")),
        true);
}
