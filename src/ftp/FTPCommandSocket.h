// The control connection.
#pragma once

#include "SSLSocket.h"

class FTPSessionClass;

class FTPCommandSocket final : public SSLSocket {
public:
    explicit FTPCommandSocket(FTPSessionClass& session) : Session(session) {}

protected:
    void Event_DataAvailable() override;
    void Event_Error() override;
    void Event_Secured() override;

private:
    bool hasReply() const;

    FTPSessionClass& Session;
};
