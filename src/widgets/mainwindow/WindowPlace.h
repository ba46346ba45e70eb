#pragma once

#include "core/storage/UserDefaults.h"

#include <QList>
#include <QRect>

#include <optional>
#include <string>
#include <string_view>

namespace veilkeep {

// Where a window lies, and whether it fills the screen; as text "X Y WIDTH HEIGHT" with " maximized" after
// it.
struct WindowPlace {
    QRect frame;
    bool isMaximized = false;

    static std::optional<WindowPlace> fromText(std::string_view text); // nothing for what makes no sense
    std::string text() const;

    bool operator==(const WindowPlace&) const = default;
};

// The place as it was kept, as long as its upper edge can be reached on one of the screens' visible areas;
// else, no larger than the first of them, in its middle.
WindowPlace placeOnScreens(const WindowPlace& kept, const QList<QRect>& visibleAreas);

// Positive widths, exactly so many; nothing for anything else.
std::optional<QList<int>> widthsFromText(std::string_view text, qsizetype count);
std::string textOfWidths(const QList<int>& widths);

} // namespace veilkeep
