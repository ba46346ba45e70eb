#pragma once

#include <QPalette>

namespace veilkeep {

// For desktops that want dark windows and give Qt no colours of their own.
QPalette darkPalette();

bool isDark(const QPalette& palette);

} // namespace veilkeep
