// The rows that the step tables are made of. A table is data: FTPEngine walks it.
#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <string_view>

class FTPEngine;

using FTPText = std::u16string_view;

namespace FTPSteps {

// As the command of a row: the client makes up the reply 200 itself and goes on at once.
inline constexpr FTPText NOOP = u"NOOP";
// As the command of a row: a real NOOP, answered by the server.
inline constexpr FTPText FORCENOOP = u"FORCENOOP";

}  // namespace FTPSteps

// The reply codes that a row accepts.
struct FTPCodes {
    std::array<int, 3> codes{};
    bool isAny = false;
    bool isAnySuccess = false;

    constexpr bool accepts(int code) const {
        if (isAny || (isAnySuccess && firstDigit(code) == 2))
            return true;
        for (const int accepted : codes)
            if (accepted != 0 && accepted == code)
                return true;
        return false;
    }

private:
    static constexpr int firstDigit(int code) {
        while (code >= 10)
            code /= 10;
        return code;
    }
};

// What a row does after its action.
enum class FTPOutcome {
    Stay,          // waits for the next reply in the same step
    NextRow,       // the action prepared the decision between the rows below
    Go,            // NextFTPStep
    GoWhenSecure,  // NextFTPStep as soon as the control connection is encrypted
    AwaitData,     // the same reply once more when the data connection has ended
    Done,          // timer off, success reported, the connection stays up
    Report,        // success reported, the timer goes on
    End,           // EndFTPSession with the success
    EndQuietly     // EndFTPSession without a word
};

// One row: in this step, on one of these codes, and if the test holds, do the action, then the outcome. Of
// several rows for one step the first that fits is taken. Commands and texts may hold names in braces, which
// FTPEngine replaces by the values of the session; FTPPlaceholders.h has them all. The success that is
// reported is the operation's; see FTPOperations.h.
struct FTPStepRow {
    using Test = bool (*)(const FTPEngine&);
    // Gives whether the operation goes on: an action that ended it gives false.
    using Action = bool (*)(FTPEngine&);

    FTPText step{};
    FTPCodes codes{};
    Test test = nullptr;
    Action action = nullptr;
    FTPOutcome outcome = FTPOutcome::Stay;
    FTPText next{};
    FTPText command{};
    FTPText status{};
    Action after = nullptr;

    constexpr FTPStepRow when(Test condition) const {
        FTPStepRow row = *this;
        row.test = condition;
        return row;
    }
    constexpr FTPStepRow run(Action work) const {
        FTPStepRow row = *this;
        row.action = work;
        return row;
    }
    // Work that follows the command.
    constexpr FTPStepRow then(Action work) const {
        FTPStepRow row = *this;
        row.after = work;
        return row;
    }
    constexpr FTPStepRow go(FTPText nextStep, FTPText text, FTPText statusText = {}) const {
        return ending(FTPOutcome::Go, nextStep, text, statusText);
    }
    constexpr FTPStepRow goWhenSecure(FTPText nextStep, FTPText text, FTPText statusText) const {
        return ending(FTPOutcome::GoWhenSecure, nextStep, text, statusText);
    }
    // With the command FORCENOOP the server is asked meanwhile.
    constexpr FTPStepRow awaitData(FTPText text = {}, FTPText statusText = {}) const {
        return ending(FTPOutcome::AwaitData, {}, text, statusText);
    }
    constexpr FTPStepRow done() const { return ending(FTPOutcome::Done); }
    constexpr FTPStepRow report() const { return ending(FTPOutcome::Report); }
    constexpr FTPStepRow end() const { return ending(FTPOutcome::End); }
    constexpr FTPStepRow endQuietly() const { return ending(FTPOutcome::EndQuietly); }
    constexpr FTPStepRow nextRow() const { return ending(FTPOutcome::NextRow); }

private:
    constexpr FTPStepRow ending(FTPOutcome how, FTPText target = {}, FTPText text = {},
                                FTPText statusText = {}) const {
        FTPStepRow row = *this;
        row.outcome = how;
        row.next = target;
        row.command = text;
        row.status = statusText;
        return row;
    }
};

// Which lines a table takes for a final reply. Neither takes a line that begins with a blank.
enum class FTPGate {
    A,  // the fourth character is a blank
    B   // the fourth character is not "-": a line of three characters passes too
};

struct FTPStepTable {
    FTPGate gate;
    std::span<const FTPStepRow> rows;
    // The logon alone passes over a reply that comes in a step which it does not know.
    bool ignoresUnknownStep = false;
};

namespace FTPSteps {

constexpr FTPStepRow on(FTPText step, int code, int second = 0, int third = 0) {
    return {.step = step, .codes = {.codes = {code, second, third}}};
}

constexpr FTPStepRow onAny(FTPText step) {
    return {.step = step, .codes = {.isAny = true}};
}

constexpr FTPStepRow onAnySuccess(FTPText step) {
    return {.step = step, .codes = {.isAnySuccess = true}};
}

template <std::size_t N>
using Rows = std::array<FTPStepRow, N>;

template <std::size_t N>
constexpr Rows<N> part(const Rows<N>& rows) {
    return rows;
}

constexpr Rows<1> part(const FTPStepRow& row) {
    return {row};
}

template <std::size_t N, std::size_t M>
constexpr Rows<N + M> joined(const Rows<N>& head, const Rows<M>& tail) {
    Rows<N + M> result{};
    for (std::size_t i = 0; i < N; ++i)
        result[i] = head[i];
    for (std::size_t i = 0; i < M; ++i)
        result[N + i] = tail[i];
    return result;
}

// Puts single rows and shared pieces, in this order, into one array.
template <typename Head>
constexpr auto rows(const Head& head) {
    return part(head);
}

template <typename Head, typename... Tail>
constexpr auto rows(const Head& head, const Tail&... tail) {
    return joined(part(head), rows(tail...));
}

}  // namespace FTPSteps
