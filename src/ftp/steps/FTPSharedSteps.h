// The pieces that several step tables have in common, written once.
#pragma once

#include "FTPStepActions.h"
#include "FTPSteps.h"

// clang-format off
namespace FTPSteps {

// By PassiveMode: a passive connection, or a port of ours. `start` says in which step and on which codes.
constexpr Rows<2> byPassiveMode(const FTPStepRow& start, FTPText passive = u"PASV", FTPText active = u"NOTPASV") {
    using namespace FTPStepActions;
    return {start.when(isPassive).go(passive, u"{PassiveCommand}", u"Passive Mode"),
            start                .go(active,  NOOP)};
}

// The reply to PASV, or to EPSV where the server is reached by IPv6. Which of the two codes fits, and what a
// refused EPSV means, follows from that too.
constexpr FTPStepRow onPassive(FTPText step) {
    return on(step, 227, 229);
}

constexpr FTPStepRow noEPSV(FTPText step) {
    using namespace FTPStepActions;
    return onAny(step).when(refusesEPSV).run(endWithoutEPSV);
}

// A port of ours: tells it to the server, and waits on it.
constexpr FTPStepRow sendPort(FTPText step, FTPText portStep) {
    using namespace FTPStepActions;
    return on(step, 200).go(portStep, u"{PortCommand}", u"Set data port to: {DataPort}").then(listen);
}

// The data port steps of a walk, which go on in one step for both modes.
constexpr Rows<3> dataPort(FTPText passive, FTPText active, FTPText portStep) {
    using namespace FTPStepActions;
    return {noEPSV(passive),
            onPassive(passive).run(CalcSetPassivePort).go(portStep, NOOP),
            sendPort(active, portStep)};
}

// The data port steps of a transfer, up to the transfer type.
constexpr Rows<4> dataPortAndType() {
    using namespace FTPStepActions;
    return {noEPSV(u"PASV"),
            onPassive(u"PASV").run(CalcSetPassivePort).go(u"TYPE", u"TYPE {FTPTransferType}", u"Change transfer type."),
            sendPort(u"NOTPASV", u"PORT"),
            on(u"PORT", 200)                        .go(u"TYPE", u"TYPE {FTPTransferType}", u"Change transfer type.")};
}

// The data port steps of an operation that needs no transfer type.
constexpr Rows<4> dataPortAndNext() {
    using namespace FTPStepActions;
    return {noEPSV(u"PASV"),
            onPassive(u"PASV").run(CalcSetPassivePort).go(u"NEXT", NOOP, u"NOOP"),
            sendPort(u"NOTPASV", u"PORT"),
            on(u"PORT", 200)                        .go(u"NEXT", NOOP, u"NOOP")};
}

// From the greeting to the password, without the reply to it. 530 counts as a greeting too; a 534 to PROT
// ("policy requires") as consent. The data connection is never encrypted, in spite of PROT P.
constexpr Rows<6> logon(const FTPStepRow& connect, const FTPStepRow& user) {
    using namespace FTPStepActions;
    return {connect.when(isFTPS).run(noteMicrosoft).go(u"AUTH", u"AUTH TLS",              u"\"Sending AUTH\""),
            connect             .run(noteMicrosoft).go(u"USER", u"USER {ServerUserID}",   u"Send UserID"),
            on(u"AUTH", 234).run(secureConnection).goWhenSecure(
                                                       u"PBSZ", u"PBSZ 0",                u"Sending PBSZ"),
            on(u"PBSZ", 200)                       .go(u"PROT", u"PROT P",                u"Sending PROT"),
            on(u"PROT", 200, 534)                  .go(u"USER", u"USER {ServerUserID}",   u"Send UserID"),
            user                                   .go(u"PASS", u"PASS {ServerPassword}", u"Send Password")};
}

// The same for the one-shot operations, which also take a server that asks for no password.
constexpr Rows<6> oneShotLogon(const FTPStepRow& connect) {
    return logon(connect, on(u"USER", 331, 230));
}

constexpr Rows<6> oneShotLogon() {
    return oneShotLogon(on(u"CONNECT", 220, 530));
}

// The change to the server directory behind the logon, left out if there is none.
constexpr Rows<3> changeDirThen(FTPText next, FTPText command, FTPText status = {}) {
    using namespace FTPStepActions;
    return {on(u"PASS", 230).when(hasServerDirectory)
                            .go(u"CWD", u"CWD {ServerDirectory}", u"Change directory to: {ServerDirectory}"),
            on(u"PASS", 230).go(next, command, status),
            on(u"CWD",  250).go(next, command, status)};
}

constexpr FTPStepRow quit(const FTPStepRow& row) {
    return row.go(u"QUIT", u"QUIT", u"FTP Session Complete.");
}

// The end of one turn of a file loop: the next file, or quit.
constexpr Rows<2> nextFileOrQuit(const FTPStepRow& row, FTPText loop = u"LOOP") {
    using namespace FTPStepActions;
    return {row.when(hasMoreFiles).run(NextDataPort).go(loop, NOOP),
            quit(row)};
}

}  // namespace FTPSteps
// clang-format on
