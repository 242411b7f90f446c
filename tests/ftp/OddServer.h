// A logged-on session and a server that answers as a test wants it.
#pragma once

#include <QTemporaryDir>

#include <gmock/gmock.h>

#include "Operations.h"
#include "ScriptedServer.h"

class OddServer : public testing::Test {
protected:
    OddServer() {
        prepareServer(root.path());
        prepareLocal(bench.local.path());
        bench.connectTo(server.port());
    }

    void logon() {
        logOnTo(bench);
        bench.status->ends.clear();
    }
    // The server answers `verb` its own way.
    void answerTo(const char* verb, const QByteArray& text) {
        server.answer = [verb = QString::fromLatin1(verb),
                         text](const QString& command) -> std::optional<QByteArray> {
            if (command.section(u' ', 0, 0) == verb)
                return text;
            return std::nullopt;
        };
    }
    void greetWith(const QByteArray& greeting) {
        server.intercept = [greeting](int number, QByteArray& reply) {
            if (number == 0)
                reply = greeting;
        };
    }
    QByteArray localFile(const char* name) {
        return readFile(bench.local.path() + u'/' + QString::fromLatin1(name));
    }

    QTemporaryDir root;
    ScriptedServer server{root.path()};
    SessionBench<SimClock> bench;
    FTPSessionClass& session = *bench.session;
};
