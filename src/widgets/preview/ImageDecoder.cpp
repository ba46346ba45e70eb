#include "widgets/preview/ImageDecoder.h"

#include "widgets/preview/SelfContainedSvg.h"

#include <algorithm>

#include <QBuffer>
#include <QImageReader>

namespace veilkeep {
namespace {

constexpr qint64 mebibyte = qint64{1} << 20;
constexpr qint64 mostBytes = 256 * mebibyte;
constexpr qint64 mostBytesOfDrawing = 8 * mebibyte;

// A decoder of these has the whole image in memory before it is scaled; that of JPEG does not.
constexpr qint64 mostPixels = 50'000'000;
constexpr qint64 mostPixelsOfJpeg = 120'000'000;

bool isDrawing(const QByteArray& format) {
    return format == "svg";
}

bool isDocument(const QByteArray& format) {
    return format == "pdf";
}

qint64 pixelLimitOf(const QByteArray& format) {
    return format == "jpeg" || format == "jpg" ? mostPixelsOfJpeg : mostPixels;
}

// Compressed drawings can be of any size once they are read.
QByteArray formatFor(const QString& mimeType) {
    const QList<QByteArray> formats = QImageReader::imageFormatsForMimeType(mimeType.toLatin1());
    return formats.isEmpty() || formats.first() == "svgz" ? QByteArray() : formats.first();
}

QSize scaledInto(QSize bound, QSize size, bool mayGrow) {
    if (!mayGrow && size.width() <= bound.width() && size.height() <= bound.height())
        return size;
    return size.scaled(bound, Qt::KeepAspectRatio).expandedTo({1, 1});
}

DecodedImage read(QImageReader& reader, const ImageWish& wish) {
    const QByteArray format = reader.format();
    const bool isVector = isDrawing(format) || isDocument(format);
    DecodedImage decoded;
    if (isDocument(format)) {
        decoded.pages = std::max(1, reader.imageCount());
        if (wish.page > 0 && !reader.jumpToImage(wish.page))
            return decoded;
        reader.setBackgroundColor(Qt::white);
    }
    const QSize size = reader.size();
    if (size.isEmpty() || (!isVector && qint64{size.width()} * size.height() > pixelLimitOf(format)))
        return decoded;
    reader.setAutoTransform(true);
    const bool isTurned = reader.transformation() & QImageIOHandler::TransformationRotate90;
    reader.setScaledSize(scaledInto(isTurned ? wish.bound.transposed() : wish.bound, size, isVector));
    decoded.image = reader.read();
    if (!decoded.image.isNull() && decoded.image.format() != QImage::Format_RGB32)
        decoded.image.convertTo(QImage::Format_ARGB32_Premultiplied);
    return decoded;
}

DecodedImage decodeDrawing(StoppableFile& file, const ImageWish& wish) {
    if (file.size() > mostBytesOfDrawing)
        return {};
    QByteArray drawing = selfContainedSvg(file.readAll());
    QBuffer buffer(&drawing);
    QImageReader reader(&buffer, "svg");
    return read(reader, wish);
}

DecodedImage decode(const OpenedItem& item, const QByteArray& format, const ImageWish& wish,
                    const WorkStop& stop) {
    StoppableFile file(item.descriptor(), stop);
    if (!file.isOpen() || file.size() == 0 || file.size() > mostBytes)
        return {};
    if (isDrawing(format))
        return decodeDrawing(file, wish);
    QImageReader reader(&file, format);
    return read(reader, wish);
}

} // namespace

DecodedImage decodeImage(const OpenedItem& item, const ItemType& type, const ImageWish& wish,
                         const WorkStop& stop) {
    if (item.descriptor() < 0)
        return {};
    for (const QString& mimeType : {mimeTypeOfContent(item, stop), type.mimeType})
        if (const QByteArray format = formatFor(mimeType); !format.isEmpty())
            if (DecodedImage decoded = decode(item, format, wish, stop); !decoded.image.isNull())
                return decoded;
    return {};
}

QImage decodeImageFile(const OpenedItem& item, QSize bound, const WorkStop& stop) {
    const ItemType unknown;
    return decodeImage(item, unknown, {.bound = bound}, stop).image;
}

} // namespace veilkeep
