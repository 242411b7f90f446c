// Keeps the system awake.
#pragma once

class SleepInhibitor {
public:
    SleepInhibitor() = default;
    SleepInhibitor(const SleepInhibitor&) = delete;
    SleepInhibitor& operator=(const SleepInhibitor&) = delete;
    virtual ~SleepInhibitor() = default;

    // Asks the system neither to sleep nor to shut down, or takes it back. Where nobody hears it, nothing
    // happens.
    virtual void inhibit(bool isInhibited) = 0;
};
