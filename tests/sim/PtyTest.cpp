// The simulator program as other programs see it: in real time, through a terminal device.

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>

#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

namespace {

constexpr int PatienceMilliseconds = 5000;

// A terminal device opened as a serial port.
class Terminal {
public:
    Terminal(const QString& path, speed_t speed)
        : m_descriptor(::open(QFile::encodeName(path).constData(), O_RDWR | O_NOCTTY)) {
        termios settings{};
        EXPECT_EQ(tcgetattr(m_descriptor, &settings), 0) << qPrintable(path);
        cfmakeraw(&settings);
        cfsetspeed(&settings, speed);
        EXPECT_EQ(tcsetattr(m_descriptor, TCSANOW, &settings), 0);
    }
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;
    ~Terminal() { ::close(m_descriptor); }

    void write(const QByteArray& bytes) {
        EXPECT_EQ(::write(m_descriptor, bytes.constData(), static_cast<std::size_t>(bytes.size())),
                  bytes.size());
    }
    // All that comes until `count` bytes are there or `milliseconds` are over.
    QByteArray read(qsizetype count, int milliseconds = PatienceMilliseconds) {
        QElapsedTimer timer;
        timer.start();
        QByteArray bytes;
        while (bytes.size() < count && timer.elapsed() < milliseconds) {
            pollfd ready{m_descriptor, POLLIN, 0};
            if (::poll(&ready, 1, milliseconds - static_cast<int>(timer.elapsed())) <= 0)
                continue;
            char byte = 0;
            if (::read(m_descriptor, &byte, 1) == 1)
                bytes += byte;
        }
        return bytes;
    }
    QByteArray ask(const QByteArray& question, qsizetype count) {
        write(question);
        return read(count);
    }
    int control(unsigned long request, int* value = nullptr) { return ::ioctl(m_descriptor, request, value); }

private:
    int m_descriptor;
};

class PtyTest : public testing::Test {
protected:
    void start(const QStringList& arguments) {
        m_program.start(QStringLiteral(VLX720_SIMULATOR), arguments);
        path = readLine();
        ASSERT_TRUE(QFile::exists(path)) << qPrintable(path);
    }
    ~PtyTest() override { stop(); }

    void stop() {
        if (m_program.state() == QProcess::NotRunning)
            return;
        m_program.terminate();
        EXPECT_TRUE(m_program.waitForFinished(PatienceMilliseconds));
    }
    QString readLine() {
        while (!m_program.canReadLine() && m_program.waitForReadyRead(PatienceMilliseconds)) {
        }
        return QString::fromLocal8Bit(m_program.readLine()).trimmed();
    }
    QString command(const QByteArray& line) {
        m_program.write(line + '\n');
        return readLine();
    }

    QString path;

private:
    QProcess m_program;
};

TEST_F(PtyTest, AnswersAtTheSpeedOfTheTerminal) {
    start({QStringLiteral("--speed"), QStringLiteral("9600"), QStringLiteral("--firmware-version"),
           QStringLiteral("07.42")});
    {
        Terminal wrong(path, B38400);
        wrong.write(";;");
        EXPECT_EQ(wrong.read(1, 200), "");
    }
    // The other side has closed the device; the next one opens it anew.
    Terminal right(path, B9600);
    EXPECT_EQ(right.ask(";", 0), "");
    EXPECT_EQ(right.ask("^RVM;", 10), "^RVM07.42;");
}

#ifdef TIOCGEXCL
TEST_F(PtyTest, DeviceIsFreeAgainAfterAProgramThatWasKilled) {
    start({});
    Terminal observer(path, B38400);
    // An exclusive open that nothing takes back but the close.
    ASSERT_EQ(Terminal(path, B38400).control(TIOCEXCL), 0);
    int isExclusive = 1;
    for (int i = 0; i < 100 && isExclusive != 0; ++i) {
        EXPECT_EQ(observer.control(TIOCGEXCL, &isExclusive), 0);
        observer.read(1, 20);
    }
    EXPECT_EQ(isExclusive, 0);
}
#endif

TEST_F(PtyTest, TakesTheTimeOfTheLine) {
    start({QStringLiteral("--speed"), QStringLiteral("4800")});
    Terminal terminal(path, B4800);
    QElapsedTimer timer;
    timer.start();
    // 20 bytes there, and the last answer of 7 back: 56 ms. A slow machine may take longer, none less.
    EXPECT_EQ(terminal.ask("^TM;^TM;^TM;^TM;^TM;", 35).size(), 35);
    EXPECT_GE(timer.nsecsElapsed(), 56'000'000);
}

TEST_F(PtyTest, IsControlledFromItsStandardInput) {
    start({QStringLiteral("--state"), QStringLiteral("waiting")});
    Terminal terminal(path, B38400);
    EXPECT_EQ(terminal.ask("^BN;", 4), "^BN;");
    EXPECT_EQ(command("power off"),
              QStringLiteral("off, 38400 bit/s, version 01.23, band 0, standby, fault 0"));
    terminal.write("^BN;");
    EXPECT_EQ(terminal.read(1, 200), "");
    command("power on");
}

TEST_F(PtyTest, LinksAndRecords) {
    const QTemporaryDir folder;
    const QString link = folder.filePath(QStringLiteral("the amplifier"));
    const QString record = folder.filePath(QStringLiteral("record.txt"));
    start({QStringLiteral("--link"), link, QStringLiteral("--record"), record});
    {
        Terminal terminal(link, B38400);
        EXPECT_EQ(terminal.ask("^TM;", 7), "^TM025;");
    }
    stop();
    EXPECT_FALSE(QFileInfo(link).isSymLink());
    QFile file(record);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray text = file.readAll();
    EXPECT_TRUE(text.contains(" open 38400 " + path.toLocal8Bit())) << text.constData();
    EXPECT_TRUE(text.contains(" in 5E544D3032353B  # ^TM025;")) << text.constData();
}

}  // namespace
