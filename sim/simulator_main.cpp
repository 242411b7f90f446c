// A simulated VLX720 on a pseudo-terminal. The first line on the standard output is the path of the device.

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdio>

#include <unistd.h>

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFile>
#include <QSocketNotifier>
#include <QTextStream>

#include "Console.h"
#include "PtySimulator.h"
#include "SerialPort.h"
#include "SystemClock.h"

namespace {

struct NamedState {
    QLatin1String name;
    Vlx720::State state;
};

constexpr std::array<NamedState, 3> States{{
    {QLatin1String("main"), Vlx720::State::Main},
    {QLatin1String("waiting"), Vlx720::State::Waiting},
    {QLatin1String("off"), Vlx720::State::Off},
}};

struct Options {
    Vlx720::Settings amplifier;
    QString recordFile;
    QString link;
};

int fail(const QString& message) {
    QTextStream(stderr) << "vlx720-simulator: " << message << '\n';
    return 1;
}

// Ends the program when it asked for help or cannot be understood.
Options readCommandLine(const QCoreApplication& application) {
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral(
        "A simulated VLX720 RF power amplifier on a pseudo-terminal.\n"
        "Prints the path of the device, then takes commands on the standard input: try \"help\"."));
    parser.addHelpOption();
    parser.addOptions({
        {QStringLiteral("speed"), QStringLiteral("Bit rate of the main firmware."), QStringLiteral("bit/s"),
         QStringLiteral("38400")},
        {QStringLiteral("state"), QStringLiteral("State at first: main, waiting or off."),
         QStringLiteral("state"), QStringLiteral("main")},
        {QStringLiteral("firmware-version"), QStringLiteral("Version of the firmware."),
         QStringLiteral("NN.NN"), QStringLiteral("01.23")},
        {QStringLiteral("block-time"), QStringLiteral("Time to write a firmware block."),
         QStringLiteral("milliseconds"), QStringLiteral("5")},
        {QStringLiteral("record"), QStringLiteral("Write a transcript of the line."), QStringLiteral("file")},
        {QStringLiteral("link"), QStringLiteral("Make a symbolic link to the device."),
         QStringLiteral("path")},
    });
    parser.process(application);

    Options options;
    options.amplifier.speed = parser.value(QStringLiteral("speed")).toInt();
    options.amplifier.firmwareVersion = parser.value(QStringLiteral("firmware-version")).toLatin1();
    options.amplifier.loader.blockWrite =
        Clock::Milliseconds(parser.value(QStringLiteral("block-time")).toUInt());
    options.recordFile = parser.value(QStringLiteral("record"));
    options.link = parser.value(QStringLiteral("link"));
    const QString stateName = parser.value(QStringLiteral("state"));
    const auto* state = std::find_if(States.begin(), States.end(),
                                     [&stateName](const NamedState& s) { return stateName == s.name; });
    if (state == States.end() || Baud::codeOf(options.amplifier.speed) == 0)
        parser.showHelp(1);
    options.amplifier.state = state->state;
    return options;
}

// Runs the commands that stand on the standard input, line by line, until it ends.
class StandardInput {
public:
    explicit StandardInput(Vlx720& amplifier)
        : m_amplifier(amplifier), m_notifier(STDIN_FILENO, QSocketNotifier::Read) {
        QObject::connect(&m_notifier, &QSocketNotifier::activated, &m_notifier, [this] { take(); });
    }

private:
    void take() {
        std::array<char, 1024> buffer{};
        const ssize_t count = ::read(STDIN_FILENO, buffer.data(), buffer.size());
        if (count <= 0) {
            m_notifier.setEnabled(false);
            return;
        }
        m_text.append(buffer.data(), count);
        QTextStream out(stdout);
        for (qsizetype end = m_text.indexOf('\n'); end >= 0; end = m_text.indexOf('\n')) {
            out << runConsoleCommand(m_amplifier, QString::fromLocal8Bit(m_text.left(end)).trimmed()) << '\n';
            m_text.remove(0, end + 1);
        }
    }

    Vlx720& m_amplifier;
    QSocketNotifier m_notifier;
    QByteArray m_text;
};

// A signal ends the event loop, so that the link to the device is taken away. A handler can reach nothing but
// static data, and may do little more than write to a pipe.
class QuitOnSignal {
public:
    QuitOnSignal() {
        if (::pipe(s_pipe.data()) != 0)
            return;
        m_notifier = std::make_unique<QSocketNotifier>(s_pipe[0], QSocketNotifier::Read);
        QObject::connect(m_notifier.get(), &QSocketNotifier::activated, QCoreApplication::instance(),
                         &QCoreApplication::quit);
        for (const int signal : {SIGINT, SIGTERM, SIGHUP})
            std::signal(signal, onSignal);
    }

private:
    static void onSignal(int /*signal*/) {
        [[maybe_unused]] const ssize_t written = ::write(s_pipe[1], "", 1);
    }

    static inline std::array<int, 2> s_pipe{};
    std::unique_ptr<QSocketNotifier> m_notifier;
};

}  // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const Options options = readCommandLine(application);

    SystemClock clock;
    Vlx720 amplifier(clock, options.amplifier);
    QFile record(options.recordFile);
    PtySimulator simulator(clock, amplifier);
    QString error = simulator.open();
    if (error.isEmpty() && !options.link.isEmpty())
        error = simulator.link(options.link);
    if (!error.isEmpty())
        return fail(error);
    if (!options.recordFile.isEmpty()) {
        // Unbuffered: the program ends by being killed.
        if (!record.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
            return fail(options.recordFile + QStringLiteral(": ") + record.errorString());
        simulator.record(record);
    }
    QTextStream(stdout) << simulator.path() << '\n';
    std::fflush(stdout);
    const StandardInput input(amplifier);
    const QuitOnSignal quitOnSignal;
    return QCoreApplication::exec();
}
