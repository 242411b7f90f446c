// Runs a program beside this one and hands on what it writes.
#pragma once

#include <functional>
#include <memory>

#include <QByteArray>
#include <QProcess>
#include <QString>
#include <QStringList>

// No shell of the system stands between: an argument is one argument, whatever is in it. One program at a
// time; it ends with the object.
class Shell {
public:
    // ErrorCode of a program that cannot be started, as the shells of the system have it.
    static constexpr int NotStarted = 127;

    Shell() = default;
    Shell(const Shell&) = delete;
    Shell& operator=(const Shell&) = delete;
    ~Shell() { Kill(); }

    // Looks for the program on the search path. DataAvailable follows whenever it has written something, and
    // Completed when it has ended or cannot be started: both from the event loop.
    void Execute(const QString& program, const QStringList& arguments, const QString& workingFolder);
    bool IsRunning() const { return m_process != nullptr; }
    // What the program returned; above 128, the signal that ended it and 128.
    int ErrorCode() const { return m_errorCode; }
    // In words; empty unless it could not be started.
    QString ErrorText() const { return m_errorText; }
    // Ends the program at once and without an event.
    void Kill();

    // What has come since the last call.
    QByteArray ReadOutput();
    QByteArray ReadMessages();

    std::function<void()> DataAvailable;
    std::function<void()> Completed;

private:
    template <typename Signal>
    void onSignal(Signal signal, void (Shell::*handler)());
    void onData() { DataAvailable(); }
    void onFinished();
    void onError();
    void complete(int errorCode);

    std::unique_ptr<QProcess> m_process;
    // Signals of the process arrive here, from the event loop: the process may go in any of them. Those that
    // are still on their way then belong to an earlier run.
    QObject m_inbox;
    int m_run = 0;
    int m_errorCode = 0;
    QString m_errorText;
};
