#include "FTPDataSocket.h"

#include <algorithm>
#include <limits>

#include "FTPPaths.h"
#include "FTPSessionClass.h"
#include "FTPTransferKind.h"

namespace {

// A walk's listing is taken in blocks, and a block ends where the server makes a pause: servers write a
// listing line by line.
constexpr Clock::Milliseconds ListingPause{20};

std::int32_t saturated(qint64 count) {
    constexpr qint64 limit = std::numeric_limits<std::int32_t>::max();
    return static_cast<std::int32_t>(std::min(count, limit));
}

}  // namespace

FTPDataSocket::FTPDataSocket(FTPSessionClass& session)
    : Session(session), m_pause(session.clock(), ListingPause, [this] { receive(); }) {}

void FTPDataSocket::PutFileName(const QString& name) {
    FileName = name;
    m_startsWhenConnected = false;
    const FTPTransferKind kind = transferKind(Session.FTPSessionType);
    if (kind.receives != FTPTransferKind::Data::File)
        return;
    // The name may be one that the server chose.
    if (!FTPPaths::isPlainFileName(name))
        fail(QStringLiteral("Error writing local file: ") + name);
    else if (kind.createsFile)
        createLocalFile(Session.LocalDirectory + name);
    else
        openForRestart(Session.LocalDirectory + name);
}

void FTPDataSocket::SetFileFolderItem(const std::optional<QFileInfo>& item) {
    FileFolderItem = item;
    if (!item) {
        fail(QStringLiteral("Error writing local file: ") + FileName);
        return;
    }
    FileName = item->fileName();
    if (transferKind(Session.FTPSessionType).createsFile)
        createLocalFile(item->absoluteFilePath());
}

void FTPDataSocket::SetRestartPosition() {
    if (!DataStream.isOpen()) {
        m_startsWhenConnected = true;
        return;
    }
    m_startsWhenConnected = false;
    DataStream.seek(std::clamp<qint64>(Session.RestartByteCount, 0, DataStream.size()));
    BytesSent = 0;
    sendBlock();
}

void FTPDataSocket::UpdateTransferStatus(qint64 count) {
    ByteCount = saturated(count);
    if (Session.FTPStatusInstance)
        Session.FTPStatusInstance->Progress_FTP(ByteCount);
}

void FTPDataSocket::ParseDirectoryList(const QString& text) {
    Session.ParseDirectoryList(text);
}

void FTPDataSocket::SetFileList() {
    FileList = true;
    // A download that was dropped may have left its file open: the listing is no part of it.
    bs.close();
}

void FTPDataSocket::ConnectToServer(quint16 port) {
    if (!Session.CommandSocket)
        return;
    forgetLastTransfer();
    Address = Session.CommandSocket->RemoteAddress().toString();
    Port = port;
    Connect();
}

void FTPDataSocket::ListenForServer() {
    if (!Session.CommandSocket)
        return;
    forgetLastTransfer();
    Port = static_cast<quint16>(Session.DataPort);
    if (!Listen(Session.CommandSocket->LocalAddress(), Session.CommandSocket->RemoteAddress()))
        Event_Error();
}

void FTPDataSocket::Drop() {
    forgetLastTransfer();
    Close();
    bs.close();
    DataStream.close();
}

void FTPDataSocket::Event_Connected() {
    const QString& type = Session.FTPSessionType;
    if (!transferKind(type).sends)
        return;
    const bool isDirectory = Text::equal(type, u"PutDir") || Text::equal(type, u"PutDirImmediate");
    const QString path =
        isDirectory ? Session.Paths.value(Session.CurrentFileIndex) : Session.LocalDirectory + FileName;
    if (!openDataStream(path))
        return;
    BytesSent = 0;
    if (!Text::equal(type, u"RestartPutSingleFile"))
        sendBlock();
    else if (m_startsWhenConnected)
        SetRestartPosition();
    resetTimer();
}

void FTPDataSocket::Event_DataAvailable() {
    if (FileList && transferKind(Session.FTPSessionType).isWalk) {
        m_pause.start(ClockTimer::Mode::Single);
        resetTimer();
    } else {
        receive();
    }
}

void FTPDataSocket::Event_SendComplete() {
    const QString& type = Session.FTPSessionType;
    if (Text::equal(type, u"AbortTransfer")) {
        endUpload();
    } else if (transferKind(type).sends && DataStream.isOpen()) {
        if (DataStream.atEnd()) {
            UpdateTransferStatus(BytesSent);
            endUpload();
        } else {
            sendBlock();
        }
    }
    resetTimer();
}

void FTPDataSocket::Event_Error() {
    const QString code = Text::Str(LastErrorCode());
    const bool hasClosed = LastErrorCode() == PeerClosed;
    if (hasClosed)
        takeBytes();
    if (!isInUse())
        return;
    const FTPTransferKind kind = transferKind(Session.FTPSessionType);
    const bool isListing = kind.receives == FTPTransferKind::Data::File
                               ? kind.isWalk && FileList
                               : kind.receives != FTPTransferKind::Data::None;
    if (kind.failsAsSending) {
        DataStream.close();
        fail(QStringLiteral("Error while sending the file: ") + code);
    } else if (kind.receives != FTPTransferKind::Data::None && hasClosed) {
        finishReceiving();
    } else if (isListing) {
        FileList = false;
        fail(QStringLiteral("Error while receiving the directory list: ") + code);
    } else if (kind.receives == FTPTransferKind::Data::File) {
        fail(QStringLiteral("Error while receiving the file: ") + code);
    }
}

// What a dropped transfer left unread is no part of the next one.
void FTPDataSocket::forgetLastTransfer() {
    m_pause.stop();
    FileData.clear();
}

void FTPDataSocket::createLocalFile(const QString& path) {
    bs.close();
    Session.DeleteLocalFile(path);
    bs.setFileName(path);
    if (!bs.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered))
        fail(QStringLiteral("Error writing local file: ") + FileName);
}

void FTPDataSocket::openForRestart(const QString& path) {
    bs.close();
    bs.setFileName(path);
    const bool isOpen = bs.open(QIODevice::ReadWrite | QIODevice::ExistingOnly | QIODevice::Unbuffered);
    // An offset past 2 GiB does not fit: the rest would land in the wrong place.
    if (!isOpen || bs.size() > std::numeric_limits<std::int32_t>::max() || !bs.seek(bs.size())) {
        bs.close();
        fail(QStringLiteral("Error writing local file: ") + FileName);
        return;
    }
    Session.RestartByteCount = static_cast<std::int32_t>(bs.size());
}

bool FTPDataSocket::openDataStream(const QString& path) {
    DataStream.close();
    DataStream.setFileName(path);
    if (!QFileInfo(path).isFile()) {
        fail(QStringLiteral("Cannot Find File: ") + FileName);
        return false;
    }
    if (!DataStream.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
        fail(QStringLiteral("Cannot open file: ") + FileName);
        return false;
    }
    return true;
}

void FTPDataSocket::sendBlock() {
    const QByteArray block = DataStream.read(std::max(Session.SendBufferSize, 1));
    if (DataStream.error() != QFileDevice::NoError) {
        Session.CancelFTPSession(QStringLiteral("Error while sending the file: ") +
                                 Text::Str(DataStream.error()));
        return;
    }
    BytesSent = saturated(qint64{BytesSent} + block.size());
    UpdateTransferStatus(BytesSent);
    if (!block.isEmpty())
        Write(block);
    else  // an empty file, or one that holds less than its size says
        endUpload();
}

// What was received or sent may have ended the session, and this socket's part in it.
bool FTPDataSocket::isInUse() const {
    return Session.DataSocket == this;
}

void FTPDataSocket::resetTimer() {
    if (isInUse())
        Session.ResetConnectionTimer();
}

void FTPDataSocket::receive() {
    takeBytes();
    resetTimer();
}

void FTPDataSocket::takeBytes() {
    m_pause.stop();
    switch (transferKind(Session.FTPSessionType).receives) {
        case FTPTransferKind::Data::File:
            storeBlock();
            break;
        case FTPTransferKind::Data::List:
        case FTPTransferKind::Data::Collected:
            appendToListing();
            break;
        case FTPTransferKind::Data::None:
            // Left over from an operation that was dropped: a server that cannot send would not go on.
            ReadAll();
            break;
    }
}

void FTPDataSocket::storeBlock() {
    const QByteArray block = ReadAll();
    if (block.isEmpty())
        return;
    FileData = block;
    if (!bs.isOpen())
        return;
    if (bs.write(block) == block.size())
        UpdateTransferStatus(bs.pos());
    else  // the end of the transfer must not pass for a success
        Session.CancelFTPSession(QStringLiteral("Error writing local file: ") + FileName);
}

void FTPDataSocket::appendToListing() {
    FileData += ReadAll();
    if (FileData.size() <= FTPSessionClass::MaxListing)
        UpdateTransferStatus(FileData.size());
    else
        Session.CancelFTPSession(QStringLiteral("Error: The directory list is too long."));
}

void FTPDataSocket::endUpload() {
    DataStream.close();
    Close();
}

void FTPDataSocket::finishReceiving() {
    const FTPTransferKind kind = transferKind(Session.FTPSessionType);
    const QString text = Session.decode(std::exchange(FileData, QByteArray()));
    if (kind.receives == FTPTransferKind::Data::List) {
        Session.DirectoryFileList = text;
        return;
    }
    if (kind.receives == FTPTransferKind::Data::Collected || (kind.isWalk && FileList))
        ParseDirectoryList(text);
    else
        bs.close();
    FileList = false;
    ByteCount = 0;
}

void FTPDataSocket::fail(const QString& text) {
    Session.EndFTPSession(text);
}
