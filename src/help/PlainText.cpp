#include "PlainText.h"

#include <QHash>

#include "Text.h"

namespace {

struct EntityRow {
    QStringView glyph;
    QStringView numeric;
    QStringView named;
    // "&Agrave;" and "&agrave;" are two letters.
    bool isCaseSensitive = false;
};

// Some rows are odd on purpose: the minus sign is a plain hyphen, the em dash an en dash. What stands in no
// row stays as it is.
// clang-format off
constexpr EntityRow EntityTable[] = {
    {u"\"", u"&#34;", u"&quot;"},
    {u"®", u"&#174;", u"&reg;"},
    {u"©", u"&#169;", u"&copy;"},
    {u"™", u"&#8482;", u"&trade;"},
    {u"£", u"&#163;", u"&pound;"},
    {u"¢", u"&#162;", u"&cent;"},
    {u"€", u"&#8364;", u"&euro;"},
    {u"°", u"&#176;", u"&deg;"},
    {u"-", u"&#8722;", u"&minus;"},
    {u"±", u"&#177;", u"&plusmn;"},
    {u"≠", u"&#8800;", u"&ne;"},
    {u"∞", u"&#8734;", u"&infin;"},
    {u"µ", u"&#181;", u"&micro;"},
    {u"'", u"&#039;", u"&apos;"},
    {u"¥", u"&#165;", u"&yen;"},
    {u"–", u"&#8212;", u"&mdash;"},
    {u"À", u"&#192;", u"&Agrave;", true},
    {u"Á", u"&#193;", u"&Aacute;", true},
    {u"Â", u"&#194;", u"&Acirc;", true},
    {u"Ã", u"&#195;", u"&Atilde;", true},
    {u"Ä", u"&#196;", u"&Auml;", true},
    {u"Å", u"&#197;", u"&Aring;", true},
    {u"à", u"&#224;", u"&agrave;", true},
    {u"á", u"&#225;", u"&aacute;", true},
    {u"â", u"&#226;", u"&acirc;", true},
    {u"ã", u"&#227;", u"&atilde;", true},
    {u"ä", u"&#228;", u"&auml;", true},
    {u"å", u"&#229;", u"&aring;", true},
    {u"Ç", u"&#199;", u"&Ccedil;", true},
    {u"ç", u"&#231;", u"&ccedil;", true},
    {u"È", u"&#200;", u"&Egrave;", true},
    {u"É", u"&#201;", u"&Eacute;", true},
    {u"Ê", u"&#202;", u"&Ecirc;", true},
    {u"Ë", u"&#203;", u"&Euml;", true},
    {u"è", u"&#232;", u"&egrave;", true},
    {u"é", u"&#233;", u"&eacute;", true},
    {u"ê", u"&#234;", u"&ecirc;", true},
    {u"ë", u"&#235;", u"&euml;", true},
    {u"Ì", u"&#204;", u"&Igrave;", true},
    {u"Í", u"&#205;", u"&Iacute;", true},
    {u"Î", u"&#206;", u"&Icirc;", true},
    {u"Ï", u"&#207;", u"&Iuml;", true},
    {u"ì", u"&#236;", u"&igrave;", true},
    {u"í", u"&#237;", u"&iacute;", true},
    {u"î", u"&#238;", u"&icirc;", true},
    {u"ï", u"&#239;", u"&iuml;", true},
    {u"Ñ", u"&#209;", u"&Ntilde;", true},
    {u"ñ", u"&#241;", u"&ntilde;", true},
    {u"Ò", u"&#210;", u"&Ograve;", true},
    {u"Ó", u"&#211;", u"&Oacute;", true},
    {u"Ô", u"&#212;", u"&Ocirc;", true},
    {u"Õ", u"&#213;", u"&Otilde;", true},
    {u"Ö", u"&#214;", u"&Ouml;", true},
    {u"ò", u"&#242;", u"&ograve;", true},
    {u"ó", u"&#243;", u"&oacute;", true},
    {u"ô", u"&#244;", u"&ocirc;", true},
    {u"õ", u"&#245;", u"&otilde;", true},
    {u"ö", u"&#246;", u"&ouml;", true},
    {u"Ù", u"&#217;", u"&Ugrave;", true},
    {u"Ú", u"&#218;", u"&Uacute;", true},
    {u"Û", u"&#219;", u"&Ucirc;", true},
    {u"Ü", u"&#220;", u"&Uuml;", true},
    {u"ù", u"&#249;", u"&ugrave;", true},
    {u"ú", u"&#250;", u"&uacute;", true},
    {u"û", u"&#251;", u"&ucirc;", true},
    {u"ü", u"&#252;", u"&uuml;", true},
    {u"Ý", u"&#221;", u"&Yacute;", true},
    {u"Ÿ", u"&#376;", u"&Yuml;", true},
    {u"ý", u"&#253;", u"&yacute;", true},
    {u"ÿ", u"&#255;", u"&yuml;", true},
    {u"ß", u"&#223;", u"&szlig;"},
    {u"¡", u"&#161;", u"&iexcl;"},
    {u"¿", u"&#191;", u"&iquest;"},
    {u"œ", u"&#339;", u"&oelig;", true},
    {u"Œ", u"&#338;", u"&OElig;", true},
    {u"æ", u"&#230;", u"&aelig;", true},
    {u"Æ", u"&#198;", u"&AElig;", true},
    // Last: what it brings forth is not looked at again.
    {u"&", {}, u"&amp;"},
};
// clang-format on
static_assert(std::size(EntityTable) == 78);

constexpr qsizetype LongestEntity = 8;

// The table by spelling: as it stands, and in small letters where the case does not matter.
struct EntityIndex {
    QHash<QStringView, QStringView> exact;
    QHash<QString, QStringView> inSmallLetters;
};

const EntityIndex& entityIndex() {
    static const EntityIndex Index = [] {
        EntityIndex index;
        for (const EntityRow& row : EntityTable) {
            index.exact.insert(row.numeric, row.glyph);
            index.exact.insert(row.named, row.glyph);
            if (!row.isCaseSensitive)
                index.inSmallLetters.insert(row.named.toString(), row.glyph);
        }
        return index;
    }();
    return Index;
}

// Empty for what is no entity of the table.
QStringView glyphOf(QStringView entity) {
    const EntityIndex& index = entityIndex();
    const auto found = index.exact.constFind(entity);
    return found != index.exact.cend() ? *found : index.inSmallLetters.value(entity.toString().toLower());
}

// The rows applied one after the other come to the same as this one pass: no entity holds another's "&", and
// only the last row brings forth a "&".
void appendDecoded(QString& out, QStringView text) {
    qsizetype at = 0;
    for (;;) {
        const qsizetype ampersand = text.indexOf(u'&', at);
        if (ampersand < 0)
            break;
        out += text.mid(at, ampersand - at);
        const qsizetype length = text.mid(ampersand, LongestEntity).indexOf(u';') + 1;
        const QStringView glyph = length > 0 ? glyphOf(text.mid(ampersand, length)) : QStringView();
        out += glyph.isEmpty() ? QStringView(u"&") : glyph;
        at = ampersand + (glyph.isEmpty() ? 1 : length);
    }
    out += text.mid(at);
}

// From "<body" on; all of it where there is none.
QStringView bodyOf(const QString& html) {
    return QStringView(html).mid(std::max<qsizetype>(Text::InStr(html, u"<body") - 1, 0));
}

}  // namespace

PlainText::PlainText(QString html) : m_html(std::move(html)), m_body(bodyOf(m_html)), m_tags(m_body) {
    m_text.reserve(m_body.size());
}

bool PlainText::advance(qsizetype count) {
    if (m_at >= m_body.size())
        return false;
    const qsizetype target = m_at + count;
    while (m_at < target && m_at < m_body.size()) {
        const auto tag = m_tags.next();
        const qsizetype begin = tag ? tag->begin : m_body.size();
        appendDecoded(m_text, m_body.mid(m_at, begin - m_at));
        if (tag)
            m_text += u' ';
        m_at = tag ? tag->end : begin;
    }
    return true;
}

QString StripHTML(const QString& html) {
    PlainText page(html);
    while (page.advance(html.size())) {
    }
    return page.text();
}
