#include "Shell.h"

#ifdef Q_OS_UNIX
#include <csignal>

#include <unistd.h>
#endif

namespace {

// A program that was killed is gone within milliseconds.
constexpr int KillLimit = 2000;
constexpr int SignalBase = 128;

// With whatever it has started itself.
void killAll(QProcess& process) {
#ifdef Q_OS_UNIX
    if (process.processId() > 0)
        ::kill(-static_cast<pid_t>(process.processId()), SIGKILL);
#endif
    process.kill();
}

}  // namespace

void Shell::Execute(const QString& program, const QStringList& arguments, const QString& workingFolder) {
    Kill();
    m_errorText.clear();
    m_process = std::make_unique<QProcess>();
    QProcess& process = *m_process;
    // It must not wait for somebody to type a password.
    process.setStandardInputFile(QProcess::nullDevice());
    process.setWorkingDirectory(workingFolder);
#ifdef Q_OS_UNIX
    process.setChildProcessModifier([] { ::setpgid(0, 0); });
#endif
    onSignal(&QProcess::readyReadStandardOutput, &Shell::onData);
    onSignal(&QProcess::readyReadStandardError, &Shell::onData);
    onSignal(&QProcess::finished, &Shell::onFinished);
    onSignal(&QProcess::errorOccurred, &Shell::onError);
    process.start(program, arguments);
}

template <typename Signal>
void Shell::onSignal(Signal signal, void (Shell::*handler)()) {
    const auto ofThisRun = [this, handler, run = m_run] {
        if (run == m_run)
            (this->*handler)();
    };
    QObject::connect(m_process.get(), signal, &m_inbox, ofThisRun, Qt::QueuedConnection);
}

void Shell::Kill() {
    ++m_run;
    if (!m_process)
        return;
    killAll(*m_process);
    m_process->waitForFinished(KillLimit);
    m_process.reset();
}

QByteArray Shell::ReadOutput() {
    return m_process ? m_process->readAllStandardOutput() : QByteArray();
}

QByteArray Shell::ReadMessages() {
    return m_process ? m_process->readAllStandardError() : QByteArray();
}

void Shell::onFinished() {
    const bool isKilled = m_process->exitStatus() == QProcess::CrashExit;
    complete(isKilled ? SignalBase + m_process->exitCode() : m_process->exitCode());
}

void Shell::onError() {
    if (m_process->error() != QProcess::FailedToStart)
        return;
    m_errorText = m_process->errorString();
    complete(NotStarted);
}

void Shell::complete(int errorCode) {
    m_errorCode = errorCode;
    DataAvailable();
    ++m_run;
    m_process.reset();
    Completed();
}
