#pragma once

#include "filelist/FileListActions.h"

#include <QFont>
#include <QPoint>
#include <QRect>

namespace veilkeep {

// Where the parts of a row of the files table lie: image, name above place, size, and its two buttons.
struct RowLayout {
    using Part = FileListActions::RowPart;

    QRect row;
    QRect image;
    QRect name;
    QRect place;
    QRect size;
    QRect reveal;
    QRect onOff;

    RowLayout(const QRect& row, const QFont& font, int sizeWidth, Qt::LayoutDirection direction);

    Part partAt(const QPoint& position) const; // buttons answer a little around them too
    QRect rectOf(Part part) const;             // Elsewhere: what tool tips take for the rest of the row

    static int heightFor(const QFont& font);
    static QFont placeFont(const QFont& font);
};

} // namespace veilkeep
