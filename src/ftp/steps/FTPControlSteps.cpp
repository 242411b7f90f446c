#include "FTPOperations.h"
#include "FTPSharedSteps.h"
#include "FTPStepCheck.h"

using namespace FTPSteps;
using namespace FTPStepActions;

// clang-format off
namespace {

constexpr auto ChangeDirRows = rows(
    onAny(u"START").go(u"CWD", u"CWD {ServerDirectory}", u"Change directory to: {ServerDirectory}"),
    on(u"CWD", 250).done());

constexpr auto ParentDirRows = rows(
    onAny(u"START") .go(u"CDUP", u"CDUP", u"Changing to parent directory."),
    on(u"CDUP", 250).done());

// The path is not stored: the caller reads it from the reply passed to Response_FTP.
constexpr auto GetWorkingDirRows = rows(
    onAny(u"START").go(u"PWD", u"PWD", u"Get working directory for "),
    on(u"PWD", 257).done());

constexpr auto MakeDirRows = rows(
    onAny(u"START").go(u"MKD", u"MKD {ServerDirectory}", u"Create directory: {ServerDirectory}"),
    on(u"MKD", 257).done());

constexpr auto RemoveDirRows = rows(
    onAny(u"START").go(u"RMD", u"RMD {ServerDirectory}", u"Delete: {ServerDirectory}"),
    on(u"RMD", 250).done());

// No blank between the point and the name.
constexpr auto RenameSingleFileRows = rows(
    onAny(u"START") .run(takeName).go(u"TO",   u"RNFR {name}", u"Renaming file.{name}"),
    on(u"TO",   350).run(takeName).go(u"DONE", u"RNTO {name}", u" to: {name}"),
    on(u"DONE", 250).done());

constexpr auto ChmodSingleFileRows = rows(
    onAny(u"START") .run(takeName).go(u"DONE", u"SITE CHMOD {ChmodMask} {name}", u"Change Mode of: {name} to: {ChmodMask}"),
    on(u"DONE", 200).done());

constexpr auto SITERows = rows(
    onAny(u"START") .go(u"DONE", u"SITE {DirectCommand}", u"{DirectCommand}"),
    on(u"DONE", 200).done());

constexpr auto DirectCommandRows = rows(
    onAny(u"START")      .go(u"DONE", u"{DirectCommand}", u"{DirectCommand}"),
    onAnySuccess(u"DONE").done());

// A 226 that does not speak of an abort is the transfer's own: nothing is reported then.
constexpr auto AbortTransferRows = rows(
    onAny(u"START")  .run(abortData).go(u"ABORT", u"ABOR", u"Aborting File Transfer"),
    on(u"ABORT", 226).when(tellsAbort).report(),
    on(u"ABORT", 226).endQuietly());

// The operations from here on make a data connection first, although they transfer nothing.

constexpr auto DeleteRows = rows(
    on(u"TYPE",       200).go(u"DELETEFILE", NOOP, u"Deleting file..."),
    on(u"DELETEFILE", 200).run(takeNameForData).go(u"DELE", u"DELE {name}", u"Deleting {name}"));

constexpr auto DeleteSingleFileRows = rows(
    byPassiveMode(onAny(u"START")),
    dataPortAndType(),
    DeleteRows,
    on(u"DELE", 250).done());

constexpr auto DeleteFileRows = rows(
    oneShotLogon(),
    changeDirThen(u"LOOP", NOOP),
    byPassiveMode(on(u"LOOP", 200)),
    dataPortAndType(),
    DeleteRows,
    nextFileOrQuit(on(u"DELE", 250)),
    onAny(u"QUIT").end());

// Any reply to RNTO will do: a rename that failed passes unnoticed, and the loop goes on.
constexpr auto RenameFileRows = rows(
    oneShotLogon(),
    changeDirThen(u"LOOP", NOOP),
    byPassiveMode(on(u"LOOP", 200)),
    dataPortAndType(),
    on(u"TYPE", 200).go(u"FROM", NOOP, u"Renaming file."),
    on(u"FROM", 200).run(takeName).go(u"TO",   u"RNFR {name}", u"Renaming file.{name}"),
    on(u"TO",   350).run(takeName).go(u"DONE", u"RNTO {name}", u" to: {name}"),
    nextFileOrQuit(onAny(u"DONE")),
    onAny(u"QUIT").end());

constexpr auto SystemInfoRows = rows(
    byPassiveMode(onAny(u"START")),
    dataPortAndNext(),
    on(u"NEXT",   200).go(u"SYSTEM", u"SYST", u"Get system information."),
    on(u"SYSTEM", 150, 125).run(pollData),
    on(u"SYSTEM", 215).done());

constexpr auto StatusRows = rows(
    byPassiveMode(onAny(u"START")),
    dataPortAndNext(),
    on(u"NEXT",   200).go(u"STATUS", u"STAT", u"Get System Status"),
    on(u"STATUS", 150, 125).run(pollData),
    on(u"STATUS", 211).done());

}  // namespace

constinit const FTPStepTable ExecuteChangeDirSteps        = checkedTable<FTPGate::A, ChangeDirRows>();
constinit const FTPStepTable ExecuteParentDirSteps        = checkedTable<FTPGate::A, ParentDirRows>();
constinit const FTPStepTable ExecuteGetWorkingDirSteps    = checkedTable<FTPGate::B, GetWorkingDirRows>();
constinit const FTPStepTable ExecuteMakeDirSteps          = checkedTable<FTPGate::A, MakeDirRows>();
constinit const FTPStepTable ExecuteRemoveDirSteps        = checkedTable<FTPGate::A, RemoveDirRows>();
constinit const FTPStepTable ExecuteRenameSingleFileSteps = checkedTable<FTPGate::A, RenameSingleFileRows>();
constinit const FTPStepTable ExecuteChmodSingleFileSteps  = checkedTable<FTPGate::A, ChmodSingleFileRows>();
constinit const FTPStepTable ExecuteSITESteps             = checkedTable<FTPGate::A, SITERows>();
constinit const FTPStepTable ExecuteDirectCommandSteps    = checkedTable<FTPGate::A, DirectCommandRows>();
constinit const FTPStepTable ExecuteAbortTransferSteps    = checkedTable<FTPGate::A, AbortTransferRows>();
constinit const FTPStepTable ExecuteDeleteSingleFileSteps = checkedTable<FTPGate::A, DeleteSingleFileRows>();
constinit const FTPStepTable ExecuteDeleteFileSteps       = checkedTable<FTPGate::A, DeleteFileRows>();
constinit const FTPStepTable ExecuteRenameFileSteps       = checkedTable<FTPGate::B, RenameFileRows>();
constinit const FTPStepTable ExecuteSystemInfoSteps       = checkedTable<FTPGate::B, SystemInfoRows>();
constinit const FTPStepTable ExecuteStatusSteps           = checkedTable<FTPGate::B, StatusRows>();
// clang-format on
