#include "SearchHighlight.h"

#include <algorithm>

#include <QRegularExpression>

#include "Errors.h"
#include "HelpPage.h"
#include "Text.h"

namespace {

// A replacement text in which "$&", "$0" to "$9" and "\0" to "\9" stand for what was matched. The pattern has
// no group that takes part in a match, so the higher numbers are empty. A backslash before anything else
// takes that character as it stands.
QString expanded(const QString& replacement, QStringView match) {
    QString result;
    for (qsizetype i = 0; i < replacement.size(); ++i) {
        const QChar c = replacement[i];
        const QChar next = i + 1 < replacement.size() ? replacement[i + 1] : QChar();
        const bool isNumber = next >= u'0' && next <= u'9';
        if ((c != u'$' && c != u'\\') || next.isNull() || (c == u'$' && !isNumber && next != u'&')) {
            result += c;
            continue;
        }
        ++i;
        if (next == u'0' || (c == u'$' && next == u'&'))
            result += match;
        else if (!isNumber)
            result += next;
    }
    return result;
}

// Says of places in a page, asked from front to back, whether they lie inside a tag: a ">" comes before the
// next "<". It is the lookahead "(?!([^<]+)?>)" of a pattern, which would look through a long text without
// tags from each hit anew.
class InsideTag {
public:
    explicit InsideTag(QStringView html) : m_html(html) {}

    bool operator()(qsizetype place) {
        if (place > m_next || place < m_askedFrom) {
            m_askedFrom = m_next = place;
            while (m_next < m_html.size() && m_html[m_next] != u'<' && m_html[m_next] != u'>')
                ++m_next;
        }
        return m_next < m_html.size() && m_html[m_next] == u'>';
    }

private:
    QStringView m_html;
    qsizetype m_askedFrom = 0;
    qsizetype m_next = -1;  // the first "<" or ">" at or behind m_askedFrom
};

QRegularExpression hitPattern(const QString& text) {
    QRegularExpression pattern(ConvertSafeText(text), QRegularExpression::CaseInsensitiveOption |
                                                          QRegularExpression::InvertedGreedinessOption);
    if (!pattern.isValid())
        throw PatternError(QStringLiteral("\"%1\" is no pattern: %2").arg(text, pattern.errorString()));
    return pattern;
}

}  // namespace

QString ConvertSafeText(const QString& text) {
    static const QRegularExpression Special(QStringLiteral("(\\.|\\\\|\\||\\$|\\^|\\*|\\+|\\?|\\[|\\(|\\))"));
    QString safe = text;
    return safe.replace(Special, QStringLiteral("\\\\1"));
}

QString SearchHighlight(const QString& text, const FolderItem& file) {
    const auto html = readPage(file);
    return html ? markHits(*html, text) : QString();
}

QString markHits(const QString& html, const QString& text) {
    // The user sees the text as typed, in capitals, not the page's own spelling.
    const QString replacement = QStringLiteral("<span style=\"font-weight: bold;background: #FFFF66;\">") +
                                text.toUpper() + QStringLiteral("</span>");
    const QRegularExpression pattern = hitPattern(text);
    // Checked once for all matches below.
    if (!QStringView(html).isValidUtf16())
        return html;
    InsideTag isInsideTag(html);
    QString marked;
    qsizetype copied = 0;
    // The head stays out of it.
    qsizetype at = std::max<qsizetype>(Text::InStr(html, u"<body") - 1, 0);
    while (at < html.size()) {
        const QRegularExpressionMatch hit = pattern.match(
            html, at, QRegularExpression::NormalMatch, QRegularExpression::DontCheckSubjectStringMatchOption);
        if (!hit.hasMatch())
            break;
        if (hit.capturedLength() == 0 || isInsideTag(hit.capturedEnd())) {
            at = hit.capturedStart() + 1;
            if (at < html.size() && html[at].isLowSurrogate())
                ++at;
            continue;
        }
        marked += QStringView(html).mid(copied, hit.capturedStart() - copied);
        marked += expanded(replacement, hit.capturedView());
        at = copied = hit.capturedEnd();
    }
    marked += QStringView(html).mid(copied);
    return marked;
}
