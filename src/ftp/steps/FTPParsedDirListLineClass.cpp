#include "FTPParsedDirListLineClass.h"

#include <algorithm>
#include <array>

#include <QVarLengthArray>

#include "Text.h"

namespace {

// The fields of a squeezed line between single blanks, counted from 0; those past the end are empty.
class Fields {
public:
    explicit Fields(const QString& line) : m_line(line) {
        m_begins.append(0);
        for (qsizetype i = 0; i < line.size(); ++i)
            if (m_line[i] == u' ')
                m_begins.append(i + 1);
    }

    qsizetype last() const { return m_begins.size() - 1; }

    QStringView at(qsizetype index) const {
        if (index < 0 || index > last())
            return {};
        const qsizetype end = index == last() ? m_line.size() : m_begins[index + 1] - 1;
        return QStringView(m_line).sliced(m_begins[index], end - m_begins[index]);
    }

    bool isEmpty(qsizetype index) const { return at(index).isEmpty(); }

    // From a field to the last, with the single blanks between them, none leading.
    QString from(qsizetype index) const {
        if (index > last())
            return {};
        QStringView rest = QStringView(m_line).sliced(m_begins[index]);
        while (index < last() && rest.startsWith(u' '))
            rest = rest.sliced(1);
        return rest.toString();
    }

    QString joined(qsizetype first, qsizetype second) const {
        return at(first).toString() + u' ' + at(second).toString();
    }

private:
    QStringView m_line;
    QVarLengthArray<qsizetype, 32> m_begins;
};

bool isMonth(QStringView field) {
    static constexpr std::array<QStringView, 12> months{u"Jan", u"Feb", u"Mar", u"Apr", u"May", u"Jun",
                                                        u"Jul", u"Aug", u"Sep", u"Oct", u"Nov", u"Dec"};
    return field.size() == 3 &&
           std::ranges::any_of(months, [&](QStringView m) { return Text::equal(field, m); });
}

qsizetype monthField(const Fields& fields) {
    for (qsizetype i = 0; i <= fields.last(); ++i)
        if (isMonth(fields.at(i)))
            return i;
    return -1;
}

// The first field that is not empty, down from the one before the month to field 2.
std::int32_t sizeBefore(const Fields& fields, qsizetype month) {
    for (qsizetype i = month - 1; i >= 2; --i)
        if (!fields.isEmpty(i))
            return Text::IntVal(fields.at(i));
    return 0;
}

qsizetype firstFilled(const Fields& fields, qsizetype from) {
    while (from <= fields.last() && fields.isEmpty(from))
        ++from;
    return from;
}

// Sets date and time by which of the fields behind the month hold something; gives the place of the name.
qsizetype readDate(const Fields& fields, qsizetype m, FTPParsedDirListLineClass& entry) {
    const qsizetype day = fields.isEmpty(m + 1) ? m + 2 : m + 1;
    const qsizetype time = day + 1;
    entry.ModDate = fields.joined(m, day);
    if (!fields.isEmpty(time)) {
        entry.ModTime = fields.at(time).toString();
        return time + 1;
    }
    entry.ModTime = QStringLiteral("00:00");
    if (day == m + 1)
        entry.ModDate = fields.joined(m, m + 2) + u' ' + fields.at(m + 3).toString();
    else
        entry.ModDate = fields.joined(m, m + 2) + u' ' + fields.at(m + 4).toString();
    return time + 2;
}

void readUnix(const QString& line, const Fields& fields, qsizetype m, FTPParsedDirListLineClass& entry) {
    entry.Name = fields.from(readDate(fields, m, entry));
    const QChar kind = line.front().toLower();
    entry.IsDir = kind == u'd' || kind == u'l';
    entry.IsFile = kind == u'-' || kind == u'l';
    entry.Permissions = fields.at(0).mid(1, 9).toString();
    entry.Size = sizeBefore(fields, m);
}

void readBracketed(const Fields& fields, qsizetype m, FTPParsedDirListLineClass& entry) {
    entry.Name = fields.at(fields.last()).toString();
    entry.ModDate = fields.joined(m, m + 1);
    entry.ModTime = fields.at(m + 2).toString();
    entry.IsDir = Text::equal(fields.at(0), u"d");
    entry.IsFile = fields.at(0) == u"-";
    entry.Size = sizeBefore(fields, m);
}

// The usual three columns before the name are one too few for this form: its size is then looked for in the
// name. Nothing relies on it.
void readNT(const Fields& fields, FTPParsedDirListLineClass& entry) {
    entry.ModDate = fields.at(0).toString();
    entry.ModTime = fields.at(2).toString();
    const qsizetype size = firstFilled(fields, 3);
    if (size > fields.last())
        return;
    if (Text::equal(fields.at(size), u"<dir>")) {
        entry.IsDir = true;
    } else {
        entry.IsFile = true;
        entry.Size = Text::IntVal(fields.at(size));
    }
    entry.Name = fields.from(firstFilled(fields, size + 1));
}

}  // namespace

FTPParsedDirListLineClass ParseDirListLine(const QString& line) {
    constexpr qsizetype LeastLastField = 4;
    constexpr qsizetype LastMonthField = 25;
    FTPParsedDirListLineClass entry;
    const QString squeezed = Squeeze(line, QStringLiteral(" "));
    const Fields fields(squeezed);
    if (fields.last() < LeastLastField)
        return entry;
    const qsizetype month = monthField(fields);
    if (month <= 0 || month > LastMonthField)
        readNT(fields, entry);
    else if (fields.at(1).contains(u'[') && fields.isEmpty(fields.last() - 1))
        readBracketed(fields, month, entry);
    else
        readUnix(line, fields, month, entry);
    return entry;
}

QString Squeeze(const QString& text, const QString& characters) {
    if (text.size() < 2)
        return text;
    QString result(text.size(), Qt::Uninitialized);
    QChar* end = result.data();
    QChar previous = text.front();
    *end++ = previous;
    for (const QChar c : QStringView(text).sliced(1)) {
        if (c != previous || !characters.contains(c))
            *end++ = c;
        previous = c;
    }
    result.resize(end - result.constData());
    return result;
}
