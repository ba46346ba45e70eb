#pragma once

#include "core/records/Group.h"
#include "groups/GroupImages.h"

#include <QColor>
#include <QIcon>
#include <QImage>
#include <QPixmap>
#include <QSize>
#include <QString>

#include <optional>
#include <string_view>

namespace veilkeep {

// The program's own images, one family of SVGs among its resources. Nothing is read before it is drawn, and
// then for exactly the size and scale in question. Main thread but for imageByScalingToSize().
namespace programImage {

// In its own colours: "folder-pictures", "MultipleSelection", "com.ostrel.Veilkeep". Null, with a line in the
// log, for a name that there is none of.
QIcon named(const QString& name);

// In one colour, that of the application's text at the moment of drawing: fainter while disabled, that of
// highlighted text for QIcon::Selected.
QIcon symbol(const QString& name);

// For whoever paints with a palette of its own. Null for a name that there is none of.
QPixmap symbolPixmap(const QString& name, QSize size, qreal devicePixelRatio, const QColor& colour);

bool exists(const QString& name);

} // namespace programImage

// The images that groups are given.
class ProgramGroupImages : public GroupImages {
public:
    std::optional<Bytes> imageNamed(std::string_view name) const override;

    // Of a file with an extension and a content of tif, bmp, gif, jpg, png or jp2; what else is there, or is
    // too large, gives nothing and a line in the log.
    std::optional<Bytes> imageAtPath(std::string_view path) const override;
    std::optional<Bytes> imageIn(std::string_view content) const override;
};

// The image that shows the group: its icon, or the default one where that is missing or no image. Icons that
// are the program's own are drawn anew, sharp at every scale.
QPixmap groupIcon(const Group& group, QSize size, qreal devicePixelRatio);

// The whole image within the size, its proportions kept, centred on a transparent ground. Null for a null
// image.
QImage imageByScalingToSize(const QImage& image, QSize size);

} // namespace veilkeep
