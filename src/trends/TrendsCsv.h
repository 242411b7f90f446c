// The recorded hour as a table for other programs.
#pragma once

#include <QByteArray>

#include "Trends.h"

// A heading and one row a sample, with commas between and a point in numbers; a value that is not known is
// empty. What happened stands in the last column, at the sample that follows it.
QByteArray trendsCsv(const Trends& trends);
