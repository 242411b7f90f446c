// A firmware image for the simulated amplifier.
#pragma once

#include <QByteArray>

// Intel HEX text of an image that covers the whole firmware window, stamped with the version, four digits
// such as "0124". Its checksum word is left for the loader to work out.
QByteArray sampleImage(const QByteArray& version);
