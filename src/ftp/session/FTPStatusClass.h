// Where the FTP client meets the program: its reports become lines of the log and raise the flags that the
// retrieval waits for.
#pragma once

#include <cstdint>

#include <QString>

class FTPSessionClass;
class Globals;

// Most lines are trace lines. A report must not destroy its session.
class FTPStatusClass {
public:
    FTPStatusClass(FTPSessionClass& session, Globals& globals) : Session(session), m_globals(globals) {}
    FTPStatusClass(const FTPStatusClass&) = delete;
    FTPStatusClass& operator=(const FTPStatusClass&) = delete;
    virtual ~FTPStatusClass() = default;

    // An operation has failed: sets FTPError, not FTPDone.
    virtual void Error_FTP(const QString& text);
    // Bytes of the transfer so far.
    virtual void Progress_FTP(std::int32_t count);
    // An operation has succeeded: sets FTPDone.
    virtual void Successful_FTP(const QString& text);
    // A command sent, without any password, or a line received.
    virtual void Response_FTP(const QString& text);
    // What a step is about to do.
    virtual void Status_FTP(const QString& text);
    QString FormatBytes(std::int32_t count) const;

protected:
    FTPSessionClass& Session;

private:
    void setStatusText(const QString& text, bool isTrace);

    Globals& m_globals;
};
