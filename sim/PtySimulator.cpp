#include "PtySimulator.h"

#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>

#include <QFile>
#include <QFileInfo>

#include <fcntl.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#ifdef Q_OS_LINUX
#include <sys/inotify.h>
#endif

namespace {

using Kind = TranscriptEvent::Kind;

struct TerminalSpeed {
    speed_t code;
    int bitsPerSecond;
};

constexpr std::array<TerminalSpeed, 8> TerminalSpeeds{{
    {B1200, 1200},
    {B2400, 2400},
    {B4800, 4800},
    {B9600, 9600},
    {B19200, 19200},
    {B38400, 38400},
    {B57600, 57600},
    {B115200, 115200},
}};

QString systemError(const QString& what) {
    return what + QStringLiteral(": ") + QString::fromLocal8Bit(std::strerror(errno));
}

// Every byte passes unchanged and none is echoed, until the other program sets the terminal up by itself.
bool makeRaw(int device) {
    termios settings{};
    if (tcgetattr(device, &settings) != 0)
        return false;
    cfmakeraw(&settings);
    cfsetspeed(&settings, B38400);
    return tcsetattr(device, TCSANOW, &settings) == 0;
}

}  // namespace

FileDescriptor::~FileDescriptor() {
    if (isValid())
        ::close(m_descriptor);
}

PtySimulator::PtySimulator(Clock& clock, Vlx720& amplifier)
    : m_clock(clock),
      m_amplifier(amplifier),
      m_line(clock, [this](const QByteArray& bytes, int bitsPerSecond) {
          m_amplifier.receive(bytes, bitsPerSecond);
      }) {
    m_amplifier.transmit = [this](const QByteArray& bytes, int bitsPerSecond) {
        writeDevice(bytes, bitsPerSecond);
    };
}

PtySimulator::~PtySimulator() {
    m_amplifier.transmit = nullptr;
    if (!m_link.isEmpty())
        QFile::remove(m_link);
}

QString PtySimulator::open() {
    m_master = FileDescriptor(posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK));
    if (!m_master.isValid() || grantpt(m_master.get()) != 0 || unlockpt(m_master.get()) != 0)
        return systemError(QStringLiteral("no pseudo-terminal"));
    m_path = QString::fromLocal8Bit(ptsname(m_master.get()));
    m_device = FileDescriptor(::open(QFile::encodeName(m_path).constData(), O_RDWR | O_NOCTTY));
    if (!m_device.isValid() || !makeRaw(m_device.get()))
        return systemError(m_path);
    m_notifier = std::make_unique<QSocketNotifier>(m_master.get(), QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(),
                     [this] { readDevice(); });
    watchForClose();
    return {};
}

// An exclusive open lasts until the last close of the device, and this side never closes it.
void PtySimulator::watchForClose() {
#ifdef Q_OS_LINUX
    m_closes = FileDescriptor(inotify_init1(IN_NONBLOCK | IN_CLOEXEC));
    if (!m_closes.isValid() ||
        inotify_add_watch(m_closes.get(), QFile::encodeName(m_path).constData(), IN_CLOSE) < 0)
        return;
    m_closeNotifier = std::make_unique<QSocketNotifier>(m_closes.get(), QSocketNotifier::Read);
    QObject::connect(m_closeNotifier.get(), &QSocketNotifier::activated, m_closeNotifier.get(), [this] {
        std::array<char, 4096> events{};
        if (::read(m_closes.get(), events.data(), events.size()) > 0)
            ::ioctl(m_device.get(), TIOCNXCL);
    });
#endif
}

QString PtySimulator::link(const QString& link) {
    if (QFileInfo(link).isSymLink())
        QFile::remove(link);
    QFile device(m_path);
    if (!device.link(link))
        return link + QStringLiteral(": ") + device.errorString();
    m_link = link;
    return {};
}

void PtySimulator::readDevice() {
    std::array<char, 4096> buffer{};
    const ssize_t count = ::read(m_master.get(), buffer.data(), buffer.size());
    if (count <= 0)
        return;
    const QByteArray bytes(buffer.data(), count);
    note(Kind::Out, bytes);
    m_line.sendMessages(bytes, deviceSpeed());
}

void PtySimulator::writeDevice(const QByteArray& bytes, int bitsPerSecond) {
    const int heardAt = deviceSpeed();
    const QByteArray heard =
        bitsPerSecond == heardAt ? bytes : heardAtWrongSpeed(bytes, bitsPerSecond, heardAt);
    note(Kind::In, heard);
    // Not all of it is taken when the buffer is full.
    [[maybe_unused]] const ssize_t taken =
        ::write(m_master.get(), heard.constData(), static_cast<std::size_t>(heard.size()));
}

int PtySimulator::deviceSpeed() const {
    termios settings{};
    tcgetattr(m_device.get(), &settings);
    const speed_t code = cfgetospeed(&settings);
    for (const TerminalSpeed& speed : TerminalSpeeds) {
        if (speed.code == code)
            return speed.bitsPerSecond;
    }
    return Vlx720::LoaderSpeed;
}

void PtySimulator::note(TranscriptEvent::Kind kind, const QByteArray& bytes) {
    if (!m_record)
        return;
    const int speed = deviceSpeed();
    if (m_recordedSpeed == 0)
        m_record->write({.kind = Kind::Open, .value = speed, .text = m_path});
    else if (m_recordedSpeed != speed)
        m_record->write({.kind = Kind::Speed, .value = speed});
    m_recordedSpeed = speed;
    m_record->write({.kind = kind, .bytes = bytes});
}
