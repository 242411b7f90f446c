#include "FTPSharedSteps.h"
#include "FTPStepTables.h"

using namespace FTPSteps;
using namespace FTPStepActions;

// clang-format off
namespace {

// A download ends when the server has said so and has closed the data connection, in either order: while
// something has arrived and the close has not, real NOOPs keep the steps going.

constexpr FTPStepRow fileStillComes =
    on(u"FILEEND", 200).when(isDataPending).go(u"FILEEND", FORCENOOP, u"Get file ");

// PutFileName leaves an empty file of that name, whatever was there.
constexpr auto GetRows = rows(
    dataPortAndType(),
    on(u"TYPE",    200).go(u"GETFILE", NOOP, u"Get file "),
    on(u"GETFILE", 200).run(takeNameForData).go(u"RETR", u"RETR {name}", u"Get file "),
    on(u"RETR",    150, 125).run(pollData),
    on(u"RETR",    226).go(u"FILEEND", NOOP, u"Get file "),
    fileStillComes);

constexpr auto GetSingleFileRows = rows(
    byPassiveMode(onAny(u"START")),
    GetRows,
    on(u"FILEEND", 200).report(u"File Transfer Complete."));

constexpr auto GetFileRows = rows(
    oneShotLogon(),
    changeDirThen(u"LOOP", NOOP),
    byPassiveMode(on(u"LOOP", 200)),
    GetRows,
    nextFileOrQuit(on(u"FILEEND", 200)),
    onAny(u"QUIT").end(u"File Transfer Complete."));

// The offset is the length of the local file. Unlike above, 125 does not do, on purpose.
constexpr auto RestartGetSingleFileRows = rows(
    byPassiveMode(onAny(u"START")),
    dataPortAndType(),
    on(u"TYPE",    200).go(u"GETFILE", NOOP, u"Get file "),
    on(u"GETFILE", 200).run(takeNameForData).go(u"REST", u"REST {RestartByteCount}", u"Get file "),
    on(u"REST",    350).go(u"RETR", u"RETR {name}", u"Get file "),
    on(u"RETR",    150).run(pollData),
    on(u"RETR",    226).go(u"FILEEND", NOOP, u"Get file "),
    fileStillComes,
    on(u"FILEEND", 200).report(u"File Transfer Complete."));

// In active mode a single upload sets its port and does not wait on it: the server finds nobody there.
constexpr auto PutRows = rows(
    on(u"PASV",    227).run(takeNameAndConnect).go(u"STOR", u"STOR {name}", u"Send file {name}"),
    on(u"NOTPASV", 200).go(u"PORT", u"PORT {BuildPortString}", u"Set data port to: {DataPort}"),
    on(u"PORT",    200).run(setPortAndTakeName).go(u"STOR", u"STOR {name}", u"Send file {name}"),
    on(u"STOR",    150, 125).run(pollData));

constexpr auto PutSingleFileRows = rows(
    onAny(u"START").go(u"TYPE", u"TYPE {FTPTransferType}", u"Change transfer type."),
    byPassiveMode(on(u"TYPE", 200)),
    PutRows,
    on(u"STOR", 226, 250).done(u"File Transfer Complete."));

constexpr auto PutFileRows = rows(
    oneShotLogon(),
    changeDirThen(u"TYPE", u"TYPE {FTPTransferType}", u"Change transfer type."),
    on(u"TYPE", 200).go(u"LOOP", NOOP),
    byPassiveMode(on(u"LOOP", 200)),
    PutRows,
    nextFileOrQuit(on(u"STOR", 226, 250), u"TYPE"),
    onAny(u"QUIT").end(u"File Transfer Complete."));

// The offset is the server's size; the first block is on its way before STOR is.
constexpr auto RestartPutSingleFileRows = rows(
    onAny(u"START").go(u"TYPE", u"TYPE {FTPTransferType}", u"Change transfer type."),
    byPassiveMode(on(u"TYPE", 200)),
    on(u"PASV",    227).run(takeNameAndConnect).go(u"SIZE", u"SIZE {name}", u"Send file "),
    on(u"NOTPASV", 200).go(u"PORT", u"PORT {BuildPortString}", u"Set data port to: {DataPort}"),
    on(u"PORT",    200).run(listenAndTakeName) .go(u"SIZE", u"SIZE {name}", u"Send file "),
    on(u"SIZE",    213).run(takeSizeAsOffset)  .go(u"REST", u"REST {RestartByteCount}", u"Send file "),
    on(u"REST",    350).go(u"STOR", u"STOR {name}", u"Send file {name}"),
    on(u"STOR",    150, 125).run(pollData),
    on(u"STOR",    226, 250).done(u"File Transfer Complete."));

constexpr FTPStepRow list(const FTPStepRow& row, FTPText command) {
    return row.run(storeWorkingDirectory).go(u"LIST", command, u"Get full directory list for {CurrentWorkingDirectory}");
}

constexpr auto ListRows = rows(
    dataPortAndNext(),
    on(u"NEXT", 200).go(u"PWD", u"PWD", u"Get working directory for "),
    list(on(u"PWD", 257).when(listsAllNames), u"NLST -a"),
    list(on(u"PWD", 257).when(listsNames),    u"NLST"),
    list(on(u"PWD", 257).when(listsAll),      u"LIST -a"),
    list(on(u"PWD", 257),                     u"LIST"),
    on(u"LIST",    150, 125).run(pollData),
    on(u"LIST",    226).go(u"LISTEND", NOOP, u"Get full directory list for {CurrentWorkingDirectory}"),
    on(u"LISTEND", 200).when(isDataPending)
                       .go(u"LISTEND", FORCENOOP, u"Get full directory list for {CurrentWorkingDirectory}"));

constexpr auto GetDirListImmediateRows = rows(
    byPassiveMode(onAny(u"START")),
    ListRows,
    on(u"LISTEND", 200).report(u"The file list has been transferred."));

constexpr auto GetDirListRows = rows(
    oneShotLogon(),
    changeDirThen(u"TYPE", u"TYPE A", u"Change transfer type to ASCII."),
    byPassiveMode(on(u"TYPE", 200)),
    ListRows,
    quit(on(u"LISTEND", 200)),
    onAny(u"QUIT").end(u"The file list has been transferred."));

}  // namespace

const FTPStepTable ExecuteGetSingleFileSteps        {FTPGate::A, GetSingleFileRows};
const FTPStepTable ExecuteRestartGetSingleFileSteps {FTPGate::A, RestartGetSingleFileRows};
const FTPStepTable ExecutePutSingleFileSteps        {FTPGate::B, PutSingleFileRows};
const FTPStepTable ExecuteRestartPutSingleFileSteps {FTPGate::B, RestartPutSingleFileRows};
const FTPStepTable ExecuteGetDirListSteps           {FTPGate::B, GetDirListRows};
const FTPStepTable ExecuteGetDirListImmediateSteps  {FTPGate::B, GetDirListImmediateRows};
const FTPStepTable ExecuteGetFileSteps              {FTPGate::A, GetFileRows};
const FTPStepTable ExecutePutFileSteps              {FTPGate::B, PutFileRows};
// clang-format on
