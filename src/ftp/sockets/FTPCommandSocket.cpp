#include "FTPCommandSocket.h"

#include "Text.h"

void FTPCommandSocket::Event_Error() {
    const QString code = Text::Str(LastErrorCode());
    Session.ControlFailed(LastErrorText().isEmpty() ? code : code + u' ' + LastErrorText());
}
