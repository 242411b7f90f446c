#include "LinkButton.h"

#include <QPainter>

namespace {

constexpr int DotSize = 12;
constexpr std::chrono::milliseconds LookPeriod{500};

// Readable on a light and on a dark window.
QColor colourOf(LinkState::Health health) {
    switch (health) {
        case LinkState::Health::Good:
            return {0x2E, 0x9E, 0x4F};
        case LinkState::Health::Waiting:
            return {0xD0, 0x8A, 0x10};
        case LinkState::Health::Bad:
            return {0xD0, 0x40, 0x40};
    }
    return {};
}

}  // namespace

LinkButton::LinkButton() {
    setObjectName(QStringLiteral("LinkState"));
    setFlat(true);
    setAutoDefault(false);
    setIconSize({DotSize, DotSize});
    setToolTip(tr("Port, speed and firmware. Press to go to the port."));
}

void LinkButton::watch(Clock& clock, Look look) {
    m_look.emplace(clock, LookPeriod, [this, look = std::move(look)] { setState(look()); });
    m_look->start(ClockTimer::Mode::Repeating);
}

void LinkButton::setState(const LinkState& state) {
    if (m_state == state)
        return;
    if (!m_state || m_state->health != state.health)
        setIcon(dot(colourOf(state.health)));
    setText(state.text);
    setAccessibleName(tr("Link: %1").arg(state.text));
    m_state = state;
}

void LinkButton::focusInEvent(QFocusEvent* event) {
    setFlat(false);
    QPushButton::focusInEvent(event);
}

void LinkButton::focusOutEvent(QFocusEvent* event) {
    setFlat(true);
    QPushButton::focusOutEvent(event);
}

QIcon LinkButton::dot(const QColor& colour) const {
    QPixmap picture(QSize(DotSize, DotSize) * devicePixelRatio());
    picture.setDevicePixelRatio(devicePixelRatio());
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour);
    painter.drawEllipse(QRectF(1, 1, DotSize - 2, DotSize - 2));
    return picture;
}
