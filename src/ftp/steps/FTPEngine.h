// Walks the step tables.
#pragma once

#include <cstdint>

#include <QString>
#include <QStringView>

#include "FTPSessionState.h"
#include "FTPStepHost.h"
#include "FTPSteps.h"

struct FTPOperation;

class FTPEngine {
public:
    FTPEngine(FTPSessionState& state, FTPStepHost& owner) : session(state), m_host(owner) {}

    // Hands a reply to the table of the running operation; a type without a table does nothing.
    void Execute(const QString& reply, std::int32_t code);
    void Execute(const FTPOperation& operation, const QString& reply, std::int32_t code);
    // Takes up the row that waits for an encrypted control connection.
    void onSecured();
    // Hands the present reply to its table once more: the data connection has ended.
    void Resume();
    // A new operation, or the end of one: nothing waits any more.
    void reset() { m_waiting = nullptr; }
    // Ends the operation. False, for an action to give on.
    bool end(const QString& message);
    // The same because of the present reply.
    bool refuse();
    void tell(const QString& status) { m_host.Tell(status); }
    void warn(const QString& message) { m_host.Warn(message); }
    // A row's text with the names in braces replaced.
    QString expanded(FTPText text) const;

    FTPSessionState& session;
    // What the rows of one operation hand on to each other.
    QString line;       // the reply that is being handled
    QString name;       // the file or folder last taken
    QString directory;  // the directory that a walk works on; empty when there is none

private:
    static bool passesGate(FTPGate gate, QStringView reply);
    void walk(const FTPOperation& operation, std::int32_t code);
    void finish(const FTPOperation& operation, const FTPStepRow& row);
    void go(const FTPStepRow& row);
    QString valueOf(QStringView placeholder) const;

    FTPStepHost& m_host;
    std::int32_t m_code = 0;  // of `line`
    const FTPStepRow* m_waiting = nullptr;
};
