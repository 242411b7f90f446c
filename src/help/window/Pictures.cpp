#include "Pictures.h"

#include <QImage>

// Outside of any namespace, as the resource compiler asks.
static void loadResources() {
    Q_INIT_RESOURCE(help);
}

namespace {

QString pathOf(const QString& name) {
    loadResources();
    return QStringLiteral(":/help/%1.png").arg(name);
}

// Drawn at twice the size, for screens of high resolution.
constexpr int Density = 2;

// In its own pixels: with a density a mask would be drawn over it as large as that.
QImage image(const QString& name) {
    QImage result(pathOf(name + QStringLiteral("@2x")));
    result.setDevicePixelRatio(1);
    return result;
}

}  // namespace

QIcon Pictures::icon(const QString& name) {
    return QIcon(pathOf(name));
}

QPixmap Pictures::masked(const QString& name, const QString& mask) {
    QImage picture = image(name).convertToFormat(QImage::Format_ARGB32);
    QImage shape = image(mask).convertToFormat(QImage::Format_Grayscale8);
    shape.invertPixels();
    QImage opaque(shape.bits(), shape.width(), shape.height(), shape.bytesPerLine(), QImage::Format_Alpha8);
    picture.setAlphaChannel(opaque);
    picture.setDevicePixelRatio(Density);
    return QPixmap::fromImage(picture);
}
