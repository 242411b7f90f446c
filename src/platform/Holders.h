// Something that flows hold for a span, and that others ask about.
#pragma once

#include <functional>
#include <utility>

// Spans may nest and overlap. `Purpose` keeps holders of different things apart.
template <typename Purpose>
class Holders {
public:
    class [[nodiscard]] Guard {
    public:
        explicit Guard(Holders& holders) : m_holders(&holders) { holders.count(+1); }
        Guard(Guard&& other) noexcept : m_holders(std::exchange(other.m_holders, nullptr)) {}
        Guard(const Guard&) = delete;
        Guard& operator=(const Guard&) = delete;
        Guard& operator=(Guard&&) = delete;
        ~Guard() {
            if (m_holders)
                m_holders->count(-1);
        }

    private:
        Holders* m_holders;
    };

    Holders() = default;
    Holders(const Holders&) = delete;
    Holders& operator=(const Holders&) = delete;

    // Held until the guard is destroyed, also when the flow that holds it is cancelled.
    Guard take() { return Guard(*this); }
    bool isTaken() const { return m_count > 0; }

    // Called when the first guard is taken and when the last one has gone.
    std::function<void(bool isTaken)> Changed;

private:
    void count(int step) {
        const bool wasTaken = isTaken();
        m_count += step;
        if (Changed && wasTaken != isTaken())
            Changed(isTaken());
    }

    int m_count = 0;
};
