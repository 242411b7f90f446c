// A button of the help window that paints its picture on the ground of the navigation strip.
#pragma once

#include <QAbstractButton>
#include <QPixmap>

// The shades that the window's bevel colours give.
struct BevelShades {
    explicit BevelShades(const QPalette& palette);

    QColor ground;
    QColor LightShade;
    QColor DarkShade;
};

// Names of pictures. Without a mask the picture has its own transparency; without a live picture the one is
// shown always.
struct NavPictures {
    QString picture;
    QString livePicture;
    QString mask;
};

// Live while it is enabled. Pointed at, a live button shows an edge. A checkable one is a tab: active or not.
class NavButton final : public QAbstractButton {
public:
    NavButton(const NavPictures& pictures, QWidget* parent);

    QSize sizeHint() const override { return size(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    void paintGround(QPainter& painter, const BevelShades& shades) const;
    void paintEdges(QPainter& painter, const BevelShades& shades) const;

    QPixmap m_picture;
    QPixmap m_livePicture;
};

// The ground of the navigation strip.
class NavGround final : public QWidget {
public:
    using QWidget::QWidget;

protected:
    void paintEvent(QPaintEvent* event) override;
};
