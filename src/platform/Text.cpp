#include "Text.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

// A number past every range stays at the largest there is: nobody downstream expects an infinity.
constexpr double Largest = std::numeric_limits<double>::max();

bool isDigit(QChar c) {
    return c >= u'0' && c <= u'9';
}

bool isTrimmed(QChar c) {
    return c.isSpace() || c.unicode() < 0x20;
}

qsizetype skipDigits(QStringView text, qsizetype at) {
    while (at < text.size() && isDigit(text[at]))
        ++at;
    return at;
}

// Length of the decimal number that `text` starts with, 0 if there is none.
qsizetype decimalLength(QStringView text) {
    qsizetype at = !text.isEmpty() && (text[0] == u'+' || text[0] == u'-') ? 1 : 0;
    const qsizetype whole = skipDigits(text, at);
    qsizetype digits = whole - at;
    at = whole;
    if (at < text.size() && text[at] == u'.') {
        const qsizetype fraction = skipDigits(text, at + 1);
        digits += fraction - at - 1;
        at = fraction;
    }
    if (digits == 0)
        return 0;
    if (at < text.size() && text[at].toLower() == u'e') {
        qsizetype exponent = at + 1;
        if (exponent < text.size() && (text[exponent] == u'+' || text[exponent] == u'-'))
            ++exponent;
        const qsizetype end = skipDigits(text, exponent);
        if (end > exponent)
            at = end;
    }
    return at;
}

double hexadecimalValue(QStringView digits) {
    double value = 0;
    for (const QChar c : digits) {
        const int digit = QString(c).toInt(nullptr, 16);
        if (digit == 0 && c != u'0')
            break;
        value = std::min(value * 16 + digit, Largest);
    }
    return value;
}

// The digits of |value| with `decimals` places behind the point and no point.
QByteArray roundedDigits(double value, int decimals) {
    constexpr double WholeFrom = 1LL << 50;  // a number beyond has no digits behind the point to round
    double scaled = std::abs(value) * std::pow(10.0, decimals);
    // Halves go away from zero as they are written in decimal, so 0.45 to one place is 0.5.
    if (scaled < WholeFrom)
        scaled = std::round(std::nextafter(scaled, HUGE_VAL));
    return QByteArray::number(scaled, 'f', 0);
}

struct Pattern {
    int wholePlaces = 0;
    int decimals = 0;
};

Pattern measure(QStringView pattern) {
    Pattern result;
    bool behindPoint = false;
    for (qsizetype i = 0; i < pattern.size(); ++i) {
        if (pattern[i] == u'\\')
            ++i;
        else if (pattern[i] == u'.')
            behindPoint = true;
        else if (pattern[i] == u'0' || pattern[i] == u'#')
            ++(behindPoint ? result.decimals : result.wholePlaces);
    }
    return result;
}

}  // namespace

bool Text::equal(QStringView a, QStringView b) {
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

int Text::StrComp(QStringView a, QStringView b) {
    return a.compare(b, Qt::CaseSensitive);
}

qsizetype Text::InStr(QStringView text, QStringView find, qsizetype start) {
    return text.indexOf(find, std::max<qsizetype>(start, 1) - 1, Qt::CaseInsensitive) + 1;
}

QString Text::ReplaceAll(QString text, const QString& find, const QString& replacement) {
    return find.isEmpty() ? text : text.replace(find, replacement, Qt::CaseInsensitive);
}

QString Text::ReplaceAllB(QString text, const QString& find, const QString& replacement) {
    return find.isEmpty() ? text : text.replace(find, replacement, Qt::CaseSensitive);
}

QString Text::Left(QStringView text, qsizetype count) {
    return text.left(std::clamp<qsizetype>(count, 0, text.size())).toString();
}

QString Text::Right(QStringView text, qsizetype count) {
    return text.right(std::clamp<qsizetype>(count, 0, text.size())).toString();
}

QString Text::Mid(QStringView text, qsizetype start, qsizetype count) {
    const qsizetype from = std::max<qsizetype>(start, 1) - 1;
    if (from >= text.size())
        return {};
    const qsizetype rest = text.size() - from;
    return text.mid(from, count < 0 ? rest : std::min(count, rest)).toString();
}

QString Text::Trim(QStringView text) {
    qsizetype begin = 0;
    qsizetype end = text.size();
    while (begin < end && isTrimmed(text[begin]))
        ++begin;
    while (end > begin && isTrimmed(text[end - 1]))
        --end;
    return text.mid(begin, end - begin).toString();
}

QString Text::onOneLine(QString text) {
    text.replace(QStringLiteral("\r\n"), QStringLiteral(" "));
    for (QChar& c : text)
        if (c == u'\n' || c == u'\r' || c == QChar::LineSeparator || c == QChar::ParagraphSeparator)
            c = u' ';
    return text;
}

qsizetype Text::CountFields(QStringView text, QStringView separator) {
    if (text.isEmpty())
        return 0;
    qsizetype fields = 1;
    qsizetype at = separator.isEmpty() ? -1 : text.indexOf(separator, 0, Qt::CaseInsensitive);
    for (; at >= 0; at = text.indexOf(separator, at + separator.size(), Qt::CaseInsensitive))
        ++fields;
    return fields;
}

QString Text::NthField(QStringView text, QStringView separator, qsizetype number) {
    if (separator.isEmpty())
        return number == 1 ? text.toString() : QString();
    qsizetype begin = 0;
    for (qsizetype field = 1; field < number; ++field) {
        const qsizetype found = text.indexOf(separator, begin, Qt::CaseInsensitive);
        if (found < 0)
            return {};
        begin = found + separator.size();
    }
    if (number < 1)
        return {};
    const qsizetype end = text.indexOf(separator, begin, Qt::CaseInsensitive);
    return text.mid(begin, end < 0 ? -1 : end - begin).toString();
}

double Text::Val(QStringView text) {
    qsizetype blanks = 0;
    while (blanks < text.size() && text[blanks].isSpace())
        ++blanks;
    QStringView number = text.mid(blanks);
    if (number.startsWith(u"&h", Qt::CaseInsensitive))
        return hexadecimalValue(number.mid(2));
    return number.left(decimalLength(number)).toLatin1().toDouble();
}

std::int32_t Text::IntVal(QStringView text) {
    using Limits = std::numeric_limits<std::int32_t>;
    return static_cast<std::int32_t>(std::clamp<double>(Val(text), static_cast<double>(Limits::min()),
                                                        static_cast<double>(Limits::max())));
}

QString Text::Format(double value, QStringView pattern) {
    const auto [wholePlaces, decimals] = measure(pattern);
    const QByteArray digits = roundedDigits(value, decimals).rightJustified(decimals + 1, '0');
    // Whole digits without leading zeros: a "#" prints only what the number reaches.
    QByteArray whole = digits.chopped(decimals);
    whole = whole == "0" ? QByteArray() : whole;
    const QByteArray fraction = digits.right(decimals);

    QString result;
    int place = wholePlaces;  // whole places still to come
    qsizetype decimal = 0;
    bool behindPoint = false;
    for (qsizetype i = 0; i < pattern.size(); ++i) {
        const QChar c = pattern[i];
        if (c == u'\\') {
            if (++i < pattern.size())
                result += pattern[i];
        } else if (c == u'.') {
            behindPoint = true;
            if (wholePlaces == 0)
                result += QString::fromLatin1(whole);
            result += c;
        } else if (c != u'0' && c != u'#') {
            result += c;
        } else if (behindPoint) {
            const bool reaches = fraction.mid(decimal).count('0') < fraction.size() - decimal;
            if (c == u'0' || reaches)
                result += QLatin1Char(fraction[decimal]);
            ++decimal;
        } else {
            if (place == wholePlaces && whole.size() > wholePlaces)
                result += QString::fromLatin1(whole.first(whole.size() - wholePlaces));
            if (place <= whole.size())
                result += QLatin1Char(whole[whole.size() - place]);
            else if (c == u'0')
                result += u'0';
            --place;
        }
    }
    const bool isZero = digits.count('0') == digits.size();
    return value < 0 && !isZero ? u'-' + result : result;
}

QString Text::Str(std::int64_t value) {
    return QString::number(value);
}

QString Text::Hex(std::uint64_t value) {
    return QString::number(value, 16).toUpper();
}

QString Text::Hex2(std::int32_t value) {
    return Hex(static_cast<std::uint32_t>(value)).rightJustified(2, u'0');
}

QString Text::fromLine(const QByteArray& bytes) {
    return QString::fromLatin1(bytes);
}

QByteArray Text::toLine(const QString& text) {
    return text.toLatin1();
}
