#include "ModemLines.h"

#include <linux/serial.h>
#include <sys/syscall.h>
#include <unistd.h>
#include <cerrno>
#include <cstdarg>

ModemLines modemLines;

namespace {

int setLines(int state) {
    if (modemLines.refused) {
        errno = EIO;
        return -1;
    }
    if ((state & ~modemLines.state & (TIOCM_DTR | TIOCM_RTS)) != 0)
        ++modemLines.timesRaised;
    modemLines.state = state;
    return 0;
}

}  // namespace

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
            *lineBits = modemLines.state;
            return 0;
        case TIOCMSET:
            return setLines(*lineBits);
        case TIOCMBIS:
            return setLines(modemLines.state | *lineBits);
        case TIOCMBIC:
            return setLines(modemLines.state & ~*lineBits);
        case TIOCOUTQ:
            if (modemLines.heldByDriver == 0)
                break;
            *lineBits = modemLines.heldByDriver;
            return 0;
        case TIOCSERGETLSR:
            if (!modemLines.knowsTransmitter)
                break;
            *lineBits = TIOCSER_TEMT;
            return 0;
        case TIOCGSERIAL:
            *static_cast<serial_struct*>(argument) = {};
            return 0;
        case TIOCSSERIAL:
            modemLines.isLowLatency = (static_cast<serial_struct*>(argument)->flags & ASYNC_LOW_LATENCY) != 0;
            return 0;
        default:
            break;
    }
    return static_cast<int>(::syscall(SYS_ioctl, descriptor, request, argument));
}
