// The program's own rules for text and numbers. Positions count from 1. Nothing here depends on the
// user's locale.
#pragma once

#include <cstdint>

#include <QByteArray>
#include <QString>
#include <QStringView>

namespace Text {

// Equality as the whole program means it: without letter case.
bool equal(QStringView a, QStringView b);
// Byte-exact comparison (mode 0): 0 when the same, else below or above 0 as `a` sorts.
int StrComp(QStringView a, QStringView b);

// Position of `find` in `text` at or after `start`, without letter case; 0 when it is not there.
qsizetype InStr(QStringView text, QStringView find, qsizetype start = 1);
QString ReplaceAll(QString text, const QString& find, const QString& replacement);
// The same, with letter case.
QString ReplaceAllB(QString text, const QString& find, const QString& replacement);

QString Left(QStringView text, qsizetype count);
QString Right(QStringView text, qsizetype count);
// From position `start`, `count` characters or all that there are.
QString Mid(QStringView text, qsizetype start, qsizetype count = -1);
// Without leading and trailing white space, control codes such as Return and Enter among it.
QString Trim(QStringView text);

// Each line end becomes one blank.
QString onOneLine(QString text);

// Number of fields between separators: 1 for a text without one, 0 for an empty text.
qsizetype CountFields(QStringView text, QStringView separator);
// Field `number`, from 1; empty when there is none.
QString NthField(QStringView text, QStringView separator, qsizetype number);

// The number that a text starts with, after white space: sign, digits, point, exponent, or "&h" and
// hexadecimal digits. 0 when there are no digits, or more than a number can hold.
double Val(QStringView text);
// Val as a 32-bit integer, towards zero, held at the ends of its range.
std::int32_t IntVal(QStringView text);

// A number by a pattern: "0" always prints a digit, "#" only when the number reaches that place, "." is
// the decimal point and "\" takes the next character as it stands. The last shown place is rounded, halves
// away from zero; digits before the first place are printed all the same; a minus sign leads.
QString Format(double value, QStringView pattern);
// Decimal digits of an integer.
QString Str(std::int64_t value);

// Hexadecimal in upper case without padding.
QString Hex(std::uint64_t value);
// Hexadecimal in upper case, at least two digits. Negative values appear as 32 bits.
QString Hex2(std::int32_t value);

// Line bytes as text and back; all 256 values pass.
QString fromLine(const QByteArray& bytes);
QByteArray toLine(const QString& text);

}  // namespace Text
