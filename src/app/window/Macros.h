// The fifteen macros of the command tester: a caption and a string that is sent as it stands.
#pragma once

#include <array>

#include <QString>

class REALEasyPrefs;

struct Macros {
    static constexpr int Count = 15;

    std::array<QString, Count> mCommandMacroButtonText;
    std::array<QString, Count> mCommandMacroCommandText;

    void load(const REALEasyPrefs& prefs);
    void save(REALEasyPrefs& prefs) const;
};
