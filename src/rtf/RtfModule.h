// The functions that pick control words out of the bytes of an RTF file.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include <QByteArray>

#include "RtfStream.h"
#include "Task.h"

// Of a longer control word the rest is dropped: no word of this length means anything.
constexpr std::size_t LongestRtfWord = 32;

// A control word, behind its "\". A symbol such as "{" or "*" leaves `parameter` as it was; a word without
// a number has the parameter 1. Numbers beyond 32 bits stay at their ends.
//
// The byte that ended the word is read again, unless it is a blank. If the file ends in the word, that is
// the word's own last byte, which then appears as text.
void RtfParseCommand(RtfStream& stream, std::string& word, std::int32_t& parameter);

bool RtfIsAlpha(char c);
// A digit or "-".
bool RtfIsNumeric(char c);
// Equality of control words, without letter case.
bool RtfIsWord(std::string_view word, std::string_view name);
// Chr(13) or Chr(10).
bool RtfIsLineEnd(char c);

// The name of a font or a style: up to a ";", which is dropped, or up to a "\" or brace, which stays.
QByteArray RtfParseLabel(RtfStream& stream);

// Reads on to the end of a group, behind its "{".
Task<> RtfIgnoreGroup(RtfStream& stream);
