#include "FTPSharedSteps.h"
#include "FTPStepTables.h"

using namespace FTPSteps;
using namespace FTPStepActions;

// clang-format off
namespace {

constexpr auto ChangeDirRows = rows(
    onAny(u"START").go(u"CWD", u"CWD {ServerDirectory}", u"Change directory to: {ServerDirectory}"),
    on(u"CWD", 250).done(u"Directory Change Complete."));

constexpr auto ParentDirRows = rows(
    onAny(u"START") .go(u"CDUP", u"CDUP", u"Changing to parent directory."),
    on(u"CDUP", 250).done(u"Directory Change Complete."));

// The path is not stored: the caller reads it from the reply passed to Response_FTP.
constexpr auto GetWorkingDirRows = rows(
    onAny(u"START").go(u"PWD", u"PWD", u"Get working directory for "),
    on(u"PWD", 257).done(u"The working directory has been transferred."));

constexpr auto MakeDirRows = rows(
    onAny(u"START").go(u"MKD", u"MKD {ServerDirectory}", u"Create directory: {ServerDirectory}"),
    on(u"MKD", 257).done(u"Directory Created."));

constexpr auto RemoveDirRows = rows(
    onAny(u"START").go(u"RMD", u"RMD {ServerDirectory}", u"Delete: {ServerDirectory}"),
    on(u"RMD", 250).done(u"Empty Directory Removed."));

// No blank between the point and the name.
constexpr auto RenameSingleFileRows = rows(
    onAny(u"START") .run(takeName).go(u"TO",   u"RNFR {name}", u"Renaming file.{name}"),
    on(u"TO",   350).run(takeName).go(u"DONE", u"RNTO {name}", u" to: {name}"),
    on(u"DONE", 250).done(u"File Rename Complete."));

constexpr auto ChmodSingleFileRows = rows(
    onAny(u"START") .run(takeName).go(u"DONE", u"SITE CHMOD {ChmodMask} {name}", u"Change Mode of: {name} to: {ChmodMask}"),
    on(u"DONE", 200).done(u"Chmod Command Complete."));

constexpr auto SITERows = rows(
    onAny(u"START") .go(u"DONE", u"SITE {DirectCommand}", u"{DirectCommand}"),
    on(u"DONE", 200).done(u"FTP SITE command complete"));

constexpr auto DirectCommandRows = rows(
    onAny(u"START")      .go(u"DONE", u"{DirectCommand}", u"{DirectCommand}"),
    onAnySuccess(u"DONE").done(u"FTP Direct Command complete"));

// A 226 that does not speak of an abort is the transfer's own: nothing is reported then.
constexpr auto AbortTransferRows = rows(
    onAny(u"START")  .go(u"ABORT", u"ABOR", u"Aborting File Transfer"),
    on(u"ABORT", 226).when(tellsAbort).report(u"Transfer Aborted"),
    on(u"ABORT", 226).end(u""));

// The operations from here on make a data connection first, although they transfer nothing.

constexpr auto DeleteRows = rows(
    on(u"TYPE",       200).go(u"DELETEFILE", NOOP, u"Deleting file..."),
    on(u"DELETEFILE", 200).run(takeNameForData).go(u"DELE", u"DELE {name}", u"Deleting {name}"));

constexpr auto DeleteSingleFileRows = rows(
    byPassiveMode(onAny(u"START")),
    dataPortAndType(),
    DeleteRows,
    on(u"DELE", 250).done(u"File has been deleted."));

constexpr auto DeleteFileRows = rows(
    oneShotLogon(),
    changeDirThen(u"LOOP", NOOP),
    byPassiveMode(on(u"LOOP", 200)),
    dataPortAndType(),
    DeleteRows,
    nextFileOrQuit(on(u"DELE", 250)),
    onAny(u"QUIT").end(u"File has been deleted."));

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
    onAny(u"QUIT").end(u"File Rename Complete."));

constexpr auto SystemInfoRows = rows(
    byPassiveMode(onAny(u"START")),
    dataPortAndNext(),
    on(u"NEXT",   200).go(u"SYSTEM", u"SYST", u"Get system information."),
    on(u"SYSTEM", 150, 125).run(pollData),
    on(u"SYSTEM", 215).done(u"System information received."));

constexpr auto StatusRows = rows(
    byPassiveMode(onAny(u"START")),
    dataPortAndNext(),
    on(u"NEXT",   200).go(u"STATUS", u"STAT", u"Get System Status"),
    on(u"STATUS", 150, 125).run(pollData),
    on(u"STATUS", 211).done(u"System information received."));

}  // namespace

const FTPStepTable ExecuteChangeDirSteps        {FTPGate::A, ChangeDirRows};
const FTPStepTable ExecuteParentDirSteps        {FTPGate::A, ParentDirRows};
const FTPStepTable ExecuteGetWorkingDirSteps    {FTPGate::B, GetWorkingDirRows};
const FTPStepTable ExecuteMakeDirSteps          {FTPGate::A, MakeDirRows};
const FTPStepTable ExecuteRemoveDirSteps        {FTPGate::A, RemoveDirRows};
const FTPStepTable ExecuteRenameSingleFileSteps {FTPGate::A, RenameSingleFileRows};
const FTPStepTable ExecuteChmodSingleFileSteps  {FTPGate::A, ChmodSingleFileRows};
const FTPStepTable ExecuteSITESteps             {FTPGate::A, SITERows};
const FTPStepTable ExecuteDirectCommandSteps    {FTPGate::A, DirectCommandRows};
const FTPStepTable ExecuteAbortTransferSteps    {FTPGate::A, AbortTransferRows};
const FTPStepTable ExecuteDeleteSingleFileSteps {FTPGate::A, DeleteSingleFileRows};
const FTPStepTable ExecuteDeleteFileSteps       {FTPGate::A, DeleteFileRows};
const FTPStepTable ExecuteRenameFileSteps       {FTPGate::B, RenameFileRows};
const FTPStepTable ExecuteSystemInfoSteps       {FTPGate::B, SystemInfoRows};
const FTPStepTable ExecuteStatusSteps           {FTPGate::B, StatusRows};
// clang-format on
