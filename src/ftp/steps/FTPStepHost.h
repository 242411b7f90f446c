// What the steps ask of the session that they belong to.
#pragma once

#include <QString>

class FTPStepHost {
public:
    // False when the step could not be taken; the operation has ended then.
    virtual bool NextFTPStep(const QString& step, const QString& command, const QString& status) = 0;
    virtual void EndFTPSession(const QString& message) = 0;
    // Reports the success of an operation that leaves the connection up.
    virtual void Succeed(const QString& message) = 0;
    virtual void StopConnectionTimer() = 0;
    // Has Resume called when the data connection has ended. If `asks`, the server is asked with real NOOPs
    // meanwhile, each of which enters the present step again; `status` goes with them.
    virtual void AwaitData(bool asks, const QString& status) = 0;
    virtual void Tell(const QString& status) = 0;
    virtual void Warn(const QString& message) = 0;

protected:
    ~FTPStepHost() = default;
};
