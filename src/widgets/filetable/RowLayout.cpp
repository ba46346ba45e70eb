#include "widgets/filetable/RowLayout.h"

#include "widgets/controls/RowControls.h"

#include <QFontMetrics>
#include <QStyle>

#include <algorithm>

namespace veilkeep {
namespace {

constexpr int leastHeight = 52;
constexpr int imageWidth = 32;
constexpr int margin = 14;
constexpr int gap = 12;
constexpr int padding = 6;
constexpr int buttonsWidth = 36; // that tool tips leave out
constexpr int reach = 4;

} // namespace

RowLayout::RowLayout(const QRect& whole, const QFont& font, int sizeWidth, Qt::LayoutDirection direction)
    : row(whole) {
    const auto inMiddle = [&](int left, QSize wanted) {
        return QRect(QPoint(left, whole.center().y() + 1 - wanted.height() / 2), wanted);
    };
    const int nameHeight = QFontMetrics(font).height();
    const int placeHeight = QFontMetrics(placeFont(font)).height();
    onOff = inMiddle(whole.right() + 1 - margin - switchSize.width(), switchSize);
    reveal = inMiddle(onOff.left() - gap - revealButtonSize.width(), revealButtonSize);
    size = inMiddle(reveal.left() - gap - sizeWidth, {sizeWidth, nameHeight});
    image = inMiddle(whole.left() + margin + 2, {imageWidth, imageWidth});
    const int textLeft = image.right() + 1 + margin;
    const int top = whole.center().y() + 1 - (nameHeight + placeHeight) / 2;
    const int textWidth = std::max(0, size.left() - gap - textLeft);
    name = QRect(textLeft, top, textWidth, nameHeight);
    place = QRect(textLeft, top + nameHeight, textWidth, placeHeight);
    for (QRect* const part : {&image, &name, &place, &size, &reveal, &onOff})
        *part = QStyle::visualRect(direction, whole, *part);
}

RowLayout::Part RowLayout::partAt(const QPoint& position) const {
    for (const Part part : {Part::Switch, Part::Reveal})
        if (rectOf(part).adjusted(-reach, -reach, reach, reach).contains(position))
            return part;
    return Part::Elsewhere;
}

QRect RowLayout::rectOf(Part part) const {
    switch (part) {
    case Part::Switch:
        return onOff;
    case Part::Reveal:
        return reveal;
    case Part::Elsewhere:
        break;
    }
    return onOff.center().x() > row.center().x() ? row.adjusted(0, 0, -buttonsWidth, 0)
                                                 : row.adjusted(buttonsWidth, 0, 0, 0);
}

int RowLayout::heightFor(const QFont& font) {
    return std::max(leastHeight,
                    QFontMetrics(font).height() + QFontMetrics(placeFont(font)).height() + 2 * padding);
}

QFont RowLayout::placeFont(const QFont& font) {
    constexpr qreal factor = 0.87;
    QFont small = font;
    if (font.pixelSize() > 0)
        small.setPixelSize(qRound(font.pixelSize() * factor));
    else
        small.setPointSizeF(font.pointSizeF() * factor);
    return small;
}

} // namespace veilkeep
