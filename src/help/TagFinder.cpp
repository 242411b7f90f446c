#include "TagFinder.h"

std::optional<TagFinder::Tag> TagFinder::next() {
    for (;;) {
        const qsizetype begin = m_html.indexOf(u'<', m_at);
        if (begin < 0)
            return std::nullopt;
        const qsizetype end = endOf(begin);
        m_at = end > 0 ? end : begin + 1;
        if (end > 0)
            return Tag{begin, end};
    }
}

qsizetype TagFinder::find(Lookout& lookout, qsizetype from) const {
    if (lookout.askedFrom < 0 || from < lookout.askedFrom || from > lookout.found) {
        const qsizetype found = m_html.indexOf(QChar(lookout.character), from);
        lookout.askedFrom = from;
        lookout.found = found < 0 ? m_html.size() : found;
    }
    return lookout.found;
}

qsizetype TagFinder::endFrom(qsizetype start) {
    const qsizetype greater = find(m_greater, start);
    return greater < m_html.size() && greater < find(m_asterisk, start) ? greater + 1 : 0;
}

qsizetype TagFinder::endOf(qsizetype begin) {
    qsizetype start = begin + 1;
    qsizetype end = endFrom(start);
    if (end > 0 || begin < m_hopelessUpTo)
        return end;
    const qsizetype lineEnd = find(m_lineFeed, start);
    while (end == 0) {
        const qsizetype asterisk = find(m_asterisk, start);
        const qsizetype carriageReturn = asterisk < lineEnd ? find(m_return, asterisk) : lineEnd;
        if (carriageReturn >= lineEnd) {
            m_hopelessUpTo = lineEnd;
            return 0;
        }
        start = carriageReturn + 1;
        end = endFrom(start);
    }
    return end;
}
