#include "ProgressWheel.h"

#include <algorithm>

#include <QPainter>

namespace {

constexpr int SpokeCount = 12;
constexpr int StepMilliseconds = 80;
constexpr double InnerEnd = 0.45;  // of the radius
constexpr double SpokeWidth = 0.16;

}  // namespace

QSize ProgressWheel::sizeHint() const {
    const int side = fontMetrics().height() * 3 / 2;
    return {side, side};
}

void ProgressWheel::paintEvent(QPaintEvent* /*event*/) {
    const double radius = std::min(width(), height()) / 2.0;
    QColor color = palette().color(QPalette::WindowText);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(rect().center());
    painter.rotate(360.0 * m_step / SpokeCount);
    // The brightest spoke leads, the others fade behind it.
    for (int spoke = 0; spoke < SpokeCount; ++spoke) {
        color.setAlphaF(1.0F - static_cast<float>(spoke) / SpokeCount);
        painter.setPen(QPen(color, radius * SpokeWidth, Qt::SolidLine, Qt::RoundCap));
        painter.drawLine(QPointF(0, -radius * InnerEnd), QPointF(0, -radius * (1 - SpokeWidth)));
        painter.rotate(-360.0 / SpokeCount);
    }
}

void ProgressWheel::showEvent(QShowEvent* /*event*/) {
    m_timer.start(StepMilliseconds, this);
}

void ProgressWheel::hideEvent(QHideEvent* /*event*/) {
    m_timer.stop();
}

void ProgressWheel::timerEvent(QTimerEvent* /*event*/) {
    m_step = (m_step + 1) % SpokeCount;
    update();
}
