// The texts that the program can show, from its sources.
#pragma once

#include <QStringView>

// True when one string literal of the program, put together from its pieces, holds these words.
bool isSaidByProgram(QStringView words);
