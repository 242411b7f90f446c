// The control connection.
#pragma once

#include "FTPSocketOwners.h"
#include "SSLSocket.h"

class FTPCommandSocket final : public SSLSocket {
public:
    FTPCommandSocket(Clock& clock, FTPCommandOwner& session)
        : SSLSocket(clock, Kind::Encryptable), Session(session) {}

protected:
    void Event_DataAvailable() override { Session.RepliesCame(); }
    void Event_Error() override;
    void Event_Secured() override { Session.ControlSecured(); }

private:
    FTPCommandOwner& Session;
};
