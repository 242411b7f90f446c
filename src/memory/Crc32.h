// The CRC-32 that protects a configuration file against editing.
#pragma once

#include <QByteArray>

#include "Globals.h"

// Goes on with Globals.m_dwCrc32, which after any number of calls from 0 is the standard CRC-32
// (IEEE 802.3) of all the text so far.
void CalcCrc32(Globals& globals, const QByteArray& text);
