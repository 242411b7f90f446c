// Any text as the listing of a server.
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include <QByteArray>
#include <QList>

#include "FTPParsedDirListLineClass.h"
#include "FTPPaths.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    for (const QByteArray& line : bytes.split('\n')) {
        const FTPParsedDirListLineClass entry = ParseDirListLine(QString::fromLatin1(line));
        const QString blank = QStringLiteral(" ");
        const QString squeezed = Squeeze(QString::fromLatin1(line), blank);
        const bool holds = Squeeze(squeezed, blank) == squeezed && entry.Permissions.size() <= 9 &&
                           (!FTPPaths::isPlainFileName(entry.Name) || !entry.Name.contains(u'/'));
        if (!holds)
            std::abort();
    }
    return 0;
}
