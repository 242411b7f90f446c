#include "RtfWords.h"

#include <algorithm>
#include <array>
#include <string>
#include <unordered_map>

#include <QLocale>

#include "RtfModule.h"
#include "RtfParser.h"

namespace {

using Act = void (*)(RtfParser&, std::int32_t);

template <bool RtfState::* Flag>
constexpr Act flag = [](RtfParser& parser, std::int32_t parameter) { parser.top().*Flag = parameter == 1; };

template <bool IsOn>
constexpr Act underline = [](RtfParser& parser, std::int32_t) { parser.top().underline = IsOn; };

template <RtfAlignment Alignment>
constexpr Act align = [](RtfParser& parser, std::int32_t) { parser.top().alignment = Alignment; };

template <char Character>
constexpr Act write = [](RtfParser& parser, std::int32_t) {
    const char character = Character;
    parser.Write({&character, 1});
};

// The word itself names the encoding.
template <const char* Word>
constexpr Act encoding = [](RtfParser& parser, std::int32_t) { parser.top().SetEncoding(Word, 0); };

constexpr char Ansi[] = "ansi";
constexpr char Mac[] = "mac";
constexpr char Pc[] = "pc";
constexpr char Pca[] = "pca";
constexpr char Deflang[] = "deflang";

void writeCharacter(RtfParser& parser, std::int32_t parameter) {
    parser.Write(parser.top().Decode(parameter));
}

void writeUnicode(RtfParser& parser, std::int32_t parameter) {
    parser.Write(parser.top().DecodeUnicode(parameter));
    parser.SkipFallback();
}

// White space of any kind becomes a blank: Mac Roman has not all that are in use.
void writeShown(RtfParser& parser, const QString& text) {
    parser.Write(RtfEncoding::fromText(text.simplified()));
}

void writeLongDate(RtfParser& parser, std::int32_t) {
    writeShown(parser, QLocale().toString(parser.now().date(), QLocale::LongFormat));
}

void writeShortDate(RtfParser& parser, std::int32_t) {
    writeShown(parser, QLocale().toString(parser.now().date(), QLocale::ShortFormat));
}

void writeShortTime(RtfParser& parser, std::int32_t) {
    writeShown(parser, QLocale().toString(parser.now().time(), QLocale::ShortFormat));
}

constexpr RtfWord skipped(std::string_view name) {
    return {.name = name, .read = [](RtfParser& parser, std::int32_t) { return parser.SkipGroup(); }};
}

// Codes of Mac Roman. The two dashes are crossed on purpose: release notes rely on it.
constexpr char EnDash = '\xD0';
constexpr char EmDash = '\xD1';
constexpr char Bullet = '\xA5';
constexpr char LeftDoubleQuote = '\xD2';
constexpr char RightDoubleQuote = '\xD3';
constexpr char LeftQuote = '\xD4';
constexpr char RightQuote = '\xD5';

// "ansicp" is spelled so on purpose: the "ansicpg" of other programs is unknown here.
constexpr RtfWord Words[] = {
    // header
    {"rtf", [](RtfParser& parser, std::int32_t parameter) { parser.rtfversion = parameter; }},
    {"ansi", encoding<Ansi>},
    {"mac", encoding<Mac>},
    {"pc", encoding<Pc>},
    {"pca", encoding<Pca>},
    {"deflang", encoding<Deflang>},
    {"ansicp",
     [](RtfParser& parser, std::int32_t parameter) { parser.top().SetEncoding("ansicp", parameter); }},
    {"deff", [](RtfParser& parser, std::int32_t parameter) { parser.defaultfontid = parameter; }},

    // destinations, each read to the end of its own group
    {.name = "fonttbl", .read = [](RtfParser& parser, std::int32_t) { return parser.ParseFontTable(); }},
    {.name = "stylesheet", .read = [](RtfParser& parser, std::int32_t) { return parser.ParseStylesheet(); }},
    {.name = "colortbl", .read = [](RtfParser& parser, std::int32_t) { return parser.ParseColorTable(); }},
    {.name = "info", .read = [](RtfParser& parser, std::int32_t) { return parser.ParseInfo(); }},
    {.name = "s", .read = [](RtfParser& parser, std::int32_t id) { return parser.ApplyStyle(id); }},
    skipped("macpict"),
    skipped("pmmetafile"),
    skipped("wmetafile"),
    skipped("dibitmap"),
    skipped("wbitmap"),
    skipped("header"),
    skipped("headerl"),
    skipped("headerr"),
    skipped("headerf"),
    skipped("footer"),
    skipped("footerl"),
    skipped("footerr"),
    skipped("footerf"),
    skipped("field"),
    skipped("xe"),
    skipped("tc"),
    skipped("object"),
    skipped("*"),

    // paragraph
    {"pard", align<RtfAlignment::Left>},
    {"ql", align<RtfAlignment::Left>},
    {"qc", align<RtfAlignment::Centre>},
    {"qr", align<RtfAlignment::Right>},
    {"qj", align<RtfAlignment::Justified>},

    // character
    {"plain", [](RtfParser& parser, std::int32_t) { parser.top().SetPlain(); }},
    {"b", flag<&RtfState::bold>},
    {"i", flag<&RtfState::italic>},
    {"caps", flag<&RtfState::capitals>},
    {"smcaps", flag<&RtfState::smallcapitals>},
    {"outl", flag<&RtfState::outline>},
    {"shad", flag<&RtfState::shadow>},
    {"ul", flag<&RtfState::underline>},
    {"uld", underline<true>},
    {"uldb", underline<true>},
    {"ulw", underline<true>},
    {"ulnone", underline<false>},
    {"expnd", [](RtfParser& parser, std::int32_t parameter) { parser.top().expanded = parameter / 4.0; }},
    // Not the 2 that would turn half-points into points: the sizes on screen depend on it.
    {"fs", [](RtfParser& parser, std::int32_t parameter) { parser.top().textsize = parameter / 1.5; }},
    {"f", [](RtfParser& parser, std::int32_t parameter) { parser.SetFont(parameter); }},
    {"cf", [](RtfParser& parser,
              std::int32_t parameter) { parser.top().foregroundcolor = parser.color(parameter); }},
    {"cb", [](RtfParser& parser,
              std::int32_t parameter) { parser.top().backgroundcolor = parser.color(parameter); }},

    // text
    {"par", write<'\r'>},
    {"line", write<'\r'>},
    {"\n", write<'\r'>},
    {"\r", write<'\r'>},
    {"\x03", write<'\r'>},
    {"tab", write<' '>},
    {"emdash", write<EnDash>},
    {"endash", write<EmDash>},
    {"bullet", write<Bullet>},
    {"lquote", write<LeftQuote>},
    {"rquote", write<RightQuote>},
    {"ldblquote", write<LeftDoubleQuote>},
    {"rdblquote", write<RightDoubleQuote>},
    {"{", write<'{'>},
    {"}", write<'}'>},
    {"\\", write<'\\'>},
    {"'", writeCharacter},
    {"u", writeUnicode},
    {"chdate", writeLongDate},
    {"chdpl", writeLongDate},
    {"chdpa", writeShortDate},
    {"chtime", writeShortTime},

    // known, and no more; spelled as they came
    // clang-format off
    {"deftab"}, {"hyphotz"}, {"linestart"}, {"fracwidth"}, {"makebackup"}, {"defformat"}, {"psover"},
    {"ftnsep"}, {"ftnsepc"}, {"ftncn"}, {"endnotes"}, {"enddoc"}, {"ftntj"}, {"ftnbj"}, {"ftnstart"},
    {"ftnrestart"}, {"paperw"}, {"paperh"}, {"margl"}, {"margr"}, {"margt"}, {"margb"}, {"facingp"},
    {"gutter"}, {"margmirror"}, {"landscape"}, {"pgnstart"}, {"widowctrl"}, {"revisions"}, {"revprop"},
    {"revbar"}, {"sectd"}, {"endnhere"}, {"binfsxn"}, {"binsxn"}, {"sbknone"}, {"sbkcol"}, {"sbkpage"},
    {"sbkeven"}, {"sbkodd"}, {"cols"}, {"colsx"}, {"linebetcol"}, {"linemod"}, {"linex"}, {"linestarts"},
    {"linerestart"}, {"lineppage"}, {"linecont"}, {"pgwxxn"}, {"pghsxn"}, {"marglsxn"}, {"margrsxn"},
    {"margtsxn"}, {"margbsxn"}, {"guttersxn"}, {"lndscpxcsn"}, {"titlepg"}, {"headery"}, {"footery"},
    {"pgnstarts"}, {"pgncont"}, {"pgnrestart"}, {"pgnx"}, {"pgny"}, {"pgndec"}, {"pgnucrm"}, {"pgnlcrm"},
    {"pgnucltr"}, {"pgnlcltr"}, {"vertalt"}, {"vertal"}, {"vertalc"}, {"vertalj"}, {"intbl"}, {"keep"},
    {"keepn"}, {"noline"}, {"pagebb"}, {"sbys"}, {"fi"}, {"li"}, {"ri"}, {"sb"}, {"sa"}, {"sl"}, {"tx"},
    {"tqr"}, {"tqc"}, {"tqdec"}, {"tb"}, {"tldot"}, {"tlhyph"}, {"tlul"}, {"tlth"}, {"tleq"}, {"brdtp"},
    {"brdrb"}, {"brdrl"}, {"brdrr"}, {"brdrbtw"}, {"brdrbar"}, {"box"}, {"brdrs"}, {"brdrth"}, {"brdrsh"},
    {"brdrdb"}, {"brdrdot"}, {"brdrhair"}, {"brdrw"}, {"brdrcf"}, {"brdrsp"}, {"shading"}, {"bghoriz"},
    {"bgvert"}, {"bgfdiag"}, {"bgcross"}, {"bgdcross"}, {"bgdkhoriz"}, {"bgdkvert"}, {"bgkfdiag"},
    {"bgbkbdiag"}, {"bgdkdcross"}, {"cfpat"}, {"cbpat"}, {"absw"}, {"absh"}, {"phmmrg"}, {"phpg"},
    {"phcol"}, {"posx"}, {"posxc"}, {"posxi"}, {"posxo"}, {"posxr"}, {"posxl"}, {"pvmrg"}, {"pvpg"},
    {"pvpara"}, {"posy"}, {"posyil"}, {"posyt"}, {"posyc"}, {"posyb"}, {"dxfrtext"}, {"dyfrtext"},
    {"trowd"}, {"trgaph"}, {"cellx"}, {"clmgf"}, {"clmrg"}, {"clbrdrb"}, {"clbrdrt"}, {"clbrdrl"},
    {"clbrdrr"}, {"trql"}, {"trqc"}, {"trleft"}, {"trrh"}, {"clshdng"}, {"clbghoriz"}, {"clbgvert"},
    {"clbgfdiag"}, {"clbgcross"}, {"clbgdcross"}, {"clbgkhor"}, {"clbgkdcross"}, {"clbgdkhor"},
    {"clbgdkvert"}, {"clbgdkfdiag"}, {"clbgdkcross"}, {"clbgdkdcross"}, {"clcfpat"}, {"clcbpat"},
    {"deleted"}, {"dn"}, {"revised"}, {"strike"}, {"up"}, {"v"}, {"lang"}, {"chpgn"}, {"chftn"}, {"chatn"},
    {"chftnsep"}, {"chftnsepc"}, {"cell"}, {"row"}, {"sect"}, {"page"}, {"column"}, {"l"}, {"~"}, {"-"},
    {"_"}, {":"}, {"alt"}, {"shift"}, {"ctrl"}, {"fn"},
    // clang-format on
};

std::string lowered(std::string_view word) {
    std::string result(word);
    std::ranges::transform(result, result.begin(), [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    });
    return result;
}

}  // namespace

const RtfWord* findRtfWord(std::string_view word) {
    static const auto index = [] {
        std::unordered_map<std::string_view, const RtfWord*> words;
        for (const RtfWord& known : Words)
            words.emplace(known.name, &known);
        return words;
    }();
    const auto found = index.find(lowered(word));
    return found == index.end() ? nullptr : found->second;
}

std::span<const RtfWord> allRtfWords() {
    return Words;
}
