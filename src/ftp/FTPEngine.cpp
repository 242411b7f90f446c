#include "FTPEngine.h"

#include <algorithm>

#include "FTPSessionClass.h"
#include "FTPStepTables.h"
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

// What the braces in a row's texts may name.
struct Placeholder {
    QStringView name;
    QString (*value)(const FTPEngine&);
};

// clang-format off
constexpr Placeholder Placeholders[] = {
    {u"ServerUserID",            [](const FTPEngine& e) { return e.session.ServerUserID; }},
    {u"ServerPassword",          [](const FTPEngine& e) { return e.session.ServerPassword; }},
    {u"ServerDirectory",         [](const FTPEngine& e) { return e.session.ServerDirectory; }},
    {u"DeleteDirectory",         [](const FTPEngine& e) { return e.session.DeleteDirectory; }},
    {u"CurrentWorkingDirectory", [](const FTPEngine& e) { return e.session.CurrentWorkingDirectory; }},
    {u"FTPTransferType",         [](const FTPEngine& e) { return e.session.FTPTransferType; }},
    {u"BuildPortString",         [](const FTPEngine& e) { return e.session.BuildPortString(); }},
    {u"DataPort",                [](const FTPEngine& e) { return Text::Str(e.session.DataPort); }},
    {u"RestartByteCount",        [](const FTPEngine& e) { return Text::Str(e.session.RestartByteCount); }},
    {u"ChmodMask",               [](const FTPEngine& e) { return e.session.ChmodMask; }},
    {u"DirectCommand",           [](const FTPEngine& e) { return e.session.DirectCommandText; }},
    {u"name",                    [](const FTPEngine& e) { return e.name; }},
    {u"directory",               [](const FTPEngine& e) { return e.directory; }},
};
// clang-format on

}  // namespace

void FTPEngine::Execute(const QString& reply, std::int32_t code) {
    if (const FTPStepTable* table = stepTable(session.FTPSessionType))
        Execute(*table, reply, code);
}

void FTPEngine::Execute(const FTPStepTable& table, const QString& reply, std::int32_t code) {
    if (!passesGate(table.gate, reply))
        return;
    line = reply;
    const QString step = session.CurrentFTPStep;
    const int endings = session.endings();
    bool isKnown = false;
    for (const FTPStepRow& row : table.rows) {
        if (!Text::equal(step, row.step))
            continue;
        isKnown = true;
        if (!row.codes.accepts(code) || (row.test && !row.test(*this)))
            continue;
        apply(row);
        if (row.outcome != FTPOutcome::NextRow || session.endings() != endings)
            return;
    }
    if (isKnown)
        refuse();
    else if (!table.ignoresUnknownStep)
        session.EndFTPSession(QStringLiteral("Unknown error during (%1).").arg(step));
}

void FTPEngine::onSecured() {
    if (const FTPStepRow* row = std::exchange(m_waiting, nullptr))
        go(*row);
}

void FTPEngine::refuse() {
    const QString lineEnd = isTlsStep(session.CurrentFTPStep) ? QStringLiteral("\r") : platformLineEnd();
    session.EndFTPSession(QStringLiteral("Error: ") + line + lineEnd + session.decode(session.Buffer));
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

bool FTPEngine::passesGate(FTPGate gate, QStringView reply) {
    if (reply.startsWith(u' '))
        return false;
    const QChar fourth = reply.size() > 3 ? reply[3] : QChar();
    return gate == FTPGate::A ? fourth == u' ' : fourth != u'-';
}

void FTPEngine::apply(const FTPStepRow& row) {
    const int endings = session.endings();
    if (row.action)
        row.action(*this);
    if (session.endings() != endings)
        return;
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
        case FTPOutcome::Done:
            session.ConnectionTimer->Off();
            session.Successful_FTP(expanded(row.next));
            break;
        case FTPOutcome::Report:
            session.Successful_FTP(expanded(row.next));
            break;
        case FTPOutcome::End:
            session.EndFTPSession(expanded(row.next));
            break;
    }
}

void FTPEngine::go(const FTPStepRow& row) {
    const int endings = session.endings();
    session.NextFTPStep(expanded(row.next), expanded(row.command), expanded(row.status));
    if (row.after && session.endings() == endings)
        row.after(*this);
}

QString FTPEngine::valueOf(QStringView placeholder) const {
    for (const Placeholder& known : Placeholders)
        if (known.name == placeholder)
            return known.value(*this);
    return {};
}
