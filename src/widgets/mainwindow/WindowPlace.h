#pragma once

#include "core/storage/UserDefaults.h"

#include <QList>
#include <QMargins>
#include <QRect>

#include <optional>
#include <string>
#include <string_view>

namespace veilkeep {

// Where a window lies, and whether it fills the screen; as text "X Y WIDTH HEIGHT" with " maximized" after
// it.
struct WindowPlace {
    QRect frame; // its corner; the size is that of what is within
    bool isMaximized = false;

    static std::optional<WindowPlace> fromText(std::string_view text); // nothing for what makes no sense
    std::string text() const;

    bool operator==(const WindowPlace&) const = default;
};

// Whether its upper edge can be taken hold of on one of the screens' visible areas.
bool canBeReached(const WindowPlace& place, const QList<QRect>& visibleAreas);
// Where a window of that size goes: into the middle, its frame no larger than the area.
QRect placeInMiddle(const QSize& size, const QMargins& frame, const QRect& visibleArea);

// Positive widths, exactly so many; nothing for anything else.
std::optional<QList<int>> widthsFromText(std::string_view text, qsizetype count);
std::string textOfWidths(const QList<int>& widths);

} // namespace veilkeep
