#include "FTPOperations.h"
#include "FTPSharedSteps.h"
#include "FTPStepCheck.h"

using namespace FTPSteps;
using namespace FTPStepActions;

// clang-format off
namespace {

// A transfer ends when the server has said so and the data connection has closed, in either order: real NOOPs
// ask meanwhile.

constexpr FTPStepRow fileStillComes =
    on(u"FILEEND", 200).when(isDataPending).awaitData(FORCENOOP, u"Get file ");

constexpr auto GetRows = rows(
    dataPortAndType(),
    on(u"TYPE",    200).go(u"GETFILE", NOOP, u"Get file "),
    on(u"GETFILE", 200).run(takeNameForData).go(u"RETR", u"RETR {name}", u"Get file "),
    on(u"RETR",    150, 125).run(acceptData),
    on(u"RETR",    226).run(acceptData).go(u"FILEEND", NOOP, u"Get file "),
    fileStillComes);

constexpr auto GetSingleFileRows = rows(
    byPassiveMode(onAny(u"START")),
    GetRows,
    on(u"FILEEND", 200).report());

constexpr auto GetFileRows = rows(
    oneShotLogon(),
    changeDirThen(u"LOOP", NOOP),
    byPassiveMode(on(u"LOOP", 200)),
    GetRows,
    nextFileOrQuit(on(u"FILEEND", 200)),
    onAny(u"QUIT").end());

// The offset is the length of the local file. Unlike above, 125 does not do, on purpose. Where what has come
// may be the file's beginning once more, the length that the server tells of the whole decides.
constexpr auto RestartGetSingleFileRows = rows(
    byPassiveMode(onAny(u"START")),
    dataPortAndType(),
    on(u"TYPE",    200).go(u"GETFILE", NOOP, u"Get file "),
    on(u"GETFILE", 200).run(takeNameForData).go(u"REST", u"REST {RestartByteCount}", u"Get file "),
    on(u"REST",    350).go(u"RETR", u"RETR {name}", u"Get file "),
    on(u"RETR",    150).run(acceptData),
    on(u"RETR",    226).run(acceptData).go(u"FILEEND", NOOP, u"Get file "),
    fileStillComes,
    on(u"FILEEND", 200).when(isDataDoubtful).go(u"SIZE", u"SIZE {name}", u"Get file "),
    on(u"FILEEND", 200).report(),
    on(u"SIZE",    213).run(settleData).report(),
    onAny(u"SIZE").run(settleData));

// In active mode a single upload sets its port and does not wait on it: the server finds nobody there.
constexpr auto PutRows = rows(
    noEPSV(u"PASV"),
    onPassive(u"PASV").run(takeNameAndConnect).go(u"STOR", u"STOR {name}", u"Send file {name}"),
    on(u"NOTPASV", 200).go(u"PORT", u"{PortCommand}", u"Set data port to: {DataPort}"),
    on(u"PORT",    200).run(setPortAndTakeName).go(u"STOR", u"STOR {name}", u"Send file {name}"),
    on(u"STOR",    150, 125).run(acceptData),
    on(u"STOR",    226, 250).when(isDataPending).awaitData());

constexpr auto PutSingleFileRows = rows(
    onAny(u"START").go(u"TYPE", u"TYPE {FTPTransferType}", u"Change transfer type."),
    byPassiveMode(on(u"TYPE", 200)),
    PutRows,
    on(u"STOR", 226, 250).done());

constexpr auto PutFileRows = rows(
    oneShotLogon(),
    changeDirThen(u"TYPE", u"TYPE {FTPTransferType}", u"Change transfer type."),
    on(u"TYPE", 200).go(u"LOOP", NOOP),
    byPassiveMode(on(u"LOOP", 200)),
    PutRows,
    nextFileOrQuit(on(u"STOR", 226, 250), u"TYPE"),
    onAny(u"QUIT").end());

// The offset is the server's size; the first block is on its way before STOR is.
constexpr auto RestartPutSingleFileRows = rows(
    onAny(u"START").go(u"TYPE", u"TYPE {FTPTransferType}", u"Change transfer type."),
    byPassiveMode(on(u"TYPE", 200)),
    noEPSV(u"PASV"),
    onPassive(u"PASV").run(takeNameAndConnect).go(u"SIZE", u"SIZE {name}", u"Send file "),
    on(u"NOTPASV", 200).go(u"PORT", u"{PortCommand}", u"Set data port to: {DataPort}"),
    on(u"PORT",    200).run(listenAndTakeName) .go(u"SIZE", u"SIZE {name}", u"Send file "),
    on(u"SIZE",    213).run(takeSizeAsOffset)  .go(u"REST", u"REST {RestartByteCount}", u"Send file "),
    on(u"REST",    350).go(u"STOR", u"STOR {name}", u"Send file {name}"),
    on(u"STOR",    150, 125).run(acceptData),
    on(u"STOR",    226, 250).when(isDataPending).awaitData(),
    on(u"STOR",    226, 250).done());

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
    on(u"LIST",    150, 125).run(acceptData),
    on(u"LIST",    226).run(acceptData).go(u"LISTEND", NOOP, u"Get full directory list for {CurrentWorkingDirectory}"),
    on(u"LISTEND", 200).when(isDataPending)
                       .awaitData(FORCENOOP, u"Get full directory list for {CurrentWorkingDirectory}"));

constexpr auto GetDirListImmediateRows = rows(
    byPassiveMode(onAny(u"START")),
    ListRows,
    on(u"LISTEND", 200).report());

constexpr auto GetDirListRows = rows(
    oneShotLogon(),
    changeDirThen(u"TYPE", u"TYPE A", u"Change transfer type to ASCII."),
    byPassiveMode(on(u"TYPE", 200)),
    ListRows,
    quit(on(u"LISTEND", 200)),
    onAny(u"QUIT").end());

}  // namespace

constinit const FTPStepTable ExecuteGetSingleFileSteps        = checkedTable<FTPGate::A, GetSingleFileRows>();
constinit const FTPStepTable ExecuteRestartGetSingleFileSteps = checkedTable<FTPGate::A, RestartGetSingleFileRows>();
constinit const FTPStepTable ExecutePutSingleFileSteps        = checkedTable<FTPGate::B, PutSingleFileRows>();
constinit const FTPStepTable ExecuteRestartPutSingleFileSteps = checkedTable<FTPGate::B, RestartPutSingleFileRows>();
constinit const FTPStepTable ExecuteGetDirListSteps           = checkedTable<FTPGate::B, GetDirListRows>();
constinit const FTPStepTable ExecuteGetDirListImmediateSteps  = checkedTable<FTPGate::B, GetDirListImmediateRows>();
constinit const FTPStepTable ExecuteGetFileSteps              = checkedTable<FTPGate::A, GetFileRows>();
constinit const FTPStepTable ExecutePutFileSteps              = checkedTable<FTPGate::B, PutFileRows>();
// clang-format on
