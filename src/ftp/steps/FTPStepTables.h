// The step table of every operation.
#pragma once

#include <QString>

#include "FTPSteps.h"

// The table of an operation's type; none for an unknown type.
const FTPStepTable* stepTable(const QString& type);

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
