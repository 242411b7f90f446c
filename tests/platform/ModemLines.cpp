#include "ModemLines.h"

#include <linux/serial.h>
#include <sys/ioctl.h>
#include <sys/syscall.h>
#include <unistd.h>
#include <cerrno>
#include <cstdarg>

namespace {

constexpr int Watched = TIOCM_DTR | TIOCM_RTS;

struct Lines {
    int state = Watched;
    int raised = 0;
    bool refused = false;
    int held = 0;
    bool transmitterKnown = false;
    unsigned int serialFlags = 0;
} lines;

int setLines(int state) {
    if (lines.refused) {
        errno = EIO;
        return -1;
    }
    if ((state & ~lines.state & Watched) != 0)
        ++lines.raised;
    lines.state = state;
    return 0;
}

}  // namespace

void ModemLines::opened() {
    lines = {};
}

bool ModemLines::isDtrRaised() {
    return (lines.state & TIOCM_DTR) != 0;
}

bool ModemLines::isRtsRaised() {
    return (lines.state & TIOCM_RTS) != 0;
}

int ModemLines::timesRaised() {
    return lines.raised;
}

void ModemLines::refuse() {
    lines.refused = true;
}

void ModemLines::setHeldByDriver(int count) {
    lines.held = count;
}

void ModemLines::setTransmitterKnown(bool isKnown) {
    lines.transmitterKnown = isKnown;
}

bool ModemLines::isLowLatency() {
    return (lines.serialFlags & ASYNC_LOW_LATENCY) != 0;
}

// Stands before the system's own in this program and its libraries.
// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name): the system names them with underscores
extern "C" int ioctl(int descriptor, unsigned long request, ...) noexcept {
    std::va_list arguments;
    va_start(arguments, request);
    void* argument = va_arg(arguments, void*);
    va_end(arguments);
    int* lineBits = static_cast<int*>(argument);
    switch (request) {
        case TIOCMGET:
            *lineBits = lines.state;
            return 0;
        case TIOCMSET:
            return setLines(*lineBits);
        case TIOCMBIS:
            return setLines(lines.state | *lineBits);
        case TIOCMBIC:
            return setLines(lines.state & ~*lineBits);
        case TIOCOUTQ:
            if (lines.held == 0)
                break;
            *lineBits = lines.held;
            return 0;
        case TIOCSERGETLSR:
            if (!lines.transmitterKnown)
                break;
            *lineBits = TIOCSER_TEMT;
            return 0;
        case TIOCGSERIAL:
            *static_cast<serial_struct*>(argument) = {};
            return 0;
        case TIOCSSERIAL:
            lines.serialFlags = static_cast<unsigned int>(static_cast<serial_struct*>(argument)->flags);
            return 0;
        default:
            break;
    }
    return static_cast<int>(::syscall(SYS_ioctl, descriptor, request, argument));
}
