#include "LoginInhibitor.h"

#include <QDBusConnection>
#include <QDBusMessage>

namespace {

// The main thread stands meanwhile; a login manager that takes longer is passed over.
constexpr int PatienceInMilliseconds = 500;

}  // namespace

void LoginInhibitor::inhibit(bool isInhibited) {
    m_lock = QDBusUnixFileDescriptor();
    const QDBusConnection bus = QDBusConnection::systemBus();
    if (!isInhibited || !bus.isConnected())
        return;
    QDBusMessage request = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.login1"), QStringLiteral("/org/freedesktop/login1"),
        QStringLiteral("org.freedesktop.login1.Manager"), QStringLiteral("Inhibit"));
    request << QStringLiteral("sleep:shutdown") << QStringLiteral("VLX Utility")
            << QStringLiteral("The amplifier is being written") << QStringLiteral("block");
    const QDBusMessage answer = bus.call(request, QDBus::Block, PatienceInMilliseconds);
    if (answer.type() == QDBusMessage::ReplyMessage && !answer.arguments().isEmpty())
        m_lock = answer.arguments().constFirst().value<QDBusUnixFileDescriptor>();
}
