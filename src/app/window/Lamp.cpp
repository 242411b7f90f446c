#include "Lamp.h"

#include <QEvent>

Lamp::Lamp(const QString& text, const QString& name, const QColor& colour)
    : QLabel(text), m_name(name), m_colour(colour) {
    setAlignment(Qt::AlignCenter);
    setFrameShape(QFrame::StyledPanel);
    setMargin(6);
    QFont large = font();
    large.setPointSize(18);
    setFont(large);
    // As wide as it is when lit, so that nothing moves when it goes on and off.
    large.setBold(true);
    setMinimumWidth(QFontMetrics(large).horizontalAdvance(text) + 28);
    paintState();
}

void Lamp::setLit(bool isLit) {
    m_isLit = isLit;
    QFont newFont = font();
    newFont.setBold(isLit);
    setFont(newFont);
    setEnabled(isLit);
    paintState();
}

void Lamp::setDim(bool isDim) {
    m_isDim = isDim;
    paintState();
}

void Lamp::changeEvent(QEvent* event) {
    QLabel::changeEvent(event);
    if (event->type() == QEvent::EnabledChange)
        paintState();
}

void Lamp::paintState() {
    const bool isShining = m_isLit && isEnabled() && !m_isDim;
    QPalette colours;
    if (isShining) {
        colours.setColor(QPalette::Window, m_colour);
        colours.setColor(QPalette::WindowText, Qt::white);
    } else {
        // The style's own grey is too pale to be read from across the room.
        const QColor readable = colours.color(QPalette::Active, QPalette::WindowText);
        colours.setColor(QPalette::Disabled, QPalette::WindowText, readable);
    }
    setAutoFillBackground(isShining);
    setPalette(colours);
    setAccessibleName(m_name + (isShining ? tr(" lit") : tr(" not lit")));
}
