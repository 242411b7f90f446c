// Who reads the serial line.
#pragma once

#include <functional>
#include <utility>

// A flow that writes commands and reads their answers itself takes the line for its span: the status poll
// and the data handler keep out, and the tabs cannot be changed under it. Spans may nest.
class LineOwner {
public:
    class [[nodiscard]] Guard {
    public:
        explicit Guard(LineOwner& line) : m_line(&line) { line.count(+1); }
        Guard(Guard&& other) noexcept : m_line(std::exchange(other.m_line, nullptr)) {}
        Guard(const Guard&) = delete;
        Guard& operator=(const Guard&) = delete;
        Guard& operator=(Guard&&) = delete;
        ~Guard() {
            if (m_line)
                m_line->count(-1);
        }

    private:
        LineOwner* m_line;
    };

    LineOwner() = default;
    LineOwner(const LineOwner&) = delete;
    LineOwner& operator=(const LineOwner&) = delete;

    // Held until the guard is destroyed, also when the flow that holds it is cancelled.
    Guard take() { return Guard(*this); }
    bool isTaken() const { return m_takers > 0; }

    // Called when the line becomes taken or free.
    std::function<void(bool isTaken)> Changed;

private:
    void count(int step) {
        const bool wasTaken = isTaken();
        m_takers += step;
        if (Changed && wasTaken != isTaken())
            Changed(isTaken());
    }

    int m_takers = 0;
};
