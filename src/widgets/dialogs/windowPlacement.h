#pragma once

class QWidget;

namespace veilkeep {

// Moves the window, frame included, to the middle of its screen's visible area; its size stays. Where windows
// have no places of their own (Wayland) nothing happens.
void betterCenter(QWidget& window);

// The rule for all windows of the program, before they are shown: a sheet over the window that it belongs
// to, as far as the screen reaches, every other one by betterCenter().
void placeWindow(QWidget& window);

} // namespace veilkeep
