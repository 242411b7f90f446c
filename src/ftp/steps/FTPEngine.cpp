#include "FTPEngine.h"

#include <algorithm>
#include <array>
#include <utility>

#include "FTPCommandSocket.h"
#include "FTPOperations.h"
#include "FTPPlaceholders.h"
#include "Text.h"

namespace {

// The steps of the TLS negotiation end the first line of a refusal their own way.
bool isTlsStep(const QString& step) {
    constexpr std::array<FTPText, 3> steps{u"AUTH", u"PBSZ", u"PROT"};
    return std::ranges::any_of(steps, [&](FTPText name) { return Text::equal(step, name); });
}

QString platformLineEnd() {
#ifdef Q_OS_WIN
    return QStringLiteral("\r\n");
#else
    return QStringLiteral("\n");
#endif
}

}  // namespace

void FTPEngine::Execute(const QString& reply, std::int32_t code) {
    if (const FTPOperation* operation = findOperation(session.FTPSessionType))
        Execute(*operation, reply, code);
}

void FTPEngine::Execute(const FTPOperation& operation, const QString& reply, std::int32_t code) {
    if (!passesGate(operation.table.gate, reply))
        return;
    line = reply;
    m_code = code;
    walk(operation, code);
}

void FTPEngine::Resume() {
    if (const FTPOperation* operation = findOperation(session.FTPSessionType))
        walk(*operation, m_code);
}

void FTPEngine::walk(const FTPOperation& operation, std::int32_t code) {
    const QString step = session.CurrentFTPStep;
    bool isKnown = false;
    for (const FTPStepRow& row : operation.table.rows) {
        if (!Text::equal(step, row.step))
            continue;
        isKnown = true;
        if (!row.codes.accepts(code) || (row.test && !row.test(*this)))
            continue;
        if (row.action && !row.action(*this))
            return;
        if (row.outcome == FTPOutcome::NextRow)
            continue;
        finish(operation, row);
        return;
    }
    if (isKnown)
        refuse();
    else if (!operation.table.ignoresUnknownStep)
        end(QStringLiteral("Unknown error during (%1).").arg(step));
}

void FTPEngine::finish(const FTPOperation& operation, const FTPStepRow& row) {
    switch (row.outcome) {
        case FTPOutcome::Stay:
        case FTPOutcome::NextRow:
            break;
        case FTPOutcome::Go:
            go(row);
            break;
        case FTPOutcome::GoWhenSecure:
            m_waiting = &row;
            if (session.CommandSocket && session.CommandSocket->SSLConnected())
                onSecured();
            break;
        case FTPOutcome::AwaitData:
            m_host.AwaitData(!row.command.empty(), expanded(row.status));
            break;
        case FTPOutcome::Done:
            m_host.StopConnectionTimer();
            m_host.Succeed(expanded(operation.success));
            break;
        case FTPOutcome::Report:
            m_host.Succeed(expanded(operation.success));
            break;
        case FTPOutcome::End:
            end(expanded(operation.success));
            break;
        case FTPOutcome::EndQuietly:
            end(QString());
            break;
    }
}

void FTPEngine::onSecured() {
    if (const FTPStepRow* row = std::exchange(m_waiting, nullptr))
        go(*row);
}

bool FTPEngine::end(const QString& message) {
    m_host.EndFTPSession(message);
    return false;
}

bool FTPEngine::refuse() {
    const QString lineEnd = isTlsStep(session.CurrentFTPStep) ? QStringLiteral("\r") : platformLineEnd();
    return end(QStringLiteral("Error: ") + line + lineEnd + session.decode(session.Buffer));
}

void FTPEngine::go(const FTPStepRow& row) {
    if (m_host.NextFTPStep(expanded(row.next), expanded(row.command), expanded(row.status)) && row.after)
        row.after(*this);
}

bool FTPEngine::passesGate(FTPGate gate, QStringView reply) {
    if (reply.startsWith(u' '))
        return false;
    const QChar fourth = reply.size() > 3 ? reply[3] : QChar();
    return gate == FTPGate::A ? fourth == u' ' : fourth != u'-';
}

QString FTPEngine::expanded(FTPText text) const {
    QString result;
    QStringView rest(text);
    for (;;) {
        const qsizetype open = rest.indexOf(u'{');
        const qsizetype close = open < 0 ? -1 : rest.indexOf(u'}', open);
        if (close < 0)
            return result += rest;
        result += rest.first(open);
        result += valueOf(rest.sliced(open + 1, close - open - 1));
        rest = rest.sliced(close + 1);
    }
}

QString FTPEngine::valueOf(QStringView placeholder) const {
    for (const FTPPlaceholder& known : FTPPlaceholders)
        if (QStringView(known.name) == placeholder)
            return known.value(*this);
    return {};
}
