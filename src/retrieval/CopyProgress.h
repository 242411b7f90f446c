// How much of a file has come, below the tabs.
#pragma once

#include <QString>

#include "Globals.h"

// Painted a few times a second at most, however often it is told. Cleared with the object.
class CopyProgress {
public:
    CopyProgress(Clock& clock, Globals& globals) : m_clock(clock), m_globals(globals) {}
    CopyProgress(const CopyProgress&) = delete;
    CopyProgress& operator=(const CopyProgress&) = delete;
    ~CopyProgress() { clear(); }

    // `done`: "12 KB of 301 KB", "37 %".
    void show(const QString& name, const QString& done);
    void clear();

private:
    Clock& m_clock;
    Globals& m_globals;
    bool m_isShown = false;
    Clock::Microseconds m_shownAt{0};
};
