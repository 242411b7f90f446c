#include "TrendsCsv.h"

#include <cmath>

#include <QDateTime>

#include "SeriesTable.h"

namespace {

QByteArray heading() {
    QByteArray row = "Time";
    for (const SeriesRow& series : SeriesTable) {
        const QByteArray unit = series.unit;
        row += QByteArray(",") + series.name + (unit.isEmpty() ? QByteArray() : " (" + unit + ')');
    }
    return row + ",Event\n";
}

QByteArray timeText(std::int64_t shown) {
    return QDateTime::fromMSecsSinceEpoch(shown).toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")).toLatin1();
}

QByteArray valuesOf(const Trends::Sample& sample) {
    QByteArray row;
    for (const float value : sample.values) {
        row += ',';
        if (!std::isnan(value))
            row += QByteArray::number(value, 'g', 6);
    }
    return row;
}

// The names of faults, modes and bands hold neither commas nor quotes.
QByteArray eventsUpTo(const Trends& trends, std::size_t& mark, Trends::Milliseconds time) {
    QByteArray events;
    for (; mark < trends.marks().size() && trends.marks()[mark].at <= time; ++mark)
        events += (events.isEmpty() ? "" : "; ") + trends.marks()[mark].text.toUtf8();
    return events;
}

}  // namespace

QByteArray trendsCsv(const Trends& trends) {
    QByteArray table = heading();
    std::size_t mark = 0;
    for (std::size_t index = 0; index < trends.samples().size(); ++index) {
        const Trends::Sample& sample = trends.samples()[index];
        table += timeText(sample.shown) + valuesOf(sample) + ',' + eventsUpTo(trends, mark, sample.at) + '\n';
    }
    for (; mark < trends.marks().size(); ++mark)
        table += timeText(trends.marks()[mark].shown) + QByteArray(Trends::SeriesCount + 1, ',') +
                 trends.marks()[mark].text.toUtf8() + '\n';
    return table;
}
