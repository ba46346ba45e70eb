#pragma once

#include <QColor>
#include <QPainter>
#include <QPalette>
#include <QRectF>
#include <QSize>

namespace veilkeep {

// How the controls in rows and the switch are drawn, with the palette at hand, sharp at any scale. The ring
// of a focused one lies outside its rectangle, by focusRingWidth.
struct ControlLook {
    bool isEnabled = true;
    bool isHovered = false;
    bool isPressed = false;
    bool hasFocus = false;
};

constexpr QSize switchSize{40, 22};
constexpr QSize revealButtonSize{26, 26};
constexpr int focusRingWidth = 3;

// position: 0 off to 1 on, in between while it slides, 0.5 for a mixed one.
void paintSwitch(QPainter& painter, const QRectF& rect, double position, const QPalette& palette,
                 const ControlLook& look);

// --- Whole pixels of the device, at any scale ---

QRectF onPixels(const QPainter& painter, const QRectF& rect); // moved and stretched to them
// A line within the rectangle's edge, so wide that it fills them.
double lineWidth(const QPainter& painter, double wanted);
// Neighbours have neither a gap nor an edge that shines through.
void fillGround(QPainter& painter, const QRectF& rect, const QColor& color);
// The thinnest that is as wide at every place; edge: top or bottom.
void fillSeparator(QPainter& painter, const QRect& rect, Qt::Edge edge, const QColor& color);

// In a switch's place on the row of a broken item: an exclamation mark in an outline, told by its shape as
// well as by its colour.
void paintFixButton(QPainter& painter, const QRectF& rect, const QPalette& palette, const ControlLook& look);

void paintRevealButton(QPainter& painter, const QRectF& rect, const QPalette& palette,
                       const ControlLook& look);

// Colours that a palette does not have, worked out from its Base, Text and Highlight. Text in them and in the
// palette's Text has at least 4.5:1 against the base, or against a selected row.
QColor secondaryTextColor(const QPalette& palette, bool onSelection = false);
QColor warningColor(const QPalette& palette, bool onSelection = false);
QColor rowSelectionColor(const QPalette& palette, bool isActive); // opaque; text stays as it is on it
QColor separatorColor(const QPalette& palette);

QColor blended(const QColor& from, const QColor& to, double part);
double contrastRatio(const QColor& one, const QColor& other); // 1 to 21

// The colour, moved towards black or white until it has the contrast against the ground.
QColor withContrast(const QColor& color, const QColor& ground, double ratio);

} // namespace veilkeep
