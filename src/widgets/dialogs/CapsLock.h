#pragma once

#include <optional>

class QKeyEvent;

namespace veilkeep {

// Whether Caps Lock is on after that key was pressed; nothing where it does not tell. A letter tells by its
// case against Shift; other keys by the lock bit of X and of xkb, which Qt hands on under X11 and Wayland.
// Before the first key there is nothing to know it from.
std::optional<bool> capsLockAfter(const QKeyEvent& press);

} // namespace veilkeep
