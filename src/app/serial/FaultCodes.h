// The amplifier's fault codes.
#pragma once

#include <QStringList>

// Two rows a code: the short name shown on the panel, then the long text. Codes that the
// amplifier does not use have empty rows.
QStringList CreateFaultCodesArray();
