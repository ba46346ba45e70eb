#pragma once

#include <QColor>
#include <QPainter>
#include <QPalette>
#include <QRectF>

namespace veilkeep {

// How the controls in rows and the switch are drawn, with the palette at hand, sharp at any scale.
struct ControlLook {
    bool isEnabled = true;
    bool isHovered = false;
    bool isPressed = false;
    bool hasFocus = false;
};

constexpr QSize switchSize{40, 22};
constexpr QSize revealButtonSize{26, 26};

// position: 0 off to 1 on, in between while it slides, 0.5 for a mixed one.
void paintSwitch(QPainter& painter, const QRectF& rect, double position, const QPalette& palette,
                 const ControlLook& look);

// In a switch's place on the row of a broken item: an exclamation mark in an outline, told by its shape as
// well as by its colour.
void paintFixButton(QPainter& painter, const QRectF& rect, const QPalette& palette, const ControlLook& look);

void paintRevealButton(QPainter& painter, const QRectF& rect, const QPalette& palette,
                       const ControlLook& look);

// Colours that a palette does not have, worked out from it; each at least 4.5:1 against the base.
QColor secondaryTextColor(const QPalette& palette, bool onSelection = false);
QColor warningColor(const QPalette& palette, bool onSelection = false);
QColor rowSelectionColor(const QPalette& palette, bool isActive);

} // namespace veilkeep
