#include "FTPStepTables.h"

#include <QStringView>

#include "Text.h"

namespace {

struct TypeTable {
    QStringView type;
    const FTPStepTable& table;
};

// clang-format off
const TypeTable TypeTables[] = {
    {u"AbortTransfer",        ExecuteAbortTransferSteps},
    {u"ChangeDir",            ExecuteChangeDirSteps},
    {u"ParentDir",            ExecuteParentDirSteps},
    {u"PutDir",               ExecutePutDirSteps},
    {u"PutDirImmediate",      ExecutePutDirImmediateSteps},
    {u"PutFile",              ExecutePutFileSteps},
    {u"PutSingleFile",        ExecutePutSingleFileSteps},
    {u"RestartPutSingleFile", ExecuteRestartPutSingleFileSteps},
    {u"GetDirList",           ExecuteGetDirListSteps},
    {u"GetDirListImmediate",  ExecuteGetDirListImmediateSteps},
    {u"GetFile",              ExecuteGetFileSteps},
    {u"GetSingleFile",        ExecuteGetSingleFileSteps},
    {u"RestartGetSingleFile", ExecuteRestartGetSingleFileSteps},
    {u"GetDir",               ExecuteGetDirSteps},
    {u"GetDirImmediate",      ExecuteGetDirImmediateSteps},
    {u"DeleteFile",           ExecuteDeleteFileSteps},
    {u"DeleteSingleFile",     ExecuteDeleteSingleFileSteps},
    {u"DeleteDir",            ExecuteDeleteDirSteps},
    {u"DeleteDirImmediate",   ExecuteDeleteDirImmediateSteps},
    {u"RemoveDir",            ExecuteRemoveDirSteps},
    {u"MakeDir",              ExecuteMakeDirSteps},
    {u"RenameFile",           ExecuteRenameFileSteps},
    {u"RenameSingleFile",     ExecuteRenameSingleFileSteps},
    {u"ChmodSingleFile",      ExecuteChmodSingleFileSteps},
    {u"GetWorkingDir",        ExecuteGetWorkingDirSteps},
    {u"Logon",                ExecuteLogonSteps},
    {u"Logoff",               ExecuteLogoffSteps},
    {u"GetSystemInfo",        ExecuteSystemInfoSteps},
    {u"GetStatus",            ExecuteStatusSteps},
    {u"SITECommand",          ExecuteSITESteps},
    {u"DirectCommand",        ExecuteDirectCommandSteps},
};
// clang-format on

}  // namespace

const FTPStepTable* stepTable(const QString& type) {
    for (const TypeTable& entry : TypeTables)
        if (Text::equal(entry.type, type))
            return &entry.table;
    return nullptr;
}
