// The control words that the reader knows.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "Task.h"

class RtfParser;

// At most one of the two is there. A word with neither does nothing: it is known, and that is all.
struct RtfWord {
    std::string_view name;
    void (*act)(RtfParser& parser, std::int32_t parameter) = nullptr;
    // Reads on in the file, or replays other words.
    Task<> (*read)(RtfParser& parser, std::int32_t parameter) = nullptr;
};

// Without letter case; null for an unknown word.
const RtfWord* findRtfWord(std::string_view word);
std::span<const RtfWord> allRtfWords();
