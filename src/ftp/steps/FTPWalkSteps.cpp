#include "FTPOperations.h"
#include "FTPSharedSteps.h"
#include "FTPStepCheck.h"
#include "FTPWalkActions.h"

using namespace FTPSteps;
using namespace FTPStepActions;
using namespace FTPWalkActions;

// clang-format off
namespace {

// One-shot walks send TYPE A behind the password; its reply enters "START".
constexpr auto walkLogon = rows(
    oneShotLogon(),
    on(u"PASS", 230).go(u"START", u"TYPE A", u"Change transfer type to ASCII."));

// From CWD to the whole listing of the directory. The walk goes on with it when it has all come.
constexpr Rows<5> listDirectoryThen(FTPText next) {
    return {on(u"CWD",  250).go(u"PWD", u"PWD", u"Get working directory for "),
            on(u"PWD",  257).run(expectList).go(u"LIST", u"LIST -a", u"Get full directory list for {CurrentWorkingDirectory}"),
            on(u"LIST", 150, 125).run(acceptData),
            on(u"LIST", 226).run(acceptListing).go(next, NOOP),
            on(next,    200).when(isDataPending).awaitData(FORCENOOP, u"Get full directory list for {CurrentWorkingDirectory}")};
}

// ---- GetDir, StartGetDir: the tree of ServerDirectory into LocalDirectory

constexpr auto GetDirWalk = rows(
    byPassiveMode(on(u"START", 200)),
    dataPort(u"PASV", u"NOTPASV", u"PORT"),
    on(u"PORT",        200).run(makeTopFolder).go(u"CWD", u"CWD {ServerDirectory}", u"Change directory to: {ServerDirectory}"),
    listDirectoryThen(u"GETFILELOOP"),
    on(u"GETFILELOOP", 200).go(u"NEXTTYPE", u"TYPE {FTPTransferType}", u"Change transfer type."),
    byPassiveMode(on(u"NEXTTYPE", 200), u"NEXTPASV", u"NEXTNOTPASV"),
    dataPort(u"NEXTPASV", u"NEXTNOTPASV", u"NEXTPORT"),
    on(u"NEXTPORT",    200).run(lookUpCurrentDirectory).nextRow(),
    on(u"NEXTPORT",    200).when(hasFile).run(takeFileToGet).go(u"GETFILE", u"RETR {name}", u"Get file "),
    on(u"NEXTPORT",    200).go(u"NEXTSUBDIR", NOOP),
    on(u"GETFILE",     150, 125).run(acceptData),
    on(u"GETFILE",     226).run(acceptData).go(u"FILEEND", NOOP, u"Get file "),
    on(u"FILEEND",     200).when(isDataPending).awaitData(FORCENOOP, u"Get file "),
    on(u"FILEEND",     200).when(hasFile).run(NextDataPort).go(u"GETFILELOOP", NOOP),
    on(u"FILEEND",     200).go(u"NEXTSUBDIR", NOOP),
    on(u"NEXTSUBDIR",  200).run(lookUpCurrentDirectory).nextRow(),
    on(u"NEXTSUBDIR",  200).run(takeSubDirectoryWithFolder).nextRow(),
    on(u"NEXTSUBDIR",  200).when(hasNoSubDirectory).go(u"PARENT", u"CDUP", u"Changing to parent directory."),
    byPassiveMode(on(u"NEXTSUBDIR", 200), u"NEXTSUBPASV", u"NEXTSUBNOTPASV"),
    dataPort(u"NEXTSUBPASV", u"NEXTSUBNOTPASV", u"NEXTSUBPORT"),
    on(u"NEXTSUBPORT", 200).go(u"CWD", u"CWD {directory}", u"Change directory to: {directory}"),
    on(u"PARENT",      250).run(lookUpCurrentDirectory).nextRow(),
    on(u"PARENT",      250).when(hasParent).go(u"PARENTPWD", u"PWD", u"Get working directory for "),
    on(u"PARENTPWD",   257).run(returnToParentFolder).go(u"NEXTSUBDIR", NOOP));

constexpr auto GetDirImmediateRows = rows(
    GetDirWalk,
    on(u"PARENT", 250).done());

constexpr auto GetDirRows = rows(
    walkLogon,
    GetDirWalk,
    quit(on(u"PARENT", 250)),
    onAny(u"QUIT").end());

// ---- DeleteDir, StartDeleteDir: the tree of DeleteDirectory, itself last

constexpr auto DeleteDirWalk = rows(
    byPassiveMode(on(u"START", 200)),
    dataPort(u"PASV", u"NOTPASV", u"PORT"),
    on(u"PORT",           200).go(u"CWD", u"CWD {DeleteDirectory}", u"Change directory to: {DeleteDirectory}"),
    listDirectoryThen(u"DELETEFILELOOP"),
    on(u"DELETEFILELOOP", 200).run(lookUpCurrentDirectory).nextRow(),
    on(u"DELETEFILELOOP", 200).when(hasFile).run(takeFileToDelete).go(u"DELETE", u"DELE {path}", u"Delete: {name}"),
    on(u"DELETEFILELOOP", 200).go(u"NEXTSUBDIR", NOOP),
    on(u"DELETE",         250).go(u"DELETEFILELOOP", NOOP),
    on(u"NEXTSUBDIR",     200).run(lookUpCurrentDirectory).nextRow(),
    on(u"NEXTSUBDIR",     200).run(takeSubDirectory).nextRow(),
    on(u"NEXTSUBDIR",     200).when(hasNoSubDirectory).go(u"PARENT", u"CDUP", u"Changing to parent directory."),
    byPassiveMode(on(u"NEXTSUBDIR", 200), u"NEXTPASV", u"NEXTNOTPASV"),
    dataPort(u"NEXTPASV", u"NEXTNOTPASV", u"NEXTPORT"),
    on(u"NEXTPORT",       200).go(u"CWD", u"CWD {directory}", u"Change directory to: {directory}"),
    on(u"PARENT",         250).run(lookUpCurrentDirectory).nextRow(),
    on(u"PARENT",         250).when(hasParent).run(forgetLeftDirectory).go(u"REMOVESUBDIR", u"RMD {directory}", u"Deleting {directory}"),
    on(u"PARENT",         250).go(u"REMOVETOPDIR", u"RMD {CurrentWorkingDirectory}", u"Deleting {CurrentWorkingDirectory}"),
    on(u"REMOVESUBDIR",   250).go(u"PARENTPWD", u"PWD", u"Get working directory for "),
    on(u"PARENTPWD",      257).run(storeWorkingDirectory).go(u"NEXTSUBDIR", NOOP));

constexpr auto DeleteDirImmediateRows = rows(
    DeleteDirWalk,
    on(u"REMOVETOPDIR", 250).done());

constexpr auto DeleteDirRows = rows(
    walkLogon,
    DeleteDirWalk,
    quit(on(u"REMOVETOPDIR", 250)),
    onAny(u"QUIT").end());

// ---- PutDir, StartPutDir: what LocalDirectory holds into the server's directory

constexpr auto PutDirWalk = rows(
    on(u"TYPE",     200).go(u"LOOP", NOOP, u"Start of transfer loop."),
    byPassiveMode(on(u"LOOP", 200)),
    noEPSV(u"PASV"),
    onPassive(u"PASV")  .run(notePassivePort).go(u"SENDFILE", NOOP, u"Send file "),
    on(u"NOTPASV",  200).go(u"PORT", u"{PortCommand}", u"Set data port to: {DataPort}"),
    on(u"PORT",     200).run(listen).go(u"SENDFILE", NOOP, u"Send file "),
    on(u"SENDFILE", 200).run(takeEntry).nextRow(),
    on(u"SENDFILE", 200).when(isBehindLastEntry).go(u"NEXT", NOOP),
    on(u"SENDFILE", 200).when(isUpEntry).go(u"UPDIR", u"CDUP", u"Going up one directory level."),
    on(u"SENDFILE", 200).when(isFolderEntry).run(takeFolderName).go(u"USERDIR", u"CWD {name}", u"Change directory to: {name}"),
    on(u"SENDFILE", 200).run(openEntry).go(u"STOR", u"STOR {name}", u"Send file {name}"),
    on(u"UPDIR",    250).run(nextEntry).go(u"NEXT", NOOP, u"Next file"),
    on(u"USERDIR",  250).run(nextEntry).go(u"NEXT", NOOP, u"Next file"),
    on(u"USERDIR",  550).go(u"MAKEDIR", u"MKD {name}", u"Create directory: "),
    on(u"MAKEDIR",  257).go(u"USERDIR", u"CWD {name}", u"Change directory to: {name}"),
    on(u"STOR",     150, 125).run(acceptData),
    on(u"STOR",     226, 250).when(isDataPending).awaitData(),
    on(u"STOR",     226, 250).run(nextEntryAndPort).go(u"NEXT", NOOP, u"Next File/Folder..."),
    onAny(u"NEXT").when(hasMoreEntries).go(u"LOOP", NOOP, u"Top of transfer loop"));

constexpr auto PutDirImmediateRows = rows(
    onAny(u"GETFILES").run(flattenTree).go(u"TYPE", u"TYPE {FTPTransferType}", u"Change transfer type."),
    PutDirWalk,
    onAny(u"NEXT").done());

// The greeting enters "GETFILES"; the reply that enters "CONNECT" behind it is made up.
constexpr auto PutDirRows = rows(
    on(u"GETFILES",   220, 530).run(flattenTree).go(u"CONNECT", NOOP),
    oneShotLogon(on(u"CONNECT", 220, 200, 530)),
    on(u"PASS",       230).go(u"SERVERDIR", u"CWD {ServerDirectory}", u"Change directory to: {ServerDirectory}"),
    on(u"SERVERDIR",  250).go(u"TYPE", u"TYPE {FTPTransferType}", u"Change transfer type."),
    on(u"SERVERDIR",  550).go(u"MAKETOPDIR", u"MKD {ServerDirectory}", u"Create directory: {ServerDirectory}"),
    on(u"MAKETOPDIR", 257).go(u"SERVERDIR", u"CWD {ServerDirectory}", u"Change directory to: {ServerDirectory}"),
    PutDirWalk,
    quit(onAny(u"NEXT")),
    onAny(u"QUIT").end());

}  // namespace

constinit const FTPStepTable ExecuteGetDirSteps             = checkedTable<FTPGate::B, GetDirRows>();
constinit const FTPStepTable ExecuteGetDirImmediateSteps    = checkedTable<FTPGate::B, GetDirImmediateRows>();
constinit const FTPStepTable ExecuteDeleteDirSteps          = checkedTable<FTPGate::B, DeleteDirRows>();
constinit const FTPStepTable ExecuteDeleteDirImmediateSteps = checkedTable<FTPGate::B, DeleteDirImmediateRows>();
constinit const FTPStepTable ExecutePutDirSteps             = checkedTable<FTPGate::B, PutDirRows>();
constinit const FTPStepTable ExecutePutDirImmediateSteps    = checkedTable<FTPGate::B, PutDirImmediateRows>();
// clang-format on
