#include "FTPDataSocket.h"

#include <algorithm>
#include <utility>

#include <QElapsedTimer>
#include <QMetaObject>

#include "Text.h"

namespace {

using Data = FTPTransferKind::Data;

// How long a listing is parsed before the event loop turns.
constexpr qint64 BreathMilliseconds = 5;

}  // namespace

FTPDataSocket::FTPDataSocket(Clock& clock, FTPDataOwner& session)
    : SSLSocket(clock, Kind::Plain),
      Session(session),
      m_pace(clock, std::chrono::minutes(1), [this] { checkPace(); }) {}

// ---- The connection

void FTPDataSocket::ConnectToServer(const QHostAddress& server, quint16 port) {
    forgetLastTransfer();
    m_isOpen = true;
    Address = server.toString();
    Port = port;
    Connect();
}

bool FTPDataSocket::ListenForServer(const QHostAddress& local, quint16 port, const QHostAddress& server) {
    forgetLastTransfer();
    m_isOpen = true;
    Port = port;
    if (Listen(local, server))
        return true;
    noteEnd();
    return takeEnd();
}

bool FTPDataSocket::Accept(std::optional<qint64> length) {
    if (m_isAccepted)
        return true;
    m_isAccepted = true;
    m_length = length;
    if (Session.Transfer().receives == Data::File && !isListing() && !openDownload())
        return fail(QStringLiteral("Error writing local file: ") + FileName);
    m_moved = 0;
    m_pace.start(ClockTimer::Mode::Repeating);
    Poll();
    // A failure in what Poll brought has stopped the transfer.
    return m_isAccepted && takeBytes() && takeEnd();
}

bool FTPDataSocket::IsPending() const {
    return m_isOpen || !m_listing.isEmpty() || (Session.Transfer().sends && !m_isSent);
}

bool FTPDataSocket::Settle(std::optional<qint64> size) {
    m_isDoubtful = false;
    if (size != bs.Length())
        return fail(QStringLiteral("Error: The server has passed over the restart position."));
    bs.Close();
    return true;
}

void FTPDataSocket::Abort() {
    if (!DataStream.isOpen())
        Stop();
}

void FTPDataSocket::Stop() {
    forgetLastTransfer();
    Close();
    bs.CloseUnchangedIfItBeginsAgain();
    DataStream.close();
}

void FTPDataSocket::Drop() {
    Stop();
    m_isDropped = true;
}

// What a dropped transfer left unread is no part of the next one.
void FTPDataSocket::forgetLastTransfer() {
    m_pace.stop();
    FileData.clear();
    m_listing.clear();
    m_isOpen = false;
    m_isAccepted = false;
    m_isDoubtful = false;
    m_end = End::None;
    m_length.reset();
}

// ---- Events

void FTPDataSocket::Event_Connected() {
    if (Session.Transfer().sends)
        startUpload();
}

void FTPDataSocket::Event_DataAvailable() {
    // Without a transfer it is left over from an operation that was dropped: a server that cannot send would
    // not go on.
    if (m_isAccepted || Session.Transfer().receives == Data::None)
        takeBytes();
}

void FTPDataSocket::Event_SendComplete() {
    if (!DataStream.isOpen())
        return;
    const bool isAbort = !Session.Transfer().sends;
    if (!isAbort && !DataStream.atEnd()) {
        if (sendBlock())
            Session.DataMoved();
        return;
    }
    UpdateTransferStatus(BytesSent);
    Session.DataMoved();
    endUpload();
}

void FTPDataSocket::Event_Error() {
    noteEnd();
    // A server that refuses the transfer hangs up too, and may do so before it says why.
    if (m_isAccepted || LastErrorCode() != PeerClosed)
        takeEnd();
}

void FTPDataSocket::noteEnd() {
    m_endCode = WasReset() ? PeerReset : LastErrorCode();
    m_end = m_endCode == PeerClosed ? End::Closed : End::Failed;
}

bool FTPDataSocket::takeEnd() {
    if (m_end == End::None || m_isDropped)
        return true;
    const FTPTransferKind kind = Session.Transfer();
    const bool hasClosed = std::exchange(m_end, End::None) == End::Closed;
    if (hasClosed && !takeBytes())
        return false;
    m_isOpen = false;
    if (kind.receives != Data::None && hasClosed)
        return finishReceiving();
    const bool isTransfer = kind.receives != Data::None || kind.failsAsSending;
    return !isTransfer || fail(failure());
}

QString FTPDataSocket::failure() const {
    const QString code = Text::Str(m_endCode);
    if (Session.Transfer().failsAsSending)
        return QStringLiteral("Error while sending the file: ") + code;
    if (isListing())
        return QStringLiteral("Error while receiving the directory list: ") + code;
    return QStringLiteral("Error while receiving the file: ") + code;
}

void FTPDataSocket::checkPace() {
    if (std::exchange(m_moved, 0) < LeastPerMinute)
        fail(QStringLiteral("Error: The transfer has come to a standstill. Ending session."));
}

bool FTPDataSocket::fail(const QString& message) {
    Session.EndFTPSession(message);
    return false;
}

bool FTPDataSocket::cancel(const QString& message) {
    Session.CancelFTPSession(message);
    return false;
}

// ---- Receiving

bool FTPDataSocket::isListing() const {
    const FTPTransferKind kind = Session.Transfer();
    return kind.receives == Data::List || kind.receives == Data::Collected || (kind.isWalk && FileList);
}

bool FTPDataSocket::takeBytes() {
    const QByteArray block = ReadAll();
    if (Session.Transfer().receives == Data::None || block.isEmpty())
        return true;
    m_moved += block.size();
    if (!(isListing() ? appendToListing(block) : storeBlock(block)))
        return false;
    Session.DataMoved();
    return true;
}

bool FTPDataSocket::storeBlock(const QByteArray& block) {
    FileData = block;
    if (!bs.Write(block))
        return cancel(QStringLiteral("Error writing local file: ") + FileName);
    UpdateTransferStatus(bs.Length());
    return true;
}

bool FTPDataSocket::appendToListing(const QByteArray& block) {
    FileData += block;
    if (FileData.size() > MaxListing)
        return cancel(QStringLiteral("Error: The directory list is too long."));
    UpdateTransferStatus(FileData.size());
    return true;
}

bool FTPDataSocket::finishReceiving() {
    m_pace.stop();
    ByteCount = 0;
    const QByteArray listing = std::exchange(FileData, QByteArray());
    if (isListing())
        return finishListing(listing);
    if (!finishFile())
        return false;
    Session.DataEnded();
    return true;
}

bool FTPDataSocket::finishListing(const QByteArray& listing) {
    FileList = false;
    if (Session.Transfer().receives != Data::List)
        return ParseDirectoryList(Session.TextOf(listing));
    Session.TakeListing(Session.TextOf(listing));
    Session.DataEnded();
    return true;
}

bool FTPDataSocket::ParseDirectoryList(const QString& text) {
    m_listing = text;
    m_parsed = 0;
    return parseMore();
}

bool FTPDataSocket::parseMore() {
    QElapsedTimer busy;
    busy.start();
    while (m_parsed < m_listing.size()) {
        if (busy.elapsed() >= BreathMilliseconds) {
            Session.DataMoved();
            QMetaObject::invokeMethod(
                this, [this] { return m_listing.isEmpty() || parseMore(); }, Qt::QueuedConnection);
            return true;
        }
        if (!Session.TakeListingLine(nextLine()))
            return false;
    }
    m_listing.clear();
    Session.DataEnded();
    return true;
}

// Between a Return and a Line Feed there is an empty line, which tells nothing.
QString FTPDataSocket::nextLine() {
    const QStringView rest = QStringView(m_listing).sliced(m_parsed);
    const auto end = std::ranges::find_if(rest, [](QChar c) { return c == u'\r' || c == u'\n'; });
    m_parsed += end - rest.begin() + 1;
    return rest.first(end - rest.begin()).toString();
}

bool FTPDataSocket::finishFile() {
    if (m_length && !bs.HasLength(*m_length))
        return fail(QStringLiteral("Error while receiving the file: %1 of %2 bytes")
                        .arg(bs.Received())
                        .arg(*m_length));
    m_isDoubtful = bs.BeginsAgain(m_length);
    if (!m_isDoubtful)
        bs.Close();
    return true;
}
