#include "TrendsPainting.h"

#include <QDateTime>
#include <QPolygonF>

namespace {

constexpr double LinesAStep = 1.5;  // height of a step of the scale at least, in lines of text
constexpr double Gap = 6;

QColor mixed(const QColor& a, const QColor& b, double shareOfA) {
    const auto part = [shareOfA](int x, int y) {
        return static_cast<int>(shareOfA * x + (1 - shareOfA) * y);
    };
    return {part(a.red(), b.red()), part(a.green(), b.green()), part(a.blue(), b.blue())};
}

// The user's clock at a time on the other one.
std::int64_t shownAt(const Trends& trends, Trends::Milliseconds time) {
    const Trends::Sample& last = trends.samples().last();
    return last.shown + (time - last.at).count();
}

// An hour has more samples than a window has pixels: those of one pixel's width become one bar from the
// lowest to the highest, which begins where the bar before it ends.
class Curve {
public:
    Curve(QPainter& painter, const QColor& colour) : m_painter(painter), m_colour(colour) {
        m_bars.reserve(4096);
    }
    Curve(const Curve&) = delete;
    Curve& operator=(const Curve&) = delete;
    ~Curve() {
        end();
        m_painter.setPen(Qt::NoPen);
        m_painter.setBrush(m_colour);
        m_painter.drawRects(m_bars.data(), static_cast<int>(m_bars.size()));
        m_painter.setBrush(Qt::NoBrush);
    }

    void add(double x, double y) {
        if (m_isBegun && x - m_last.x() < 1) {
            m_top = std::min(m_top, y);
            m_bottom = std::max(m_bottom, y);
        } else {
            if (m_isBegun)
                connectTo(x, y);
            m_isBegun = true;
            m_top = m_bottom = y;
            m_last.setX(x);
        }
        m_last.setY(y);
    }

    void end() {
        if (std::exchange(m_isBegun, false))
            addBar(m_last.x() + 1);
    }

private:
    void connectTo(double x, double y) {
        const bool isNextPixel = x - m_last.x() < 2;
        if (isNextPixel) {
            m_top = std::min(m_top, y);
            m_bottom = std::max(m_bottom, y);
        }
        addBar(isNextPixel ? x : m_last.x() + 1);
        if (!isNextPixel)
            m_painter.drawLine(m_last, {x, y});
    }

    // As far as the next one: their places are no whole pixels.
    void addBar(double end) {
        const int left = qRound(m_last.x());
        const int top = qRound(m_top);
        m_bars.push_back({left, top, std::max(qRound(end) - left, 1), qRound(m_bottom) - top + 1});
    }

    QPainter& m_painter;
    QColor m_colour;
    std::vector<QRect> m_bars;
    bool m_isBegun = false;
    QPointF m_last;
    double m_top = 0;
    double m_bottom = 0;
};

}  // namespace

TrendsPainting::TrendsPainting(QPainter& painter, const QPalette& palette, const Trends& trends,
                               const TimeAxis& axis, std::optional<Trends::Milliseconds> cursor)
    : m_painter(painter),
      m_palette(palette),
      m_trends(trends),
      m_axis(axis),
      m_cursor(cursor),
      m_metrics(painter.font()),
      m_faint(mixed(palette.text().color(), palette.base().color(), 0.65)),
      m_isDark(palette.base().color().lightness() < 128) {}

double TrendsPainting::leftMargin(const QFontMetrics& metrics) {
    return metrics.horizontalAdvance(QStringLiteral("00000")) + Gap;
}

void TrendsPainting::paint(const QRectF& area) {
    m_painter.fillRect(area, m_palette.base());
    const double text = m_metrics.height();
    const QRectF plots(m_axis.left(), area.top() + 2 * text, m_axis.right() - m_axis.left(),
                       area.height() - 3 * text - Gap);
    if (!m_trends.samples().isEmpty())
        paintTimes(plots);
    const double height = plots.height() / Trends::SeriesCount;
    double top = plots.top();
    for (const SeriesRow& row : SeriesTable) {
        paintStrip(row, QRectF(plots.left(), top, plots.width(), height));
        top += height;
    }
    // Faults have a row of their own, and lie above what they bring with them.
    paintMarks(plots, area.top() + text,
               [](Trends::Mark::Kind kind) { return kind != Trends::Mark::Kind::Fault; });
    paintMarks(plots, area.top(), [](Trends::Mark::Kind kind) { return kind == Trends::Mark::Kind::Fault; });
    paintCursor(plots);
}

void TrendsPainting::paintStrip(const SeriesRow& row, const QRectF& place) {
    const auto limits = m_trends.limits(row.series, m_axis.from(), m_axis.to());
    paintHeading(row, limits, place);
    const QRectF plot = place.adjusted(0, m_metrics.height() + 2, 0, -2);
    if (!limits) {
        m_painter.setPen(m_faint);
        m_painter.drawText(plot, Qt::AlignCenter, QStringLiteral("No values"));
        return;
    }
    const int steps = std::max(1, static_cast<int>(plot.height() / (LinesAStep * m_metrics.height())));
    const Scale scale = scaleFor(limits->lowest, limits->highest, steps, row.finest);
    paintScale(scale, row.decimals, plot);
    paintCurve(row.series, scale, plot);
}

void TrendsPainting::paintHeading(const SeriesRow& row, const std::optional<Trends::Limits>& limits,
                                  const QRectF& place) {
    m_painter.setPen(m_palette.text().color());
    m_painter.drawText(place, Qt::AlignLeft | Qt::AlignTop, QLatin1StringView(row.name));
    if (!limits)
        return;
    m_painter.setPen(m_faint);
    m_painter.drawText(place, Qt::AlignRight | Qt::AlignTop,
                       QStringLiteral("lowest %1, highest %2")
                           .arg(valueText(row, limits->lowest), valueText(row, limits->highest)));
}

void TrendsPainting::paintScale(const Scale& scale, int decimals, const QRectF& plot) {
    const QColor grid = mixed(m_palette.text().color(), m_palette.base().color(), 0.2);
    const int steps = static_cast<int>(std::lround((scale.to - scale.from) / scale.step));
    for (int step = 0; step <= steps; ++step) {
        const double y = plot.bottom() - plot.height() * step / steps;
        m_painter.setPen(grid);
        m_painter.drawLine(QPointF(plot.left(), y), QPointF(plot.right(), y));
        m_painter.setPen(m_faint);
        m_painter.drawText(QRectF(0, y - m_metrics.height() / 2.0, plot.left() - Gap, m_metrics.height()),
                           Qt::AlignRight | Qt::AlignVCenter,
                           QString::number(scale.from + step * scale.step, 'f', decimals));
    }
}

void TrendsPainting::paintCurve(Trends::Series series, const Scale& scale, const QRectF& plot) {
    m_painter.setPen(m_palette.highlight().color());
    Curve curve(m_painter, m_palette.highlight().color());
    const auto& samples = m_trends.samples();
    const double pixelsAUnit = plot.height() / (scale.to - scale.from);
    Trends::Milliseconds previous = m_axis.from();
    for (std::size_t index = m_trends.firstAtOrAfter(m_axis.from());
         index < samples.size() && samples[index].at <= m_axis.to(); ++index) {
        const Trends::Sample& sample = samples[index];
        const float value = sample.value(series);
        if (std::isnan(value))
            continue;
        if (sample.at - previous > Trends::LongestStep)
            curve.end();
        previous = sample.at;
        curve.add(m_axis.x(sample.at),
                  plot.bottom() - (static_cast<double>(value) - scale.from) * pixelsAUnit);
    }
}

void TrendsPainting::paintTimes(const QRectF& plots) {
    const double secondsAPixel = static_cast<double>(m_axis.span().count()) / 1000 / plots.width();
    const QString format =
        m_axis.span() > std::chrono::minutes(10) ? QStringLiteral("HH:mm") : QStringLiteral("HH:mm:ss");
    const double width = m_metrics.horizontalAdvance(QStringLiteral("00:00:00"));
    const std::int64_t step = 1000LL * timeStepFor(secondsAPixel, width * 1.6);
    const std::int64_t from = shownAt(m_trends, m_axis.from());
    for (std::int64_t shown = (from / step + 1) * step;; shown += step) {
        const double x = m_axis.x(m_axis.from() + Trends::Milliseconds(shown - from));
        if (x > plots.right())
            break;
        m_painter.setPen(mixed(m_palette.text().color(), m_palette.base().color(), 0.2));
        m_painter.drawLine(QPointF(x, plots.top()), QPointF(x, plots.bottom()));
        m_painter.setPen(m_faint);
        const QString text = QDateTime::fromMSecsSinceEpoch(shown).toString(format);
        const double taken = m_metrics.horizontalAdvance(text);
        m_painter.drawText(QPointF(std::min(x - taken / 2, plots.right() - taken),
                                   plots.bottom() + Gap / 2 + m_metrics.ascent()),
                           text);
    }
}

QColor TrendsPainting::markColour(Trends::Mark::Kind kind) const {
    if (kind != Trends::Mark::Kind::Fault)
        return m_faint;
    return m_isDark ? QColor(0xFF, 0x8A, 0x80) : QColor(0xB0, 0x20, 0x20);
}

// A label that has no room before the next one is left out; the read-out at the cursor has them all.
void TrendsPainting::paintMarks(const QRectF& plots, double labelTop,
                                bool (*isChosen)(Trends::Mark::Kind kind)) {
    double free = plots.left();
    for (std::size_t index = 0; index < m_trends.marks().size(); ++index) {
        const Trends::Mark& mark = m_trends.marks()[index];
        if (!isChosen(mark.kind) || mark.at < m_axis.from() || mark.at > m_axis.to())
            continue;
        const double x = m_axis.x(mark.at);
        // A filled rectangle is the fastest line there is.
        m_painter.fillRect(QRectF(x, plots.top(), 1, plots.height()), markColour(mark.kind));
        m_painter.setPen(markColour(mark.kind));
        const double width = m_metrics.horizontalAdvance(mark.text);
        const double left = std::min(x, plots.right() - width);
        if (left < free)
            continue;
        m_painter.drawText(QPointF(left, labelTop + m_metrics.ascent()), mark.text);
        free = left + width + Gap;
    }
}

void TrendsPainting::paintCursor(const QRectF& plots) {
    if (!m_cursor || *m_cursor < m_axis.from() || *m_cursor > m_axis.to())
        return;
    const double x = m_axis.x(*m_cursor);
    m_painter.setPen(m_palette.text().color());
    m_painter.drawLine(QPointF(x, plots.top()), QPointF(x, plots.bottom()));
}
