// What the data connection does for an operation.
#pragma once

struct FTPTransferKind {
    enum class Data { None, File, List, Collected };

    Data receives = Data::None;   // File: blocks to the local file; List, Collected: the whole listing
    bool createsFile = false;     // PutFileName makes the local file anew
    bool sends = false;           // a local file goes out
    bool waitsForOffset = false;  // it goes out when SetRestartPosition has told from where
    bool failsAsSending = false;  // the words of an error
    bool isWalk = false;          // File, but a listing while FTPDataSocket.FileList is set
};

namespace FTPTransfers {

using Data = FTPTransferKind::Data;

inline constexpr FTPTransferKind None{};
inline constexpr FTPTransferKind Download{.receives = Data::File, .createsFile = true};
inline constexpr FTPTransferKind DownloadRest{.receives = Data::File};
inline constexpr FTPTransferKind DownloadWalk{.receives = Data::File, .createsFile = true, .isWalk = true};
inline constexpr FTPTransferKind List{.receives = Data::List};
inline constexpr FTPTransferKind DeleteWalk{.receives = Data::Collected};
inline constexpr FTPTransferKind Upload{.sends = true, .failsAsSending = true};
inline constexpr FTPTransferKind UploadRest{.sends = true, .waitsForOffset = true, .failsAsSending = true};
// An upload that is still on its way is closed.
inline constexpr FTPTransferKind Abort{.failsAsSending = true};

}  // namespace FTPTransfers
