#pragma once

#include "widgets/preview/ItemType.h"

#include <QImage>
#include <QSize>

namespace veilkeep {

// What a decoder is asked for.
struct ImageWish {
    QSize bound; // pixels; larger images are scaled down, their proportions kept, drawings up as well
    int page = 0;
};

struct DecodedImage {
    QImage image; // null where none could be made
    int pages = 1;
};

// Reads images, drawings (SVG) and pages (PDF, where Qt has a reader for it), all of them bounded: what is
// too large in bytes or pixels is none. Any thread; a stop ends it soon.
DecodedImage decodeImage(const OpenedItem& item, const ItemType& type, const ImageWish& wish,
                         const WorkStop& stop);

// The same for a file that is known to be an image, whatever its name.
QImage decodeImageFile(const OpenedItem& item, QSize bound, const WorkStop& stop);

} // namespace veilkeep
