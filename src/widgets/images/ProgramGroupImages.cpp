#include "core/log/Log.h"
#include "widgets/images/BoundedImage.h"
#include "widgets/images/DrawnImage.h"
#include "widgets/images/PlainPng.h"
#include "widgets/images/ProgramImages.h"

#include <QByteArray>
#include <QCryptographicHash>
#include <QPainter>

namespace veilkeep {
namespace {

constexpr QSize storedSize(42, 42);
constexpr std::string_view fileNameEnd = ".png"; // which a name of an image may have

QString text(std::string_view bytes) {
    return QString::fromUtf8(bytes.data(), static_cast<qsizetype>(bytes.size()));
}

std::optional<Bytes> pngOf(const QImage& image) {
    if (image.isNull())
        return std::nullopt;
    return Bytes{plainPng(image)};
}

QString digestOf(std::string_view bytes) {
    const QByteArray content = QByteArray::fromRawData(bytes.data(), static_cast<qsizetype>(bytes.size()));
    return QString::fromLatin1(QCryptographicHash::hash(content, QCryptographicHash::Sha1).toHex());
}

// Null where the bytes are no image.
QPixmap pixmapOfIconData(std::string_view iconData, QSize size, qreal devicePixelRatio) {
    if (iconData.empty())
        return {};
    return drawnImage::cached(digestOf(iconData), size, devicePixelRatio, [&](QSize pixels) {
        return imageByScalingToSize(boundedImage::decoded(iconData, pixels), pixels);
    });
}

} // namespace

std::optional<Bytes> ProgramGroupImages::imageNamed(std::string_view name) const {
    if (name.ends_with(fileNameEnd))
        name.remove_suffix(fileNameEnd.size());
    return pngOf(drawnImage::drawn(text(name), storedSize));
}

std::optional<Bytes> ProgramGroupImages::imageAtPath(std::string_view path) const {
    const Result<QImage> image = boundedImage::atPath(std::string(path), storedSize);
    if (!image) {
        logError("image of a group", image.error());
        return std::nullopt;
    }
    return pngOf(imageByScalingToSize(*image, storedSize));
}

std::optional<Bytes> ProgramGroupImages::imageIn(std::string_view content) const {
    return pngOf(imageByScalingToSize(boundedImage::decoded(content, storedSize), storedSize));
}

QPixmap groupIcon(const Group& group, QSize size, qreal devicePixelRatio) {
    const QPixmap stored = pixmapOfIconData(group.iconData(), size, devicePixelRatio);
    const QString ownName =
        stored.isNull() ? QString::fromLatin1(Group::defaultIconName) : text(group.iconPath());
    if (drawnImage::resourceOf(ownName).isEmpty())
        return stored;
    return drawnImage::cached(ownName, size, devicePixelRatio,
                              [&](QSize pixels) { return drawnImage::drawn(ownName, pixels); });
}

QImage imageByScalingToSize(const QImage& image, QSize size) {
    if (image.isNull() || size.isEmpty())
        return {};
    QImage within(size, QImage::Format_ARGB32_Premultiplied);
    within.fill(Qt::transparent);
    const QImage scaled = image.convertToFormat(QImage::Format_ARGB32_Premultiplied)
                              .scaled(size, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    QPainter painter(&within);
    painter.drawImage(QPointF((size.width() - scaled.width()) / 2, (size.height() - scaled.height()) / 2),
                      scaled);
    return within;
}

} // namespace veilkeep
