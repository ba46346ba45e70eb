#pragma once

#include "widgets/preview/PreviewMaker.h"

#include <QImage>
#include <QString>

#include <cstddef>

namespace veilkeep {

// What the quick preview shows of one item.
struct QuickContent {
    enum class Kind {
        Image, // page and pages count where it has several
        Text,
        Facts,   // nothing but what is known about it; with an image where it has one (a film)
        Missing, // nothing lies there
    };

    Kind kind = Kind::Facts;
    ItemType type = {};
    QImage image = {};
    int page = 0;
    int pages = 1;
    QString text = {};
    bool isCut = false;      // there is more text
    std::size_t entries = 0; // of a folder
    QString created = {};
    QString modified = {};
};

// At most 256 KiB of text, and an image within the bound in pixels. Waits for the disk: any thread but the
// interface's.
QuickContent quickContentOf(const PreviewSubject& subject, const PreviewMaker& maker, const ImageWish& wish,
                            const WorkStop& stop);

} // namespace veilkeep
