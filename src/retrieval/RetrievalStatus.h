// The FTP client's reports as a retrieval needs them: besides the log and the flags, the end of an operation
// as an event, the reason of a failure, and how much of a file has come.
#pragma once

#include <functional>

#include "FTPStatusClass.h"

class RetrievalStatus final : public FTPStatusClass {
public:
    // `ended`: an operation has ended well or badly. `progressed`: bytes of the transfer so far, and the same
    // in words, with the size of the whole file where the server tells it. Neither may end the session.
    struct Receiver {
        std::function<void()> ended;
        std::function<void(std::int32_t count, const QString& done)> progressed;
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
    std::int32_t m_size = 0;  // 0: not told
};
