// Walks the step tables.
#pragma once

#include <cstdint>

#include <QString>
#include <QStringView>

#include "FTPSteps.h"

class FTPSessionClass;

class FTPEngine {
public:
    explicit FTPEngine(FTPSessionClass& owner) : session(owner) {}

    // Hands a reply to the table of the running operation; a type without a table does nothing.
    void Execute(const QString& reply, std::int32_t code);
    void Execute(const FTPStepTable& table, const QString& reply, std::int32_t code);
    // Takes up the row that waits for an encrypted control connection.
    void onSecured();
    // A new operation, or the end of one: nothing waits any more.
    void reset() { m_waiting = nullptr; }
    // Ends the operation because of the present reply.
    void refuse();
    // A row's text with the names in braces replaced.
    QString expanded(FTPText text) const;

    FTPSessionClass& session;
    // What the rows of one operation hand on to each other.
    QString line;       // the reply that is being handled
    QString name;       // the file or folder last taken
    QString directory;  // the directory that a walk works on; empty when there is none

private:
    static bool passesGate(FTPGate gate, QStringView reply);
    void apply(const FTPStepRow& row);
    void go(const FTPStepRow& row);
    QString valueOf(QStringView placeholder) const;

    const FTPStepRow* m_waiting = nullptr;
};
