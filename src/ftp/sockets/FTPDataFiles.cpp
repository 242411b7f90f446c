// The local files of the data connection, and what it sends.
#include <algorithm>
#include <limits>

#include "FTPDataSocket.h"
#include "FTPPaths.h"
#include "Text.h"

namespace {

std::int32_t saturated(qint64 count) {
    constexpr qint64 limit = std::numeric_limits<std::int32_t>::max();
    return static_cast<std::int32_t>(std::min(count, limit));
}

}  // namespace

bool FTPDataSocket::PutFileName(const QString& name) {
    FileName = name;
    m_startsWhenConnected = false;
    m_path = Session.LocalPath(name);
    const FTPTransferKind kind = Session.Transfer();
    if (kind.sends)
        return openUpload(m_path);
    // The name may be one that the server chose.
    if (kind.receives != FTPTransferKind::Data::File ||
        (FTPPaths::isPlainFileName(name) && prepareDownload(m_path)))
        return true;
    return fail(QStringLiteral("Error writing local file: ") + name);
}

void FTPDataSocket::SetFileFolderItem(const std::optional<QFileInfo>& item) {
    FileFolderItem = item;
    if (item) {
        FileName = item->fileName();
        m_path = item->absoluteFilePath();
    }
    if (!item || (Session.Transfer().createsFile && !prepareDownload(m_path)))
        fail(QStringLiteral("Error writing local file: ") + FileName);
}

// Nothing is touched yet: the server may refuse.
bool FTPDataSocket::prepareDownload(const QString& path) {
    const QFileInfo file(path);
    const QFileInfo folder(file.path());
    if (Session.Transfer().createsFile)
        return folder.isDir() && folder.isWritable() && !file.isDir();
    // An offset past 2 GiB does not fit: the rest would land in the wrong place.
    if (!file.isFile() || !file.isWritable() || file.size() > std::numeric_limits<std::int32_t>::max())
        return false;
    Session.SetRestartOffset(static_cast<std::int32_t>(file.size()));
    return true;
}

bool FTPDataSocket::openDownload() {
    return Session.Transfer().createsFile ? bs.Create(m_path) : bs.TakeUp(m_path, Session.RestartOffset());
}

bool FTPDataSocket::openUpload(const QString& path) {
    m_isSent = false;
    DataStream.close();
    DataStream.setFileName(path);
    const bool isThere = QFileInfo(path).isFile();
    if (isThere && DataStream.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return true;
    return fail((isThere ? QStringLiteral("Cannot open file: ") : QStringLiteral("Cannot Find File: ")) +
                FileName);
}

void FTPDataSocket::startUpload() {
    if (!DataStream.isOpen())
        return;
    BytesSent = 0;
    const bool goesOn =
        !Session.Transfer().waitsForOffset ? sendBlock() : !m_startsWhenConnected || SetRestartPosition();
    if (goesOn)
        Session.DataMoved();
}

bool FTPDataSocket::SetRestartPosition() {
    if (Session.RestartOffset() > DataStream.size())
        return fail(
            QStringLiteral("Error while sending the file: the server has more of it than there is here"));
    m_startsWhenConnected = !IsConnected();
    if (m_startsWhenConnected)
        return true;
    DataStream.seek(Session.RestartOffset());
    BytesSent = 0;
    return sendBlock();
}

bool FTPDataSocket::sendBlock() {
    const QByteArray block = DataStream.read(std::max(Session.SendSize(), 1));
    if (DataStream.error() != QFileDevice::NoError)
        return cancel(QStringLiteral("Error while sending the file: ") + Text::Str(DataStream.error()));
    m_moved += block.size();
    BytesSent = saturated(qint64{BytesSent} + block.size());
    UpdateTransferStatus(BytesSent);
    if (!block.isEmpty())
        Write(block);
    else  // an empty file, or one that holds less than its size says
        endUpload();
    return true;
}

void FTPDataSocket::endUpload() {
    m_pace.stop();
    m_isSent = true;
    m_isOpen = false;
    DataStream.close();
    Close();
    Session.DataEnded();
}

void FTPDataSocket::UpdateTransferStatus(qint64 count) {
    ByteCount = saturated(count);
    Session.Progress(ByteCount);
}
