#pragma once

#include "widgets/preview/Previews.h"

#include <QImage>
#include <QObject>
#include <QVariant>

#include <functional>

namespace veilkeep {

// Turns the path of a selected item into the image that shows it. Owned by whoever shows that; main thread.
class FileIconValueTransformer {
public:
    explicit FileIconValueTransformer(Previews& previews) : m_previews(previews) {} // not owned

    // A path, with or without "~", as bytes (QByteArray) or text: told later is the preview of what lies
    // there, else the image of several selected items, which an empty path is told at once. Anything but a
    // path is a line in the log and a null image.
    void transformedValue(const QVariant& value, QObject* context,
                          std::function<void(const QImage& image)> done);

private:
    Previews& m_previews;
};

} // namespace veilkeep
