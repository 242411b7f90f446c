// What the lines of a configuration file hold, field by field.
#pragma once

#include <cstdint>

#include <QByteArray>
#include <QString>
#include <QStringView>

// Two characters that must be decimal digits, read as a hexadecimal number, and a third that must not be one.
// A field with a letter in it fails: of the seven addresses of a complete file A0 and C0 are refused, and
// restores rely on it. A refused field leaves `value` 255.
bool ParseByte(QStringView text, std::uint8_t& value);

// "MEM2 PP AA CC " and the data. The digits of the data are not checked: a pair that is none counts as 0,
// and so does one that the line has not. Data beyond what a line may hold is passed over.
bool ParseMemLine(const QString& line, std::uint8_t& page, std::uint8_t& address, QByteArray& data);
bool IsValidAddress(std::uint8_t page, std::uint8_t address);

// The first and the last character of the text as two hexadecimal digits, either case.
bool HexPairToBin(QStringView text, std::uint8_t& value);
bool NibbleToBin(QStringView character, std::uint8_t& value);
// "0" to "9" only.
bool isDigit(QStringView character);
