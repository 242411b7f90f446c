// How the command tester shows bytes from the line.
#pragma once

#include <QByteArray>
#include <QString>

// Bytes below 32 or above 126 appear as "\x" and their hexadecimal value without a leading zero.
QString spellOut(const QByteArray& received);
