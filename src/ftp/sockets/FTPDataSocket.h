// The data connection: one object for all transfers of a session.
#pragma once

#include <cstdint>
#include <optional>

#include <QFile>
#include <QFileInfo>
#include <QString>

#include "Clock.h"
#include "FTPReceivedFile.h"
#include "FTPSocketOwners.h"
#include "SSLSocket.h"

// Never encrypted. What an event does follows from the running operation; see FTPTransferKind.
//
// Until the server has accepted the transfer, nothing that comes is taken: neither bytes nor the end of the
// connection. A server that refuses a file closes its side too, and its reply tells more.
//
// A transfer that cannot go on (the disk is full, a file cannot be read, a listing is longer than MaxListing)
// cancels the session: the server's later 226 would make a success of it.
class FTPDataSocket final : public SSLSocket {
public:
    // Longest listing that a server may send, in bytes.
    static constexpr qsizetype MaxListing = 64 * 1024 * 1024;
    // The least that a transfer must move in each minute, in bytes.
    static constexpr qint64 LeastPerMinute = 1024;

    FTPDataSocket(Clock& clock, FTPDataOwner& session);

    // Stores the name, and makes sure of the local file: that a download may write it and where a cut one
    // has ended, and that an upload can be read. False, and the operation has ended, when it cannot be.
    bool PutFileName(const QString& name);
    QString GetFileName() const { return FileName; }
    void SetFileFolderItem(const std::optional<QFileInfo>& item);
    // Hands on the lines of a walk's listing, a few milliseconds' worth in each turn of the event loop; the
    // transfer is pending until the last. False when the operation has ended.
    bool ParseDirectoryList(const QString& text);
    // The next transfer of the walk is a listing.
    void SetFileList() { FileList = true; }
    // Sends the local file from RestartByteCount on, at once or as soon as the connection is there. False,
    // and the operation has ended, when the file cannot be read or has fewer bytes.
    bool SetRestartPosition();
    void UpdateTransferStatus(qint64 count);
    // Connects to the server.
    void ConnectToServer(const QHostAddress& server, quint16 port);
    // Waits for the server on a port of ours. False, and the operation has ended, when it cannot be had.
    bool ListenForServer(const QHostAddress& local, quint16 port, const QHostAddress& server);
    // The server has accepted the transfer, and told its length in bytes or none: from here on the local file
    // is written. False when the operation has ended.
    bool Accept(std::optional<qint64> length);
    // Whether the transfer is still to end: the connection is open, or awaited, or an upload is not yet out.
    bool IsPending() const;
    // Whether the server may have sent a file's beginning in place of the rest that it was asked for. Settle
    // takes the length that the server tells of the whole file, and gives false when the operation has ended.
    bool IsDoubtful() const { return m_isDoubtful; }
    bool Settle(std::optional<qint64> size);
    // An abort: a download ends here and leaves what it has; an upload ends when its last block is out.
    void Abort();
    // Closes the connection and the files.
    void Stop();
    // The same, for good.
    void Drop();

    QString FileName;
    bool FileList = false;
    std::int32_t BytesSent = 0;
    QFile DataStream;  // the local file on an upload
    std::int32_t ByteCount = 0;
    FTPReceivedFile bs;   // the local file on a download
    QByteArray FileData;  // the last block received on a download, or the listing so far
    std::optional<QFileInfo> FileFolderItem;

protected:
    void Event_Connected() override;
    void Event_DataAvailable() override;
    void Event_Error() override;
    void Event_SendComplete() override;

private:
    // A connection that has ended, before or after the transfer was accepted.
    enum class End { None, Closed, Failed };

    bool prepareDownload(const QString& path);
    bool openUpload(const QString& path);
    bool openDownload();
    bool isListing() const;
    void forgetLastTransfer();
    void startUpload();
    void endUpload();
    void checkPace();
    void noteEnd();
    QString failure() const;
    // These give false when the operation has ended.
    bool sendBlock();
    bool takeBytes();
    bool storeBlock(const QByteArray& block);
    bool appendToListing(const QByteArray& block);
    bool takeEnd();
    bool finishReceiving();
    bool finishListing(const QByteArray& listing);
    bool parseMore();
    QString nextLine();
    bool finishFile();
    bool fail(const QString& message);
    bool cancel(const QString& message);

    FTPDataOwner& Session;
    ClockTimer m_pace;
    qint64 m_moved = 0;  // bytes since the pace was last looked at
    bool m_isOpen = false;
    bool m_isAccepted = false;
    bool m_isDoubtful = false;
    bool m_isSent = true;
    bool m_startsWhenConnected = false;
    bool m_isDropped = false;
    End m_end = End::None;
    int m_endCode = 0;
    QString m_listing;  // of a walk, and how much of it has been handed on
    qsizetype m_parsed = 0;
    std::optional<qint64> m_length;  // told by the server
    QString m_path;                  // of the local file
};
