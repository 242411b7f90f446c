// What the connections of a session report to, and the little that they ask of it.
#pragma once

#include <cstdint>

#include <QByteArray>
#include <QString>

#include "FTPTransferKind.h"

// Of the control connection.
class FTPCommandOwner {
public:
    virtual void RepliesCame() = 0;
    virtual void ControlFailed(const QString& reason) = 0;
    virtual void ControlSecured() = 0;

protected:
    ~FTPCommandOwner() = default;
};

// Of the data connection.
class FTPDataOwner {
public:
    // What the running operation does with the connection.
    virtual FTPTransferKind Transfer() const = 0;
    // Where the file of that name lies on this machine.
    virtual QString LocalPath(const QString& name) const = 0;
    // Most bytes of one write.
    virtual std::int32_t SendSize() const = 0;
    virtual std::int32_t RestartOffset() const = 0;
    virtual void SetRestartOffset(std::int32_t offset) = 0;
    virtual void Progress(std::int32_t count) = 0;
    // Something has come or gone.
    virtual void DataMoved() = 0;
    virtual QString TextOf(const QByteArray& bytes) const = 0;
    // A whole listing, or one line of that of a walk. False when the operation has ended.
    virtual void TakeListing(const QString& listing) = 0;
    virtual bool TakeListingLine(const QString& line) = 0;
    // The connection has closed in good order, and all that came was taken.
    virtual void DataEnded() = 0;
    // The transfer has failed.
    virtual void EndFTPSession(const QString& message) = 0;
    // It cannot go on: whatever the server says later, nothing may come of it.
    virtual void CancelFTPSession(const QString& message) = 0;

protected:
    ~FTPDataOwner() = default;
};

// Of the inactivity timer.
class FTPTimerOwner {
public:
    virtual void TimedOut() = 0;

protected:
    ~FTPTimerOwner() = default;
};
