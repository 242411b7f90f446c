// What is checked of every step table while it is compiled.
#pragma once

#include <algorithm>

#include "FTPPlaceholders.h"
#include "FTPSteps.h"

namespace FTPSteps {

constexpr char16_t lowered(char16_t c) {
    return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c - u'A' + u'a') : c;
}

// Step names are compared without letter case, as FTPEngine does.
constexpr bool isSameStep(FTPText a, FTPText b) {
    return std::ranges::equal(a, b, {}, lowered, lowered);
}

constexpr bool isPlaceholder(FTPText name) {
    return std::ranges::any_of(FTPPlaceholders,
                               [&](const FTPPlaceholder& known) { return known.name == name; });
}

constexpr bool namesPlaceholders(FTPText text) {
    while (text.find(u'{') != FTPText::npos) {
        text.remove_prefix(text.find(u'{') + 1);
        const auto end = text.find(u'}');
        if (end == FTPText::npos || !isPlaceholder(text.substr(0, end)))
            return false;
    }
    return true;
}

// Whether every name in braces is known.
template <std::size_t N>
constexpr bool namesPlaceholders(const Rows<N>& rows) {
    return std::ranges::all_of(rows, [](const FTPStepRow& row) {
        return namesPlaceholders(row.command) && namesPlaceholders(row.status);
    });
}

template <std::size_t N>
constexpr bool leadsTo(const Rows<N>& rows, FTPText step) {
    return std::ranges::any_of(rows, [&](const FTPStepRow& row) { return isSameStep(row.next, step); });
}

template <std::size_t N>
constexpr bool hasStep(const Rows<N>& rows, FTPText step) {
    return std::ranges::any_of(rows, [&](const FTPStepRow& row) { return isSameStep(row.step, step); });
}

// Whether every row leads to a step that the table has.
template <std::size_t N>
constexpr bool leadsToItsOwnSteps(const Rows<N>& rows) {
    return std::ranges::all_of(
        rows, [&](const FTPStepRow& row) { return row.next.empty() || hasStep(rows, row.next); });
}

// Whether the first row takes whatever would fit the second.
constexpr bool hides(const FTPStepRow& first, const FTPStepRow& second) {
    if (!isSameStep(first.step, second.step) || first.test || first.outcome == FTPOutcome::NextRow)
        return false;
    const FTPCodes& codes = second.codes;
    const bool isEachTaken =
        std::ranges::all_of(codes.codes, [&](int code) { return code == 0 || first.codes.accepts(code); });
    return first.codes.isAny || (first.codes.isAnySuccess && codes.isAnySuccess) ||
           (!codes.isAny && !codes.isAnySuccess && isEachTaken);
}

// Whether every row can be reached: its step is the first row's, which an operation begins with, or one
// that a row leads to, and no row before it takes all its replies.
template <std::size_t N>
constexpr bool reachesEveryRow(const Rows<N>& rows) {
    for (std::size_t i = 0; i < N; ++i) {
        if (!isSameStep(rows[i].step, rows[0].step) && !leadsTo(rows, rows[i].step))
            return false;
        for (std::size_t before = 0; before < i; ++before)
            if (hides(rows[before], rows[i]))
                return false;
    }
    return true;
}

template <FTPGate Gate, const auto& TableRows>
consteval FTPStepTable checkedTable(bool ignoresUnknownStep = false) {
    static_assert(namesPlaceholders(TableRows), "a row names a value in braces that there is not");
    static_assert(leadsToItsOwnSteps(TableRows), "a row leads to a step that the table does not have");
    static_assert(reachesEveryRow(TableRows), "no reply can reach one of the rows");
    return {Gate, TableRows, ignoresUnknownStep};
}

}  // namespace FTPSteps
