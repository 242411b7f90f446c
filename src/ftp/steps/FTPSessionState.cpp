// What a session knows: its text encoding, its lists of files and the data port.
#include "FTPSessionState.h"

#include <QRandomGenerator>

#include "FTPCommandSocket.h"
#include "FTPDataSocket.h"
#include "Text.h"

namespace {

// The numbers of a 227 reply: the text between the first "(" and the next ")".
QString passiveFields(const QString& reply) {
    return Text::NthField(Text::NthField(reply, u"(", 2), u")", 1);
}

// One of them: 0 to 255, or -1.
int passiveField(const QString& fields, qsizetype number) {
    bool isNumber = false;
    const int value = Text::NthField(fields, u",", number).trimmed().toInt(&isNumber);
    return isNumber && value >= 0 && value <= 255 ? value : -1;
}

// The port in the "|||port|" of a 229 reply, whatever its delimiter; 0 for another form.
std::int32_t extendedPort(const QString& fields) {
    const QString delimiter = fields.left(1);
    bool isNumber = false;
    const ushort port = fields.section(delimiter, 3, 3).toUShort(&isNumber);
    const bool isFormed = fields.startsWith(delimiter.repeated(3)) && fields.endsWith(delimiter);
    return isNumber && isFormed && !delimiter.isEmpty() ? port : 0;
}

}  // namespace

QByteArray FTPSessionState::encode(const QString& text) const {
    return QStringEncoder(ServerTextEncoding).encode(text);
}

QString FTPSessionState::decode(const QByteArray& bytes) const {
    return QStringDecoder(ServerTextEncoding).decode(bytes);
}

QString FTPSessionState::GetNextFileName() {
    return Files.isEmpty() ? QString() : Files.takeLast();
}

std::optional<QFileInfo> FTPSessionState::GetNextFolderItem() {
    if (FileFolderItems.empty())
        return std::nullopt;
    QFileInfo item = FileFolderItems.back();
    FileFolderItems.pop_back();
    return item;
}

void FTPSessionState::SetDataPortRange(std::int32_t first, std::int32_t last) {
    DataPortStart = first;
    DataPortEnd = last;
    DataPort =
        static_cast<std::int32_t>(first + QRandomGenerator::global()->generateDouble() * (last - first));
}

void FTPSessionState::NextDataPort() {
    ++DataPort;
    if (DataPort > DataPortEnd)
        DataPort = DataPortStart;
}

bool FTPSessionState::IsIPv6() const {
    return CommandSocket && CommandSocket->RemoteAddress().protocol() == QAbstractSocket::IPv6Protocol;
}

QString FTPSessionState::PassiveCommand() const {
    return IsIPv6() ? QStringLiteral("EPSV") : QStringLiteral("PASV");
}

QString FTPSessionState::PortCommand() const {
    if (!IsIPv6())
        return QStringLiteral("PORT ") + BuildPortString();
    QHostAddress address = CommandSocket->LocalAddress();
    address.setScopeId(QString());
    return QStringLiteral("EPRT |2|%1|%2|").arg(address.toString()).arg(DataPort);
}

QString FTPSessionState::BuildPortString() const {
    const QString address = CommandSocket ? CommandSocket->LocalAddress().toString() : QString();
    return Text::ReplaceAll(address, QStringLiteral("."), QStringLiteral(",")) +
           QStringLiteral(",%1,%2").arg(DataPort / 256).arg(DataPort % 256);
}

std::int32_t FTPSessionState::CalculatePassivePort(const QString& reply) const {
    const QString fields = passiveFields(reply);
    if (IsIPv6())
        return extendedPort(fields);
    const int high = passiveField(fields, 5);
    const int low = passiveField(fields, 6);
    return high < 0 || low < 0 ? 0 : high * 256 + low;
}

QString FTPSessionState::CalculatePassiveAddress(const QString& reply) const {
    return Text::ReplaceAll(passiveFields(reply), QStringLiteral(","), QStringLiteral("."));
}

bool FTPSessionState::CalcSetPassivePort(const QString& reply) {
    const std::int32_t port = CalculatePassivePort(reply);
    if (port != 0)
        SetPassivePort(port);
    return port != 0;
}

void FTPSessionState::SetPassivePort(std::int32_t port) {
    if (DataSocket && CommandSocket)
        DataSocket->ConnectToServer(CommandSocket->RemoteAddress(), static_cast<quint16>(port));
}
