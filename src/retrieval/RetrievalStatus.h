// The FTP client's reports as a retrieval needs them: besides the log and the flags, the end of an operation
// as an event, the reason of a failure, and how much of a file has come.
#pragma once

#include <functional>

#include "FTPStatusClass.h"

class RetrievalStatus final : public FTPStatusClass {
public:
    // `ended`: an operation has ended well or badly. `progressed`: bytes of the transfer so far, and of the
    // whole file; 0 when the server does not tell that. Neither may destroy the session.
    struct Receiver {
        std::function<void()> ended;
        std::function<void(qint64 count, qint64 size)> progressed;
    };

    RetrievalStatus(FTPSessionClass& session, Globals& globals, Receiver receiver)
        : FTPStatusClass(session, globals), m_receiver(std::move(receiver)) {}

    void Error_FTP(const QString& text) override;
    void Successful_FTP(const QString& text) override;
    void Response_FTP(const QString& text) override;
    void Progress_FTP(std::int32_t count) override;

    // What Error_FTP has told last; empty without an error.
    QString lastError;

private:
    Receiver m_receiver;
    qint64 m_size = 0;
};
