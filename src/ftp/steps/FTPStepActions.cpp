#include "FTPStepActions.h"

#include <limits>
#include <optional>

#include <QRegularExpression>

#include "FTPCommandSocket.h"
#include "FTPDataSocket.h"
#include "FTPEngine.h"
#include "Text.h"

namespace {

// The length in "150 Opening BINARY mode data connection for a.txt (5 bytes)."; the name may hold the like.
std::optional<qint64> lengthIn(QString line, const QString& name) {
    static const QRegularExpression pattern(QStringLiteral("\\((\\d{1,18}) bytes\\)"));
    if (!name.isEmpty())
        line.remove(name);
    const QRegularExpressionMatch match = pattern.match(line);
    return match.hasMatch() ? std::optional(match.captured(1).toLongLong()) : std::nullopt;
}

// The length in "213 5". An answer of another form tells none.
std::optional<qint64> sizeIn(const QString& line) {
    bool isNumber = false;
    const qint64 size = Text::NthField(line, u" ", 2).toLongLong(&isNumber);
    const bool isSize =
        line.startsWith(u"213") && Text::CountFields(line, u" ") == 2 && isNumber && size >= 0;
    return isSize ? std::optional(size) : std::nullopt;
}

}  // namespace

bool FTPStepActions::isFTPS(const FTPEngine& engine) {
    return engine.session.FTPS;
}

bool FTPStepActions::isPassive(const FTPEngine& engine) {
    return engine.session.PassiveMode;
}

bool FTPStepActions::hasServerDirectory(const FTPEngine& engine) {
    return !engine.session.ServerDirectory.isEmpty();
}

bool FTPStepActions::hasMoreFiles(const FTPEngine& engine) {
    return engine.session.GetFileCount() >= 0;
}

bool FTPStepActions::isDataPending(const FTPEngine& engine) {
    return engine.session.DataSocket && engine.session.DataSocket->IsPending();
}

bool FTPStepActions::isDataDoubtful(const FTPEngine& engine) {
    return engine.session.DataSocket && engine.session.DataSocket->IsDoubtful();
}

bool FTPStepActions::refusesEPSV(const FTPEngine& engine) {
    return engine.session.IsIPv6() && !engine.line.startsWith(u"229");
}

bool FTPStepActions::tellsAbort(const FTPEngine& engine) {
    return Text::InStr(engine.line, u"Abort") > 0;
}

bool FTPStepActions::listsAllNames(const FTPEngine& engine) {
    return engine.session.UseNameList && engine.session.ShowInvisible;
}

bool FTPStepActions::listsNames(const FTPEngine& engine) {
    return engine.session.UseNameList;
}

bool FTPStepActions::listsAll(const FTPEngine& engine) {
    return engine.session.ShowInvisible;
}

bool FTPStepActions::noteMicrosoft(FTPEngine& engine) {
    if (Text::InStr(engine.line, u"Microsoft") > 0)
        engine.session.NT = true;
    return true;
}

bool FTPStepActions::secureConnection(FTPEngine& engine) {
    // Nothing that came in the clear behind the reply may pass for an answer under encryption.
    engine.session.Buffer.clear();
    if (engine.session.CommandSocket)
        engine.session.CommandSocket->StartEncryption();
    return true;
}

bool FTPStepActions::takeName(FTPEngine& engine) {
    engine.name = engine.session.GetNextFileName();
    return true;
}

bool FTPStepActions::takeNameForData(FTPEngine& engine) {
    return takeName(engine) && openNamedFile(engine);
}

bool FTPStepActions::storeWorkingDirectory(FTPEngine& engine) {
    engine.session.CurrentWorkingDirectory = Text::NthField(engine.line, u"\"", 2);
    return true;
}

bool FTPStepActions::readRestOfReplies(FTPEngine& engine) {
    if (engine.session.CommandSocket)
        engine.session.Buffer += engine.session.CommandSocket->ReadAll();
    return true;
}

bool FTPStepActions::CalcSetPassivePort(FTPEngine& engine) {
    return engine.session.CalcSetPassivePort(engine.line) || engine.refuse();
}

bool FTPStepActions::takeNameAndConnect(FTPEngine& engine) {
    return takeNameForData(engine) && CalcSetPassivePort(engine);
}

bool FTPStepActions::setPort(FTPEngine& engine) {
    if (engine.session.DataSocket)
        engine.session.DataSocket->Port = static_cast<quint16>(engine.session.DataPort);
    return true;
}

bool FTPStepActions::setPortAndTakeName(FTPEngine& engine) {
    return setPort(engine) && takeNameForData(engine);
}

bool FTPStepActions::listen(FTPEngine& engine) {
    const FTPSessionState& session = engine.session;
    if (!session.DataSocket || !session.CommandSocket)
        return true;
    const FTPCommandSocket& control = *session.CommandSocket;
    return session.DataSocket->ListenForServer(control.LocalAddress(), static_cast<quint16>(session.DataPort),
                                               control.RemoteAddress());
}

bool FTPStepActions::listenAndTakeName(FTPEngine& engine) {
    return listen(engine) && takeNameForData(engine);
}

bool FTPStepActions::pollData(FTPEngine& engine) {
    if (engine.session.DataSocket)
        engine.session.DataSocket->Poll();
    return true;
}

bool FTPStepActions::acceptData(FTPEngine& engine) {
    const FTPSessionState& session = engine.session;
    // In any other type the server may change line ends on the way.
    const bool isBinary = Text::equal(session.FTPTransferType, u"I");
    return !session.DataSocket ||
           session.DataSocket->Accept(isBinary ? lengthIn(engine.line, engine.name) : std::nullopt);
}

bool FTPStepActions::acceptListing(FTPEngine& engine) {
    return acceptData(engine) && NextDataPort(engine);
}

bool FTPStepActions::abortData(FTPEngine& engine) {
    if (engine.session.DataSocket)
        engine.session.DataSocket->Abort();
    return true;
}

bool FTPStepActions::settleData(FTPEngine& engine) {
    return !engine.session.DataSocket || engine.session.DataSocket->Settle(sizeIn(engine.line));
}

bool FTPStepActions::endWithoutEPSV(FTPEngine& engine) {
    return engine.end(
        QStringLiteral("Error: The server refuses EPSV, and there is no other passive mode over IPv6: ") +
        engine.line);
}

bool FTPStepActions::NextDataPort(FTPEngine& engine) {
    engine.session.NextDataPort();
    return true;
}

bool FTPStepActions::openNamedFile(FTPEngine& engine) {
    return !engine.session.DataSocket || engine.session.DataSocket->PutFileName(engine.name);
}

bool FTPStepActions::takeSizeAsOffset(FTPEngine& engine) {
    const std::optional<qint64> size = sizeIn(engine.line);
    // An offset past 2 GiB does not fit: the rest would land in the wrong place.
    if (size > std::numeric_limits<std::int32_t>::max())
        return engine.refuse();
    if (size)
        engine.session.RestartByteCount = static_cast<std::int32_t>(*size);
    return !engine.session.DataSocket || engine.session.DataSocket->SetRestartPosition();
}
