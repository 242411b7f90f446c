#include "RtfStylesheet.h"

#include "RtfModule.h"
#include "RtfParser.h"

Task<> RtfStylesheet::Parse(RtfStream& stream) {
    std::string word;
    std::int32_t parameter = 1;
    for (std::int64_t depth = 1; depth > 0 && !stream.isAtEnd();) {
        const char c = stream.read();
        if (c == '{') {
            ++depth;
        } else if (c == '}') {
            --depth;
        } else if (c == '\\') {
            RtfParseCommand(stream, word, parameter);
            if (word == "*") {
                // It stands just behind a "{": the end of that group is read with it.
                co_await RtfIgnoreGroup(stream);
                --depth;
            } else {
                keep(word, parameter);
            }
        } else if (c != ' ' && !RtfIsLineEnd(c)) {
            stream.stepBack();
            label = RtfParseLabel(stream);
        }
        co_await stream.breathe();
    }
}

void RtfStylesheet::keep(const std::string& word, std::int32_t parameter) {
    if (RtfIsWord(word, "s"))
        id = parameter;
    else if (RtfIsWord(word, "sbasedon") || RtfIsWord(word, "snext"))
        sbasedon = parameter;
    else if (commands.size() < MostCommands)
        commands.push_back({word, parameter});
}

Task<> RtfStylesheet::Apply(RtfParser& parser) const {
    for (const RtfCommand& command : commands)
        co_await parser.DoCommand(command.word, command.parameter);
}
