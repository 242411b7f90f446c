// Notices that the amplifier no longer answers the poll: values that nobody renews must not look live.
#pragma once

#include <chrono>
#include <optional>

#include "Globals.h"
#include "OperatePanel.h"

class AnswerWatch {
public:
    // Polls in a row without an answer, from which on the values count as old.
    static constexpr int PatienceInPolls = 3;

    AnswerWatch(const Clock& clock, Globals& globals, OperatePanel& panel)
        : m_clock(clock), m_globals(globals), m_panel(panel) {}

    // A poll goes out.
    void asked();
    // An answer has come.
    void came();
    // Before the next poll: dims the panel, and tells for how long, when too many brought nothing.
    void look();
    // For how long there was no answer, once that counts.
    std::optional<std::chrono::seconds> silence() const;
    // The port has gone.
    void lost();

private:
    void dim(const QString& reason);

    const Clock& m_clock;
    Globals& m_globals;
    OperatePanel& m_panel;
    int m_unanswered = 0;
    Clock::Microseconds m_since{0};
    bool m_isDim = false;
};
