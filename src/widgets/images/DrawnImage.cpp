#include "widgets/images/DrawnImage.h"

#include <QFile>
#include <QPainter>
#include <QPixmapCache>
#include <QSvgRenderer>

// Resources of a static library are known only once somebody asks for them; asking is not possible in a
// namespace.
static void registerImages() {
    Q_INIT_RESOURCE(program_images);
}

namespace veilkeep {

QString drawnImage::resourceOf(const QString& name) {
    registerImages();
    const QString path = QStringLiteral(":/images/%1.svg").arg(name);
    return !name.contains(u'/') && QFile::exists(path) ? path : QString();
}

QImage drawnImage::drawn(const QString& name, QSize pixels) {
    const QString resource = resourceOf(name);
    if (resource.isEmpty() || pixels.isEmpty())
        return {};
    QSvgRenderer renderer(resource);
    renderer.setAspectRatioMode(Qt::KeepAspectRatio);
    QImage image(pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    renderer.render(&painter, QRectF(QPointF(), pixels));
    return image;
}

QPixmap drawnImage::cached(const QString& key, QSize size, qreal devicePixelRatio,
                           const std::function<QImage(QSize pixels)>& make) {
    const QSize pixels = (QSizeF(size) * devicePixelRatio).toSize();
    const QString whole = QStringLiteral("veilkeep/%1/%2x%3@%4")
                              .arg(key)
                              .arg(pixels.width())
                              .arg(pixels.height())
                              .arg(devicePixelRatio);
    QPixmap pixmap;
    if (QPixmapCache::find(whole, &pixmap))
        return pixmap;
    pixmap = QPixmap::fromImage(make(pixels));
    pixmap.setDevicePixelRatio(devicePixelRatio);
    if (!pixmap.isNull())
        QPixmapCache::insert(whole, pixmap);
    return pixmap;
}

} // namespace veilkeep
