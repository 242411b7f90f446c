#include "QuitSignals.h"

#include <QSocketNotifier>

#ifdef Q_OS_UNIX

#include <fcntl.h>
#include <unistd.h>
#include <array>
#include <csignal>

namespace {

constexpr std::array Signals{SIGTERM, SIGINT, SIGHUP};

// A handler may do little more than write: the event loop reads at the other end.
std::array<int, 2> pipeEnds{-1, -1};
std::array<struct sigaction, Signals.size()> handlersBefore;

void tellLoop(int /*signal*/) {
    const char byte = 0;
    // A full pipe has told it already.
    [[maybe_unused]] const auto written = ::write(pipeEnds[1], &byte, 1);
}

void installHandlers() {
    struct sigaction action{};
    action.sa_handler = tellLoop;
    action.sa_flags = SA_RESTART;
    for (std::size_t i = 0; i < Signals.size(); ++i)
        ::sigaction(Signals[i], &action, &handlersBefore[i]);
}

void drain() {
    std::array<char, 64> bytes;
    while (::read(pipeEnds[0], bytes.data(), bytes.size()) > 0) {
    }
}

}  // namespace

QuitSignals::QuitSignals(std::function<void()> onQuit) {
    if (::pipe(pipeEnds.data()) != 0)
        return;
    for (const int end : pipeEnds) {
        ::fcntl(end, F_SETFL, O_NONBLOCK);
        ::fcntl(end, F_SETFD, FD_CLOEXEC);
    }
    m_notifier = std::make_unique<QSocketNotifier>(pipeEnds[0], QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(),
                     [quit = std::move(onQuit)] {
                         drain();
                         quit();
                     });
    installHandlers();
}

QuitSignals::~QuitSignals() {
    if (!m_notifier)
        return;
    for (std::size_t i = 0; i < Signals.size(); ++i)
        ::sigaction(Signals[i], &handlersBefore[i], nullptr);
    m_notifier.reset();
    for (int& end : pipeEnds)
        ::close(std::exchange(end, -1));
}

#else

QuitSignals::QuitSignals(std::function<void()>) {}
QuitSignals::~QuitSignals() = default;

#endif
