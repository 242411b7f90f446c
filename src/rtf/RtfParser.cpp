#include "RtfParser.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

#include "Errors.h"
#include "RtfModule.h"
#include "RtfWords.h"
#include "Text.h"

namespace {

constexpr int FullProgress = 100;
// Later styles are dropped.
constexpr std::size_t MostStyles = 1 << 20;
constexpr std::size_t MostCommandsOfStyles = 2 * RtfStylesheet::MostCommands;
// Of a longer chain of styles, those at its base are left out.
constexpr std::size_t LongestChain = 1000;
constexpr char EndOfText = '\x03';

}  // namespace

RtfParser::RtfParser(Clock& clock, const InstalledFonts& installed, CancelKey userCancelled)
    : m_clock(clock), m_installed(installed), UserCancelled(std::move(userCancelled)) {}

Task<RtfParser::Ending> RtfParser::Parse(RtfStream& stream, RtfTarget& target) {
    input = &stream;
    currenttarget = &target;
    if (progress)
        progress->setMaximum(FullProgress);
    if (!target.Preprocess())
        co_return Ending::Refused;
    bool isCancelled = false;
    while (!stream.isAtEnd()) {
        const char c = stream.read();
        isCancelled = UserCancelled && UserCancelled();
        if (isCancelled)
            break;
        showProgress();
        if (c == '{') {
            openGroup();
        } else if (c == '}') {
            if (!closeGroup())
                co_return Ending::TooManyEnds;
        } else if (c == '\\') {
            co_await readCommand();
        } else if (!RtfIsLineEnd(c) && c != EndOfText) {
            Write({&c, 1});
        }
        co_await stream.breathe();
    }
    target.Postprocess();
    co_return isCancelled ? Ending::Cancelled : Ending::Whole;
}

void RtfParser::openGroup() {
    if (state.size() > DeepestGroup)
        ++m_groupsWithoutLook;
    else
        state.push_back(top().Clone());
}

// False when there is no group to close.
bool RtfParser::closeGroup() {
    if (m_groupsWithoutLook > 0)
        --m_groupsWithoutLook;
    else if (state.size() >= 2)
        state.pop_back();
    else
        return false;
    return true;
}

Task<> RtfParser::readCommand() {
    std::string word;
    std::int32_t parameter = 1;
    RtfParseCommand(*input, word, parameter);
    if (RtfIsWord(word, "bin"))
        input->skip(parameter);
    else
        co_await DoCommand(std::move(word), parameter);
}

void RtfParser::showProgress() {
    const qsizetype chunk = input->length() / FullProgress;
    if (progress && chunk > 0 && input->position() % chunk == 0)
        progress->setValue(static_cast<int>(input->position() / chunk));
}

// Whatever the word, the target is told the look anew: this is how it reaches the target at all.
Task<> RtfParser::DoCommand(std::string word, std::int32_t parameter) {
    if (const RtfWord* const known = findRtfWord(word)) {
        if (known->act)
            known->act(*this, parameter);
        else if (known->read)
            co_await known->read(*this, parameter);
    }
    if (currenttarget)
        currenttarget->SetState(top().Clone());
}

void RtfParser::Write(QByteArrayView text) {
    if (currenttarget)
        currenttarget->Write(text);
}

Task<> RtfParser::ParseFontTable() {
    fonttable.emplace(m_installed);
    const bool ok = co_await fonttable->parse(*input);
    if (ok)
        top().font = fonttable->getfont(defaultfontid);
    else
        fonttable.reset();
}

Task<> RtfParser::ParseColorTable() {
    colortable.emplace();
    const bool ok = co_await colortable->parse(*input);
    if (!ok)
        colortable.reset();
}

Task<> RtfParser::SkipGroup() {
    return RtfIgnoreGroup(*input);
}

Task<> RtfParser::ParseStylesheet() {
    for (bool isOpen = true; isOpen && !input->isAtEnd();) {
        const char c = input->read();
        if (c == '{') {
            RtfStylesheet style;
            co_await style.Parse(*input);
            keepStyle(std::move(style));
        }
        isOpen = c != '}';
        co_await input->breathe();
    }
}

void RtfParser::keepStyle(RtfStylesheet style) {
    m_commandsOfStyles += style.commands.size();
    if (stylesheets.size() >= MostStyles || m_commandsOfStyles > MostCommandsOfStyles)
        return;
    stylesheets.push_back(std::move(style));
    m_stylesByNumber.emplace(stylesheets.back().id, &stylesheets.back());
}

Task<> RtfParser::ApplyStyle(std::int32_t id) {
    const std::vector<const RtfStylesheet*> chain = styleChain(id);
    // The base lies under what is derived from it.
    for (auto style = chain.rbegin(); style != chain.rend(); ++style) {
        co_await (*style)->Apply(*this);
        co_await input->breathe();
    }
}

// The style and those that it is based on, each once; none when replaying them would cost too much.
std::vector<const RtfStylesheet*> RtfParser::styleChain(std::int32_t id) {
    std::vector<const RtfStylesheet*> chain;
    std::unordered_set<const RtfStylesheet*> met;
    for (auto found = m_stylesByNumber.find(id);
         found != m_stylesByNumber.end() && chain.size() < LongestChain;) {
        const RtfStylesheet* const style = found->second;
        m_replayed += 1 + static_cast<std::int64_t>(style->commands.size());
        if (m_replayed > ReplayPerByte * input->position())
            return {};
        if (!met.insert(style).second)
            break;
        chain.push_back(style);
        if (style->sbasedon == RtfStylesheet::None || style->sbasedon == style->id)
            break;
        found = m_stylesByNumber.find(style->sbasedon);
    }
    return chain;
}

void RtfParser::SetFont(std::int32_t id) {
    if (!fonttable)
        return;
    top().font = fonttable->getfont(id);
    top().SetEncoding("fcharset", fonttable->getcharset(id));
}

RtfRgb RtfParser::color(std::int32_t index) const {
    if (!colortable)
        throw NilObjectError(QStringLiteral("The document names a colour before its colour table."));
    return colortable->getcolor(index);
}

void RtfParser::SkipFallback() {
    if (input->isAtEnd())
        return;
    if (input->read() != '\\') {
        input->stepBack();
        return;
    }
    std::string word;
    std::int32_t parameter = 1;
    RtfParseCommand(*input, word, parameter);
}

void RtfParser::Test() {
    QByteArrayList fonts;
    for (std::int32_t i = 1; fonttable && i <= fonttable->count(); ++i) {
        const RtfFont::Entry& font = fonttable->entry(i);
        fonts += QByteArray::number(font.id) + ' ' + font.family + ' ' + font.name;
    }
    QByteArrayList colors;
    for (std::int32_t i = 1; colortable && i <= colortable->count(); ++i) {
        const RtfRgb color = colortable->getcolor(i);
        colors += (Text::Hex2(color.red) + Text::Hex2(color.green) + Text::Hex2(color.blue)).toLatin1();
    }
    QByteArrayList styles;
    for (const RtfStylesheet& style : stylesheets) {
        styles += QByteArray::number(style.id) + ' ' + style.label +
                  QByteArray::number(static_cast<qsizetype>(style.commands.size()) - 1);
        for (const RtfCommand& command : style.commands)
            styles += QByteArray::fromStdString(command.word);
    }
    Write("\r\rFonttable\r" + fonts.join('\r') + "\r\rColortable\r" + colors.join('\r') +
          "\r\rStylesheets\r" + styles.join('\r') + "\r\rEncoding " + encoding);
}
