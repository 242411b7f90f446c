#include "FTPCommandSocket.h"

#include "FTPSessionClass.h"
#include "Text.h"

void FTPCommandSocket::Event_DataAvailable() {
    Session.Buffer += ReadAll();
    // A reply may end the session, and this socket's part in it.
    while (Session.CommandSocket == this && hasReply()) {
        // What the data connection holds already came before this reply, or with it.
        if (Session.DataSocket)
            Session.DataSocket->Poll();
        if (Session.CommandSocket == this)
            Session.ParseCommandBuffer();
    }
    if (Session.CommandSocket == this && Session.Buffer.size() > FTPSessionClass::MaxReplyLine)
        Session.CancelFTPSession(QStringLiteral("Error: The reply line is too long."));
}

void FTPCommandSocket::Event_Error() {
    // After QUIT the server closes.
    if (Text::equal(Session.CurrentFTPStep, u"QUIT"))
        return;
    const QString reason = LastErrorText().isEmpty() ? Text::Str(LastErrorCode()) : LastErrorText();
    Session.EndFTPSession(QStringLiteral("Error: ") + reason);
}

void FTPCommandSocket::Event_Secured() {
    Session.engine().onSecured();
}

bool FTPCommandSocket::hasReply() const {
    const qsizetype end = Session.Buffer.indexOf("\r\n");
    return end >= 0 && end <= FTPSessionClass::MaxReplyLine;
}
