#pragma once

#include <QRect>

namespace veilkeep {

// Where a window of that size goes: exactly into the middle of its screen's visible area.
inline QRect betterCenter(const QSize& window, const QRect& visibleArea) {
    return {QPoint(visibleArea.x() + (visibleArea.width() - window.width()) / 2,
                   visibleArea.y() + (visibleArea.height() - window.height()) / 2),
            window};
}

} // namespace veilkeep
