// Which replies a server still owes.
#pragma once

#include <QByteArray>

// Every command has one final reply, which may have many lines, and replies come in the order of their
// commands.
class FTPReplyCount {
public:
    // A new connection owes its greeting.
    void onConnect();
    void onCommand() {
        ++m_owed;
        m_length = 0;
    }
    // From here on the replies that are owed now belong to nobody. An abort takes the first success for its
    // own: some servers answer it and the transfer in one.
    void forsake(bool isAbort);
    // The same when it is not sure how many there are: up to the reply 200 to a NOOP that was sent just now.
    void forsakeUpToNOOP();
    // A line has come. Gives whether it belongs to a command that was forsaken.
    bool takesOff(const QByteArray& line);
    bool isOwed() const { return m_owed > 0; }
    // Whether the line that was taken off last is text inside a reply in many lines, and tells nothing.
    bool isText() const { return m_isText; }
    // How much has come since the last command, in bytes.
    qsizetype length() const { return m_length; }

private:
    bool isFinal(const QByteArray& line);
    bool takesOffFinal(const QByteArray& line);

    int m_owed = 0;
    int m_forsaken = 0;
    bool m_isAbort = false;
    bool m_awaitsNOOP = false;
    bool m_isInside = false;  // a reply in many lines that has not ended
    bool m_isText = false;
    qsizetype m_length = 0;
};
