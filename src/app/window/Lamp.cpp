#include "Lamp.h"

#include <QEvent>

Lamp::Lamp(const QString& text, const QColor& colour) : QLabel(text), m_colour(colour) {
    setAlignment(Qt::AlignCenter);
    setFrameShape(QFrame::StyledPanel);
    setMargin(6);
    QFont large = font();
    large.setPointSize(18);
    setFont(large);
    // As wide as it is when lit, so that nothing moves when it goes on and off.
    large.setBold(true);
    setMinimumWidth(QFontMetrics(large).horizontalAdvance(text) + 28);
}

void Lamp::setLit(bool lit) {
    QFont newFont = font();
    newFont.setBold(lit);
    setFont(newFont);
    setEnabled(lit);
    paintState();
}

void Lamp::changeEvent(QEvent* event) {
    QLabel::changeEvent(event);
    if (event->type() == QEvent::EnabledChange)
        paintState();
}

void Lamp::paintState() {
    const bool isLit = isEnabled() && font().bold();
    QPalette colours;
    if (isLit) {
        colours.setColor(QPalette::Window, m_colour);
        colours.setColor(QPalette::WindowText, Qt::white);
    }
    setAutoFillBackground(isLit);
    setPalette(colours);
}
