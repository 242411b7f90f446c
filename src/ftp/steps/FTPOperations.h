// Every operation, one row each: all that the client knows of it besides its step table.
#pragma once

#include <algorithm>
#include <array>

#include <QStringView>

#include "FTPSteps.h"
#include "FTPTransferKind.h"

// FTPLogonSteps.cpp
extern const FTPStepTable ExecuteLogonSteps;
extern const FTPStepTable ExecuteLogoffSteps;
// FTPControlSteps.cpp
extern const FTPStepTable ExecuteChangeDirSteps;
extern const FTPStepTable ExecuteParentDirSteps;
extern const FTPStepTable ExecuteGetWorkingDirSteps;
extern const FTPStepTable ExecuteMakeDirSteps;
extern const FTPStepTable ExecuteRemoveDirSteps;
extern const FTPStepTable ExecuteRenameSingleFileSteps;
extern const FTPStepTable ExecuteChmodSingleFileSteps;
extern const FTPStepTable ExecuteSITESteps;
extern const FTPStepTable ExecuteDirectCommandSteps;
extern const FTPStepTable ExecuteAbortTransferSteps;
extern const FTPStepTable ExecuteDeleteSingleFileSteps;
extern const FTPStepTable ExecuteDeleteFileSteps;
extern const FTPStepTable ExecuteRenameFileSteps;
extern const FTPStepTable ExecuteSystemInfoSteps;
extern const FTPStepTable ExecuteStatusSteps;
// FTPTransferSteps.cpp
extern const FTPStepTable ExecuteGetSingleFileSteps;
extern const FTPStepTable ExecuteRestartGetSingleFileSteps;
extern const FTPStepTable ExecutePutSingleFileSteps;
extern const FTPStepTable ExecuteRestartPutSingleFileSteps;
extern const FTPStepTable ExecuteGetDirListSteps;
extern const FTPStepTable ExecuteGetDirListImmediateSteps;
extern const FTPStepTable ExecuteGetFileSteps;
extern const FTPStepTable ExecutePutFileSteps;
// FTPWalkSteps.cpp
extern const FTPStepTable ExecuteGetDirSteps;
extern const FTPStepTable ExecuteGetDirImmediateSteps;
extern const FTPStepTable ExecuteDeleteDirSteps;
extern const FTPStepTable ExecuteDeleteDirImmediateSteps;
extern const FTPStepTable ExecutePutDirSteps;
extern const FTPStepTable ExecutePutDirImmediateSteps;

struct FTPOperation {
    FTPText type;
    const FTPStepTable& table;
    FTPText firstCommand;  // none: the greeting of a new connection comes first
    FTPText status;        // what NextFTPStep reports when the operation begins
    FTPTransferKind transfer;
    FTPText success;
    // Whether EndFTPSession takes the text for a success. Every other text that it is given is an error.
    bool isSuccessfulMessage = true;

    // A table begins with the step that its operation begins in.
    FTPText firstStep() const { return table.rows.front().step; }
};

// clang-format off
inline constexpr std::array<FTPOperation, 31> FTPOperations{{
    // On a session
    {u"Logoff",               ExecuteLogoffSteps,               u"QUIT", u"Send Logoff Command",                   FTPTransfers::None,         u"Logoff Complete."},
    {u"ChangeDir",            ExecuteChangeDirSteps,            u"NOOP", u"Send Change Directory Command",         FTPTransfers::None,         u"Directory Change Complete."},
    {u"ParentDir",            ExecuteParentDirSteps,            u"NOOP", u"Send Change Directory Command",         FTPTransfers::None,         u"Directory Change Complete."},
    {u"GetWorkingDir",        ExecuteGetWorkingDirSteps,        u"NOOP", u"Send Print Working Directory Command",  FTPTransfers::None,         u"The working directory has been transferred."},
    {u"MakeDir",              ExecuteMakeDirSteps,              u"NOOP", u"Send Make Directory Command",           FTPTransfers::None,         u"Directory Created."},
    {u"RemoveDir",            ExecuteRemoveDirSteps,            u"NOOP", u"Send Remove Directory Command",         FTPTransfers::None,         u"Empty Directory Removed."},
    {u"DeleteSingleFile",     ExecuteDeleteSingleFileSteps,     u"NOOP", u"Send Delete Single File Command",       FTPTransfers::None,         u"File has been deleted."},
    {u"RenameSingleFile",     ExecuteRenameSingleFileSteps,     u"NOOP", u"Send Rename Single File Command",       FTPTransfers::None,         u"File Rename Complete."},
    {u"ChmodSingleFile",      ExecuteChmodSingleFileSteps,      u"NOOP", u"Send Change Mode Command",              FTPTransfers::None,         u"Chmod Command Complete."},
    {u"GetSystemInfo",        ExecuteSystemInfoSteps,           u"NOOP", u"Send Get System Info Command",          FTPTransfers::None,         u"System information received."},
    {u"GetStatus",            ExecuteStatusSteps,               u"NOOP", u"Send Get Status Command",               FTPTransfers::None,         u"System information received."},
    {u"SITECommand",          ExecuteSITESteps,                 u"NOOP", u"Send FTP SITE command {DirectCommand}", FTPTransfers::None,         u"FTP SITE command complete",   false},
    {u"DirectCommand",        ExecuteDirectCommandSteps,        u"NOOP", u"Send FTP Direct Command {DirectCommand}", FTPTransfers::None,       u"FTP Direct Command complete", false},
    {u"AbortTransfer",        ExecuteAbortTransferSteps,        u"NOOP", u"Aborting File Transfer",                FTPTransfers::Abort,        u"Transfer Aborted",            false},
    {u"GetSingleFile",        ExecuteGetSingleFileSteps,        u"NOOP", u"Send Get Single File Command",          FTPTransfers::Download,     u"File Transfer Complete."},
    {u"PutSingleFile",        ExecutePutSingleFileSteps,        u"NOOP", u"Send Put Single File Command",          FTPTransfers::Upload,       u"File Transfer Complete."},
    {u"RestartGetSingleFile", ExecuteRestartGetSingleFileSteps, u"NOOP", u"Send Restart Get Single File Command",  FTPTransfers::DownloadRest, u"File Transfer Complete."},
    {u"RestartPutSingleFile", ExecuteRestartPutSingleFileSteps, u"NOOP", u"Send Restart Put Single File Command",  FTPTransfers::UploadRest,   u"File Transfer Complete."},
    {u"GetDirListImmediate",  ExecuteGetDirListImmediateSteps,  u"NOOP", u"Send Get Directory List Command",       FTPTransfers::List,         u"The file list has been transferred."},
    {u"GetDirImmediate",      ExecuteGetDirImmediateSteps,      u"NOOP", u"Start Get Directory Sequence",          FTPTransfers::DownloadWalk, u"Directory Transfer Complete."},
    {u"PutDirImmediate",      ExecutePutDirImmediateSteps,      u"NOOP", u"Start Put Directory Sequence",          FTPTransfers::Upload,       u"Directory Transfer Complete."},
    {u"DeleteDirImmediate",   ExecuteDeleteDirImmediateSteps,   u"NOOP", u"Start Delete Directory Sequence",       FTPTransfers::DeleteWalk,   u"The directory has been deleted."},
    // With a connection of their own
    {u"Logon",                ExecuteLogonSteps,                {},      u"{ConnectingText}",                      FTPTransfers::None,         u"Connected to Tessarin server."},
    {u"GetFile",              ExecuteGetFileSteps,              {},      u"Start Get File Sequence",               FTPTransfers::Download,     u"File Transfer Complete."},
    {u"PutFile",              ExecutePutFileSteps,              {},      u"Start Put File Sequence",               FTPTransfers::Upload,       u"File Transfer Complete."},
    {u"DeleteFile",           ExecuteDeleteFileSteps,           {},      u"Start Delete File Sequence",            FTPTransfers::None,         u"File has been deleted."},
    {u"RenameFile",           ExecuteRenameFileSteps,           {},      u"Start Rename File Sequence",            FTPTransfers::None,         u"File Rename Complete."},
    {u"GetDirList",           ExecuteGetDirListSteps,           {},      u"Start Get Directory List Sequence",     FTPTransfers::List,         u"The file list has been transferred."},
    {u"GetDir",               ExecuteGetDirSteps,               {},      u"Start Get Directory Sequence",          FTPTransfers::DownloadWalk, u"Directory Transfer Complete."},
    {u"PutDir",               ExecutePutDirSteps,               {},      u"Start Put Directory Sequence",          FTPTransfers::Upload,       u"Directory Transfer Complete."},
    {u"DeleteDir",            ExecuteDeleteDirSteps,            {},      u"Start Delete Directory Sequence",       FTPTransfers::DeleteWalk,   u"The directory has been deleted."},
}};
// clang-format on

// The operation of a type; none for an unknown one.
const FTPOperation* findOperation(QStringView type);

// The same for a type that is written in the code: a misspelt one does not compile.
consteval const FTPOperation& operationOf(FTPText type) {
    return *std::ranges::find(FTPOperations, type, &FTPOperation::type);
}
