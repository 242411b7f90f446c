// A target's judgement: what does not hold ends the program, which is what the fuzzer looks for.
#pragma once

#include <cstdlib>

inline void require(bool holds) {
    if (!holds)
        std::abort();
}
