// One named style of an RTF document: control words to replay.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <QByteArray>

#include "RtfStream.h"
#include "Task.h"

class RtfParser;

struct RtfCommand {
    std::string word;
    std::int32_t parameter;
};

struct RtfStylesheet {
    static constexpr std::int32_t None = 222;
    // Later commands of a longer style are dropped.
    static constexpr std::size_t MostCommands = 1 << 20;

    // Reads the style behind its "{", up to its "}".
    Task<> Parse(RtfStream& stream);
    // Replays the commands.
    Task<> Apply(RtfParser& parser) const;

    // A "\snext" behind the "\sbasedon" replaces the base: the order in the file decides.
    std::int32_t sbasedon = None;
    std::vector<RtfCommand> commands;
    std::int32_t id = None;
    QByteArray label;

private:
    void keep(const std::string& word, std::int32_t parameter);
};
