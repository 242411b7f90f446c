#include "TrendsView.h"

#include <cmath>

#include <QDateTime>
#include <QPainter>
#include <QWheelEvent>

#include "TrendsPainting.h"

namespace {

constexpr QSize DesignSize(720, 560);
constexpr double ZoomStep = 1.25;
constexpr double WheelNotch = 120;
constexpr double RightMargin = 10;

}  // namespace

TrendsView::TrendsView(const Trends& trends) : m_trends(trends), m_axis(trends) {
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    setMinimumSize(DesignSize / 2);
}

QSize TrendsView::sizeHint() const {
    return DesignSize;
}

void TrendsView::setPaused(bool paused) {
    m_axis.setPaused(paused);
    refresh();
}

void TrendsView::zoom(double factor) {
    m_axis.zoom(factor, m_cursor.value_or(m_axis.to()));
    refresh();
}

void TrendsView::refresh() {
    update();
    const QString text = readOut();
    if (text == accessibleDescription())
        return;
    setAccessibleDescription(text);
    Q_EMIT readOutChanged(text);
}

const Trends::Sample* TrendsView::pointedAt() const {
    if (m_cursor)
        return m_trends.nearest(*m_cursor);
    return m_trends.samples().isEmpty() ? nullptr : &m_trends.samples().last();
}

QString TrendsView::readOut() const {
    const Trends::Sample* sample = pointedAt();
    if (!sample)
        return m_cursor ? tr("No values at this time") : tr("No values yet: the Operate tab records them");
    QStringList parts{QDateTime::fromMSecsSinceEpoch(sample->shown).toString(QStringLiteral("HH:mm:ss"))};
    for (const SeriesRow& row : SeriesTable)
        parts += QLatin1StringView(row.name) + u' ' + valueText(row, sample->value(row.series));
    for (std::size_t index = 0; index < m_trends.marks().size(); ++index)
        if (std::chrono::abs(m_trends.marks()[index].at - sample->at) <= Trends::SampleLength)
            parts += m_trends.marks()[index].text;
    return parts.join(QStringLiteral(", "));
}

void TrendsView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    TrendsPainting(painter, palette(), m_trends, m_axis, m_cursor).paint(rect());
    if (hasFocus()) {
        painter.setPen(palette().highlight().color());
        painter.drawRect(rect().adjusted(0, 0, -1, -1));
    }
}

void TrendsView::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    m_axis.setPlace(TrendsPainting::leftMargin(fontMetrics()), width() - RightMargin);
}

void TrendsView::wheelEvent(QWheelEvent* event) {
    m_cursor = m_axis.time(event->position().x());
    zoom(std::pow(ZoomStep, -event->angleDelta().y() / WheelNotch));
    event->accept();
}

void TrendsView::mouseMoveEvent(QMouseEvent* event) {
    setCursorTime(m_axis.time(event->position().x()));
}

void TrendsView::leaveEvent(QEvent*) {
    setCursorTime(std::nullopt);
}

void TrendsView::focusOutEvent(QFocusEvent* event) {
    QWidget::focusOutEvent(event);
    setCursorTime(std::nullopt);
}

void TrendsView::setCursorTime(std::optional<Trends::Milliseconds> time) {
    m_cursor = time;
    refresh();
}

void TrendsView::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Plus || event->key() == Qt::Key_Equal)
        zoom(1 / ZoomStep);
    else if (event->key() == Qt::Key_Minus)
        zoom(ZoomStep);
    else if (!moveCursor(event->key()))
        QWidget::keyPressEvent(event);
}

// By one sample, or to an end of what is recorded.
bool TrendsView::moveCursor(int key) {
    const auto& samples = m_trends.samples();
    if (samples.isEmpty() ||
        (key != Qt::Key_Left && key != Qt::Key_Right && key != Qt::Key_Home && key != Qt::Key_End))
        return false;
    const std::size_t last = samples.size() - 1;
    std::size_t index = m_cursor ? std::min(m_trends.firstAtOrAfter(*m_cursor), last) : last;
    if (key == Qt::Key_Left)
        index -= index > 0 ? 1 : 0;
    else if (key == Qt::Key_Right)
        index = std::min(index + 1, last);
    else
        index = key == Qt::Key_Home ? 0 : last;
    m_axis.bringIntoView(samples[index].at);
    setCursorTime(samples[index].at);
    return true;
}
