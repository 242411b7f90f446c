// The data connection: one object for all transfers of a session.
#pragma once

#include <cstdint>
#include <optional>

#include <QFile>
#include <QFileInfo>
#include <QString>

#include "Clock.h"
#include "SSLSocket.h"

class FTPSessionClass;

// Never encrypted. What an event does follows from the running operation's type; see FTPTransferKind.
//
// FileData tells the steps whether a transfer is still under way: on a download it holds the last block
// received, on a listing all of it, and it is empty again when the server has closed the connection.
//
// A transfer that cannot go on (the disk is full, a file cannot be read, a listing is longer than MaxListing)
// cancels the session: the server's later 226 would make a success of it.
class FTPDataSocket final : public SSLSocket {
public:
    explicit FTPDataSocket(FTPSessionClass& session);

    // Stores the name and, for a download, opens the local file: empty and new, or behind what a cut
    // transfer left. A name that is no plain file name ends the operation.
    void PutFileName(const QString& name);
    QString GetFileName() const { return FileName; }
    void SetFileFolderItem(const std::optional<QFileInfo>& item);
    // The next transfer of the walk is a listing.
    void SetFileList();
    // Sends the local file from RestartByteCount on, at once or as soon as the connection is there.
    void SetRestartPosition();
    void UpdateTransferStatus(qint64 count);
    void ParseDirectoryList(const QString& text);
    // Connects to that port of the server.
    void ConnectToServer(quint16 port);
    // Waits on the session's data port for the server.
    void ListenForServer();
    // Drops the connection and closes the files.
    void Drop();

    QString FileName;
    bool FileList = false;
    std::int32_t BytesSent = 0;
    QFile DataStream;  // the local file on an upload
    std::int32_t ByteCount = 0;
    QFile bs;  // the local file on a download
    QByteArray FileData;
    std::optional<QFileInfo> FileFolderItem;

protected:
    void Event_Connected() override;
    void Event_DataAvailable() override;
    void Event_Error() override;
    void Event_SendComplete() override;

private:
    void forgetLastTransfer();
    void createLocalFile(const QString& path);
    void openForRestart(const QString& path);
    bool openDataStream(const QString& path);
    void sendBlock();
    void receive();
    void takeBytes();
    void storeBlock();
    void appendToListing();
    void endUpload();
    bool isInUse() const;
    void resetTimer();
    void finishReceiving();
    void fail(const QString& text);

    FTPSessionClass& Session;
    ClockTimer m_pause;
    bool m_startsWhenConnected = false;
};
