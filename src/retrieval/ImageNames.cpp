#include "ImageNames.h"

#include <algorithm>

#include "FTPPaths.h"
#include "Text.h"

namespace {

// In bytes, on every file system that this program is likely to meet.
constexpr qsizetype LongestName = 255;

bool isImageName(QStringView name, const QString& prefix, const QString& extension) {
    return Text::equal(name.left(prefix.size()), prefix) &&
           Text::equal(name.right(extension.size()), extension);
}

QString versionIn(const QString& name, const QString& prefix, const QString& extension) {
    const qsizetype length = name.size() - prefix.size() - extension.size();
    return Text::Mid(Text::Trim(name), prefix.size() + 1, std::max<qsizetype>(length, 0));
}

bool isUsableName(const QString& name) {
    return name.size() <= LongestName && name.toUtf8().size() <= LongestName &&
           FTPPaths::isPlainFileName(name) && std::ranges::all_of(name, [](QChar c) { return c.isPrint(); });
}

bool isLineEnd(QChar c) {
    return c == u'\n' || c == u'\r';
}

}  // namespace

QString ImageNames::newest(const QString& prefix, const QString& extension, const QStringList& names,
                           std::int32_t& index) {
    QString best;
    for (qsizetype i = 0; i < names.size(); ++i) {
        if (!isImageName(names[i], prefix, extension))
            continue;
        const QString candidate = versionIn(names[i], prefix, extension);
        if (Text::Val(best) < Text::Val(candidate)) {
            best = candidate;
            index = static_cast<std::int32_t>(i);
        }
    }
    return best;
}

QStringList ImageNames::newestFirst(const QString& prefix, const QString& extension,
                                    const QStringList& names) {
    const auto versionOf = [&](const QString& name) { return Text::Val(versionIn(name, prefix, extension)); };
    QStringList images;
    std::ranges::copy_if(names, std::back_inserter(images), [&](const QString& name) {
        return isImageName(name, prefix, extension) && versionOf(name) > 0;
    });
    std::ranges::sort(images, std::ranges::greater{},
                      [&](const QString& name) { return std::pair(versionOf(name), name); });
    return images;
}

QString ImageNames::shownVersion(const QString& name) {
    return Text::Format(Text::Val(versionIn(name, Prefix, Extension)), u"00\\.00");
}

QString ImageNames::newerThan(double baseline, const QString& prefix, const QString& extension,
                              const QStringList& list) {
    std::int32_t index = 0;
    const QString best = newest(prefix, extension, list, index);
    return baseline < Text::Val(best) ? list[index] : QString();
}

Task<QStringList> ImageNames::inListing(Clock& clock, QString listing) {
    QStringList names;
    qsizetype begin = 0;
    while (begin < listing.size()) {
        const auto end = std::find_if(listing.cbegin() + begin, listing.cend(), isLineEnd) - listing.cbegin();
        const QString name = Text::Trim(QStringView(listing).sliced(begin, end - begin));
        if (isUsableName(name))
            names += name;
        begin = end + 1;
        co_await clock.breathe();
    }
    co_return names;
}
