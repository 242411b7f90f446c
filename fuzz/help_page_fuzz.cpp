// A page of any content, searched for and marked with its own first characters.

#include <QFile>
#include <QTemporaryDir>

#include "Errors.h"
#include "HelpPage.h"
#include "PlainText.h"
#include "Require.h"
#include "SearchHighlight.h"

namespace {

constexpr std::size_t TextLength = 8;

// Reduced at once and bit by bit it is the same text, and never longer than the page.
void reduce(const QString& html) {
    const QString whole = StripHTML(html);
    require(whole.size() <= html.size());
    PlainText page(html);
    while (page.advance(3)) {
    }
    require(page.text() == whole);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const QTemporaryDir world;
    const FolderItem item = FolderItem(world.path()).Child(QStringLiteral("page.htm"));
    QFile file(item.AbsolutePath());
    require(file.open(QIODevice::WriteOnly));
    file.write(reinterpret_cast<const char*>(data), static_cast<qint64>(size));
    file.close();
    const auto html = readPage(item);
    require(html.has_value());
    reduce(*html);
    const QString text = QString::fromUtf8(reinterpret_cast<const char*>(data),
                                           static_cast<qsizetype>(std::min(size, TextLength)));
    try {
        if (!text.isEmpty())
            SearchHighlight(text, item);
    } catch (const PatternError&) {
        return 0;
    }
    return 0;
}
