// What the data connection does for each operation.
#pragma once

#include <array>

#include <QString>

#include "Text.h"

struct FTPTransferKind {
    enum class Data { None, File, List, Collected };

    QStringView type;
    Data receives;        // File: blocks to the local file; List, Collected: the whole listing
    bool createsFile;     // PutFileName makes the local file anew
    bool sends;           // a local file goes out
    bool failsAsSending;  // the words of an error
    bool isWalk;          // File, but a listing while FTPDataSocket.FileList is set
};

// clang-format off
inline constexpr std::array<FTPTransferKind, 15> FTPTransferKinds{{
    //  type                    receives                          creates sends  failsAsSending isWalk
    {u"GetFile",              FTPTransferKind::Data::File,      true,   false, false, false},
    {u"GetSingleFile",        FTPTransferKind::Data::File,      true,   false, false, false},
    {u"RestartGetSingleFile", FTPTransferKind::Data::File,      false,  false, false, false},
    {u"GetDir",               FTPTransferKind::Data::File,      true,   false, false, true},
    {u"GetDirImmediate",      FTPTransferKind::Data::File,      true,   false, false, true},
    {u"GetDirList",           FTPTransferKind::Data::List,      false,  false, false, false},
    {u"GetDirListImmediate",  FTPTransferKind::Data::List,      false,  false, false, false},
    {u"DeleteDir",            FTPTransferKind::Data::Collected, false,  false, false, false},
    {u"DeleteDirImmediate",   FTPTransferKind::Data::Collected, false,  false, false, false},
    {u"PutFile",              FTPTransferKind::Data::None,      false,  true,  true,  false},
    {u"PutSingleFile",        FTPTransferKind::Data::None,      false,  true,  true,  false},
    {u"RestartPutSingleFile", FTPTransferKind::Data::None,      false,  true,  true,  false},
    {u"PutDir",               FTPTransferKind::Data::None,      false,  true,  true,  false},
    {u"PutDirImmediate",      FTPTransferKind::Data::None,      false,  true,  true,  false},
    {u"AbortTransfer",        FTPTransferKind::Data::None,      false,  false, true,  false},
}};
// clang-format on

// The row of an operation, or one that does nothing.
inline FTPTransferKind transferKind(const QString& type) {
    for (const FTPTransferKind& kind : FTPTransferKinds)
        if (Text::equal(kind.type, type))
            return kind;
    return {QStringView(), FTPTransferKind::Data::None, false, false, false, false};
}
