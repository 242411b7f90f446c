// Draws the recorded values as strip charts over one time axis, with marks at what happened.
#pragma once

#include <QPainter>
#include <QPalette>

#include "Scale.h"
#include "SeriesTable.h"
#include "TimeAxis.h"

class TrendsPainting {
public:
    // `cursor` is the time that the user looks at.
    TrendsPainting(QPainter& painter, const QPalette& palette, const Trends& trends, const TimeAxis& axis,
                   std::optional<Trends::Milliseconds> cursor);

    // Room that the axis of the values takes at the left.
    static double leftMargin(const QFontMetrics& metrics);

    void paint(const QRectF& area);

private:
    void paintStrip(const SeriesRow& row, const QRectF& place);
    void paintHeading(const SeriesRow& row, const std::optional<Trends::Limits>& limits, const QRectF& place);
    void paintScale(const Scale& scale, int decimals, const QRectF& plot);
    void paintCurve(Trends::Series series, const Scale& scale, const QRectF& plot);
    void paintTimes(const QRectF& plots);
    void paintMarks(const QRectF& plots, double labelTop, bool (*isChosen)(Trends::Mark::Kind kind));
    void paintCursor(const QRectF& plots);
    QColor markColour(Trends::Mark::Kind kind) const;

    QPainter& m_painter;
    const QPalette& m_palette;
    const Trends& m_trends;
    const TimeAxis& m_axis;
    std::optional<Trends::Milliseconds> m_cursor;
    QFontMetrics m_metrics;
    QColor m_faint;  // grid and less important text
    bool m_isDark;
};
