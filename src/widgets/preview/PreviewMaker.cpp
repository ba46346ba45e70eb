#include "widgets/preview/PreviewMaker.h"

#include "widgets/preview/ThumbnailerRun.h"

#include <algorithm>

namespace veilkeep {

DecodedImage PreviewMaker::imageOf(const PreviewSubject& subject, const OpenedItem& item,
                                   const ItemType& type, const ImageWish& wish, const WorkStop& stop) const {
    if (item.kind() != OpenedItem::Kind::RegularFile || stop.isStopped())
        return {};
    if (type.family != ItemType::Family::Video && type.family != ItemType::Family::Audio)
        return decodeImage(item, type, wish, stop);
    const Thumbnailer* const thumbnailer = m_thumbnailers.forMimeType(type.mimeType.toStdString());
    if (!thumbnailer || item.status().st_size == 0)
        return {};
    const int size = std::max(wish.bound.width(), wish.bound.height());
    return {.image = imageByThumbnailer(*thumbnailer, subject.path, size, m_thumbnailerLimit, stop)};
}

ItemType typeOf(const PreviewSubject& subject, const OpenedItem& item, const WorkStop& stop) {
    return item.kind() == OpenedItem::Kind::Missing ? itemTypeOf(subject.name, subject.isFolder)
                                                    : itemTypeOf(subject.name, item, stop);
}

} // namespace veilkeep
