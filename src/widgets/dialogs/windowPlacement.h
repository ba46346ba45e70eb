#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>

class QWidget;

namespace veilkeep {

// Where a window of that size lies in the middle of the visible area.
QPoint betterCenter(QSize window, const QRect& visible);

// Moves the window, frame included, to the middle of its screen's visible area; its size stays. Where windows
// have no places of their own (Wayland) nothing happens.
void betterCenter(QWidget& window);

// The rule for all windows of the program, before they are shown: a sheet over the window that it belongs
// to, as far as the screen reaches, every other one by betterCenter().
void placeWindow(QWidget& window);

} // namespace veilkeep
