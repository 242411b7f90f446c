// The CRC-32 of a configuration file, by other means than the program's own.
#pragma once

#include <zlib.h>

#include <QByteArray>

inline quint32 zlibCrc(const QByteArray& text, quint32 before = 0) {
    return static_cast<quint32>(
        crc32(before, reinterpret_cast<const Bytef*>(text.constData()), static_cast<uInt>(text.size())));
}

// As a file holds it, without leading zeros.
inline QByteArray storedCrc(const QByteArrayList& lines) {
    return QByteArray::number(~zlibCrc(lines.join()), 16).toUpper();
}
