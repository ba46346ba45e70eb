#pragma once

#include "widgets/preview/ImageDecoder.h"
#include "widgets/preview/Thumbnailers.h"

#include <chrono>
#include <string>

namespace veilkeep {

// What is to be made an image of. All copied: records belong to the main thread.
struct PreviewSubject {
    std::string path; // where it is now
    std::string name; // the original one
    bool isFolder = false;
};

// Makes images of items: by itself, or by a thumbnailer for films and sounds. Shared by the threads that do.
class PreviewMaker {
public:
    explicit PreviewMaker(std::chrono::milliseconds thumbnailerLimit)
        : m_thumbnailerLimit(thumbnailerLimit) {}

    // Null image where there is none to be had.
    DecodedImage imageOf(const PreviewSubject& subject, const OpenedItem& item, const ItemType& type,
                         const ImageWish& wish, const WorkStop& stop) const;

private:
    const std::chrono::milliseconds m_thumbnailerLimit;
    Thumbnailers m_thumbnailers;
};

// By the content, and where nothing can be seen of that by the name.
ItemType typeOf(const PreviewSubject& subject, const OpenedItem& item, const WorkStop& stop);

} // namespace veilkeep
