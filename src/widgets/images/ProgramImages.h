#pragma once

#include "core/records/Group.h"
#include "groups/GroupImages.h"

#include <QIcon>
#include <QImage>
#include <QPixmap>
#include <QSize>
#include <QString>

#include <optional>
#include <string_view>

namespace veilkeep {

// The program's own images, one family of SVGs among its resources. Icons are drawn anew for each size and
// scale. Main thread but for imageByScalingToSize().
namespace programImage {

// In its own colours: "folder-pictures", "MultipleSelection", "com.ostrel.Veilkeep". Null, with a line in the
// log, for a name that there is none of.
QIcon named(const QString& name);

// In one colour, that of the palette's text at the moment of drawing, fainter while disabled.
QIcon symbol(const QString& name);

bool exists(const QString& name);

} // namespace programImage

// The images that groups are given.
class ProgramGroupImages : public GroupImages {
public:
    std::optional<Bytes> imageNamed(std::string_view name) const override;
    std::optional<Bytes> imageAtPath(std::string_view path) const override; // tif, bmp, gif, jpg, png, jp2
};

// The image that shows the group: its icon, or the default one where that is missing or no image.
QPixmap groupIcon(const Group& group, QSize size, qreal devicePixelRatio);

// The whole image within the size, its proportions kept, centred on a transparent ground.
QImage imageByScalingToSize(const QImage& image, QSize size);

} // namespace veilkeep
