// Reads a document in Rich Text Format and feeds it to a target.
#pragma once

#include <deque>
#include <functional>
#include <optional>
#include <unordered_map>
#include <vector>

#include "RtfColor.h"
#include "RtfFont.h"
#include "RtfState.h"
#include "RtfStylesheet.h"
#include "RtfTarget.h"

// Carries text, character styles, fonts, colours, alignment and style sheets, and passes over the rest:
// there is no syntax error. Nothing that a document names is ever fetched or run. One parser serves one
// document.
//
// The target hears of a look only behind a control word, so text behind a "}" keeps the look of the group
// that was closed until the next word. A group that is skipped or read as a table leaves its entry on the
// stack: its "{" has pushed one, and its "}" is read elsewhere.
class RtfParser {
public:
    enum class Ending {
        Whole,
        Cancelled,   // by the user: the target has been told of the end
        Refused,     // by the target, before the first byte
        TooManyEnds  // stopped at a "}" without a "{": the target has not been told of an end
    };

    // Groups deeper than this are read without a look of their own.
    static constexpr std::size_t DeepestGroup = 10'000;
    // How many replayed control words each byte of a document may cost. Ordinary ones stay below 10; beyond,
    // styles are left out, so that a chain of thousands of them cannot be replayed thousands of times.
    static constexpr std::int64_t ReplayPerByte = 32;

    using CancelKey = std::function<bool()>;

    // `UserCancelled` tells whether the user has asked to end the read.
    RtfParser(Clock& clock, const InstalledFonts& installed, CancelKey UserCancelled = {});

    void SetProgressBar(ProgressBar* bar) { progress = bar; }

    // Both must outlive the task. Throws NilObjectError for a colour without a colour table.
    Task<Ending> Parse(RtfStream& stream, RtfTarget& target);
    Task<> DoCommand(std::string word, std::int32_t parameter);
    void Write(QByteArrayView text);
    // Writes a dump of the tables.
    void Test();

    // What the control words do; see RtfWords.
    RtfState& top() { return state.back(); }
    Task<> ParseFontTable();
    Task<> ParseColorTable();
    Task<> ParseStylesheet();
    Task<> ParseInfo() { return SkipGroup(); }
    Task<> SkipGroup();
    // Applies the style of that number, after the styles that it is based on.
    Task<> ApplyStyle(std::int32_t id);
    void SetFont(std::int32_t id);
    RtfRgb color(std::int32_t index) const;
    // What follows "\u": a control word is dropped, a plain character is text.
    void SkipFallback();
    QDateTime now() const { return m_clock.wallClock(); }

    std::int32_t rtfversion = 0;
    std::int32_t defaultfontid = 0;

private:
    void openGroup();
    bool closeGroup();
    Task<> readCommand();
    void showProgress();
    void keepStyle(RtfStylesheet style);
    std::vector<const RtfStylesheet*> styleChain(std::int32_t id);

    Clock& m_clock;
    const InstalledFonts& m_installed;
    CancelKey UserCancelled;
    QByteArray encoding = QByteArrayLiteral("ansi");
    std::vector<RtfState> state{RtfState{}};  // the group stack; its top is the last
    std::int64_t m_groupsWithoutLook = 0;
    RtfStream* input = nullptr;
    RtfTarget* currenttarget = nullptr;
    // A deque, so that a style may be replayed while its commands read further styles.
    std::deque<RtfStylesheet> stylesheets;
    // The first style of each number.
    std::unordered_map<std::int32_t, const RtfStylesheet*> m_stylesByNumber;
    std::size_t m_commandsOfStyles = 0;
    std::int64_t m_replayed = 0;
    std::optional<RtfColor> colortable;
    std::optional<RtfFont> fonttable;
    ProgressBar* progress = nullptr;
};
