#include "RtfFont.h"

#include <algorithm>

#include "RtfEncoding.h"
#include "RtfModule.h"

namespace {

struct Family {
    std::string_view word;
    const char* substitute;
    const char* standard;  // the font that is known to be of this family
};

constexpr Family Families[] = {
    {"froman", "Times", "Times"},   {"fswiss", "Helvetica", "Helvetica"}, {"fmodern", "Courier", "Courier"},
    {"fscript", "Script", nullptr}, {"fdecor", "Zapf Chancery", nullptr}, {"ftech", "Symbol", nullptr},
    {"fnil", "Geneva", nullptr},
};
constexpr const Family& Nil = Families[std::size(Families) - 1];

const Family* findFamily(std::string_view word) {
    const auto* const found =
        std::ranges::find_if(Families, [word](const Family& family) { return RtfIsWord(word, family.word); });
    return found == std::end(Families) ? nullptr : found;
}

QByteArray substituteFor(const QByteArray& family) {
    const Family* const found = findFamily({family.constData(), static_cast<std::size_t>(family.size())});
    return found ? found->substitute : Nil.substitute;
}

QByteArray familyOf(const QByteArray& fontname) {
    for (const Family& family : Families)
        if (family.standard && fontname.compare(family.standard, Qt::CaseInsensitive) == 0)
            return QByteArray(family.word.data(), static_cast<qsizetype>(family.word.size()));
    return QByteArray(Nil.word.data(), static_cast<qsizetype>(Nil.word.size()));
}

}  // namespace

InstalledFonts::InstalledFonts(const QStringList& names) {
    for (const QString& name : names)
        m_names.insert(RtfEncoding::fromText(name).toLower());
}

Task<bool> RtfFont::parse(RtfStream& stream) {
    std::string word;
    std::int32_t parameter = 1;
    for (int depth = 1; depth > 0;) {
        if (stream.isAtEnd())
            co_return false;
        const char c = stream.read();
        if (c == '{') {
            // The group of an entry is entered, one within it is not.
            if (++depth > 2) {
                co_await RtfIgnoreGroup(stream);
                depth = 2;
            }
        } else if (c == '}') {
            --depth;
        } else if (c == '\\') {
            RtfParseCommand(stream, word, parameter);
            act(word, parameter);
        } else if (!RtfIsLineEnd(c)) {
            stream.stepBack();
            m_entries.back().name = RtfParseLabel(stream);
        }
        co_await stream.breathe();
    }
    co_return true;
}

void RtfFont::act(std::string_view word, std::int32_t parameter) {
    if (RtfIsWord(word, "f"))
        append(Entry{.id = parameter});
    else if (RtfIsWord(word, "fcharset"))
        m_entries.back().charset = parameter;
    else if (const Family* const family = findFamily(word))
        m_entries.back().family =
            QByteArray(family->word.data(), static_cast<qsizetype>(family->word.size()));
}

void RtfFont::append(Entry entry) {
    if (m_entries.size() > MostFonts)
        return;
    m_indexes.emplace(entry.id, count() + 1);
    m_entries.push_back(std::move(entry));
}

const RtfFont::Entry* RtfFont::find(std::int32_t fontid) const {
    const auto found = m_indexes.find(fontid);
    return found == m_indexes.end() ? nullptr : &entry(found->second);
}

QByteArray RtfFont::getfont(std::int32_t fontid) const {
    QByteArray system = QByteArrayLiteral("System");
    const Entry* const found = find(fontid);
    if (!found)
        return system;
    if (m_installed.contains(found->name))
        return found->name;
    const QByteArray substitute = substituteFor(found->family);
    return m_installed.contains(substitute) ? substitute : system;
}

std::int32_t RtfFont::getcharset(std::int32_t fontid) const {
    const Entry* const found = find(fontid);
    return found ? found->charset : 0;
}

std::int32_t RtfFont::getid(const QByteArray& fontname) const {
    for (std::int32_t index = 1; index <= count(); ++index)
        if (entry(index).name.compare(fontname, Qt::CaseInsensitive) == 0)
            return entry(index).id;
    return 0;
}

void RtfFont::addfont(const QByteArray& fontname) {
    append({.id = count() + 1, .family = familyOf(fontname), .name = fontname, .charset = 0});
}

QByteArray RtfFont::getstring() const {
    QByteArray result = "{\\fonttbl";
    for (std::int32_t index = 1; index <= count(); ++index) {
        const Entry& font = entry(index);
        result += "{\\f" + QByteArray::number(font.id);
        if (font.charset >= 1)
            result += "\\fcharset" + QByteArray::number(font.charset);
        if (!font.family.isEmpty())
            result += '\\' + font.family;
        result += ' ' + font.name + ";}";
    }
    return result + '}';
}
