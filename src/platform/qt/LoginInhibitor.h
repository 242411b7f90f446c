// Keeps a Linux system awake through its login manager.
#pragma once

#include <QDBusUnixFileDescriptor>

#include "SleepInhibitor.h"

// Holds the login manager's lock, which it lets go by itself should the program die.
class LoginInhibitor final : public SleepInhibitor {
public:
    void inhibit(bool isInhibited) override;

private:
    QDBusUnixFileDescriptor m_lock;
};
