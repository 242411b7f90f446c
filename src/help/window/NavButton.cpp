#include "NavButton.h"

#include <QPainter>
#include <QStyleOptionFocusRect>

#include "Pictures.h"

namespace {

constexpr int LightLess = 50;
constexpr int DarkLess = 40;

QColor darkened(const QColor& color, int less) {
    return {std::max(color.red() - less, 0), std::max(color.green() - less, 0),
            std::max(color.blue() - less, 0)};
}

bool canLose(const QColor& color, int less) {
    return color.red() >= less && color.green() >= less && color.blue() >= less;
}

QPixmap pixmap(const QString& picture, const QString& mask) {
    if (!mask.isEmpty())
        return Pictures::masked(picture, mask);
    return Pictures::icon(picture).pixmap(QSize(16, 16), 2);
}

}  // namespace

BevelShades::BevelShades(const QPalette& palette)
    : ground(palette.color(QPalette::Mid)),
      LightShade(darkened(palette.color(QPalette::Light), LightLess)),
      DarkShade(canLose(ground, DarkLess) ? darkened(ground, DarkLess) : ground) {}

NavButton::NavButton(const NavPictures& pictures, QWidget* parent)
    : QAbstractButton(parent),
      m_picture(pixmap(pictures.picture, pictures.mask)),
      m_livePicture(pictures.livePicture.isEmpty() ? m_picture
                                                   : pixmap(pictures.livePicture, pictures.mask)) {
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
}

void NavButton::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const BevelShades shades(palette());
    paintGround(painter, shades);
    const QPixmap& picture = isEnabled() ? m_livePicture : m_picture;
    const QSizeF drawn = picture.deviceIndependentSize();
    const QPointF pressed = isDown() ? QPointF(1, 1) : QPointF();
    painter.drawPixmap(QPointF((width() - drawn.width()) / 2, (height() - drawn.height()) / 2) + pressed,
                       picture);
    paintEdges(painter, shades);
}

void NavButton::paintGround(QPainter& painter, const BevelShades& shades) const {
    painter.fillRect(rect(), isChecked() ? palette().color(QPalette::Base) : shades.ground);
    if (!isCheckable())
        return;
    painter.setPen(shades.DarkShade);
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

void NavButton::paintEdges(QPainter& painter, const BevelShades& shades) const {
    if (isEnabled() && underMouse()) {
        painter.setPen(shades.LightShade);
        painter.drawRect(rect().adjusted(0, 0, -1, -1));
    }
    if (!hasFocus())
        return;
    painter.setPen(palette().color(QPalette::Highlight));
    painter.drawRect(rect().adjusted(1, 1, -2, -2));
}

void NavButton::enterEvent(QEnterEvent* event) {
    QAbstractButton::enterEvent(event);
    update();
}

void NavButton::leaveEvent(QEvent* event) {
    QAbstractButton::leaveEvent(event);
    update();
}

void NavGround::paintEvent(QPaintEvent* /*event*/) {
    QPainter(this).fillRect(rect(), BevelShades(palette()).ground);
}
