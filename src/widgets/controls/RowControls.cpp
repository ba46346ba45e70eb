#include "widgets/controls/RowControls.h"

#include <QPainterPath>
#include <QTransform>

#include <algorithm>
#include <cmath>

namespace veilkeep {
namespace {

constexpr double textContrast = 4.5, shapeContrast = 3;
constexpr double disabledOpacity = 0.45;

QRectF within(const QRectF& rect, double margin) {
    return rect.adjusted(margin, margin, -margin, -margin);
}

QColor reacting(const QColor& color, const QPalette& palette, const ControlLook& look) {
    const QColor text = palette.color(QPalette::Text);
    if (look.isPressed)
        return blended(color, text, 0.2);
    return look.isHovered && look.isEnabled ? blended(color, text, 0.08) : color;
}

// Over whatever ground the row has.
QColor veil(QColor color, const ControlLook& look) {
    color.setAlphaF(look.isPressed ? 0.22F : look.isHovered && look.isEnabled ? 0.1F : 0);
    return color;
}

void paintFocusRing(QPainter& painter, const QRectF& rect, double radius, const QPalette& palette) {
    const double width = lineWidth(painter, 2), distance = focusRingWidth - width / 2;
    painter.setPen(
        QPen(withContrast(palette.color(QPalette::Highlight), palette.color(QPalette::Base), shapeContrast),
             width));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(within(rect, -distance), radius + distance, radius + distance);
}

class Painting {
public:
    Painting(QPainter& painter, const ControlLook& look) : m_painter(painter) {
        m_painter.save();
        m_painter.setRenderHint(QPainter::Antialiasing);
        if (!look.isEnabled)
            m_painter.setOpacity(m_painter.opacity() * disabledOpacity);
    }
    ~Painting() { m_painter.restore(); }
    Painting(const Painting&) = delete;
    Painting& operator=(const Painting&) = delete;

private:
    QPainter& m_painter;
};

double channel(double value) {
    return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& color) {
    return 0.2126 * channel(color.redF()) + 0.7152 * channel(color.greenF()) +
           0.0722 * channel(color.blueF());
}

QColor groundColor(const QPalette& palette, bool onSelection) {
    return onSelection ? rowSelectionColor(palette, true) : palette.color(QPalette::Base);
}

bool isDark(const QColor& ground) {
    return luminance(ground) < 0.18;
}

} // namespace

// --- Colours ---

QColor blended(const QColor& from, const QColor& to, double part) {
    const auto mix = [part](float one, float other) {
        return static_cast<float>(one + (other - one) * std::clamp(part, 0.0, 1.0));
    };
    return QColor::fromRgbF(mix(from.redF(), to.redF()), mix(from.greenF(), to.greenF()),
                            mix(from.blueF(), to.blueF()));
}

double contrastRatio(const QColor& one, const QColor& other) {
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

QColor withContrast(const QColor& color, const QColor& ground, double ratio) {
    const QColor end =
        contrastRatio(Qt::white, ground) > contrastRatio(Qt::black, ground) ? Qt::white : Qt::black;
    constexpr int steps = 32;
    for (int step = 0; step < steps; ++step)
        if (const QColor moved = blended(color, end, double(step) / steps);
            contrastRatio(QColor(moved.rgb()), ground) >= ratio)
            return moved.rgb();
    return end;
}

QColor secondaryTextColor(const QPalette& palette, bool onSelection) {
    const QColor ground = groundColor(palette, onSelection);
    return withContrast(blended(palette.color(QPalette::Text), ground, 0.4), ground, textContrast);
}

QColor warningColor(const QPalette& palette, bool onSelection) {
    const QColor ground = groundColor(palette, onSelection);
    const QColor orange = isDark(ground) ? QColor(0xf0, 0x8c, 0x50) : QColor(0xc8, 0x50, 0x1e);
    return withContrast(orange, ground, textContrast);
}

// A tint of the highlight, as strong as the text's contrast bears.
QColor rowSelectionColor(const QPalette& palette, bool isActive) {
    const QColor base = palette.color(QPalette::Base), text = palette.color(QPalette::Text);
    const QColor tint = isActive ? palette.color(QPalette::Highlight) : text;
    double part = isActive ? (isDark(base) ? 0.3 : 0.18) : 0.1;
    constexpr double readable = 7; // leaves room for fainter texts
    while (part > 0.02 && contrastRatio(blended(base, tint, part), text) < readable)
        part -= 0.02;
    return blended(base, tint, part).rgb();
}

QColor separatorColor(const QPalette& palette) {
    return blended(palette.color(QPalette::Base), palette.color(QPalette::Text), 0.15);
}

// --- Whole pixels ---

QRectF onPixels(const QPainter& painter, const QRectF& rect) {
    bool isInvertible = false;
    const QTransform toDevice = painter.deviceTransform();
    const QTransform fromDevice = toDevice.inverted(&isInvertible);
    if (!isInvertible || toDevice.type() > QTransform::TxScale)
        return rect;
    const QRectF device = toDevice.mapRect(rect);
    const QPointF corner(std::round(device.x()), std::round(device.y()));
    const QSizeF size(std::round(device.width()), std::round(device.height()));
    return fromDevice.mapRect(QRectF(corner, size));
}

double lineWidth(const QPainter& painter, double wanted) {
    const double scale = std::max(0.1, painter.deviceTransform().m11());
    return std::max(1.0, std::round(wanted * scale)) / scale;
}

void fillGround(QPainter& painter, const QRectF& rect, const QColor& color) {
    const bool isSmooth = painter.testRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::Antialiasing, false); // which rounds each edge by itself
    painter.fillRect(rect, color);
    painter.setRenderHint(QPainter::Antialiasing, isSmooth);
}

void fillSeparator(QPainter& painter, const QRect& rect, Qt::Edge edge, const QColor& color) {
    const QTransform toDevice = painter.deviceTransform();
    const double scale = std::max(0.1, toDevice.m22());
    const double width = std::max(1.0, std::floor(scale));
    const double deviceTop = edge == Qt::TopEdge
                                 ? std::round(toDevice.map(QPointF(rect.topLeft())).y())
                                 : std::round(toDevice.map(QPointF(0, rect.y() + rect.height())).y()) - width;
    const double top = (deviceTop - toDevice.dy()) / scale;
    fillGround(painter, QRectF(rect.x(), top, rect.width(), width / scale), color);
}

// --- Controls ---

void paintSwitch(QPainter& painter, const QRectF& rect, double position, const QPalette& palette,
                 const ControlLook& look) {
    const Painting painting(painter, look);
    const QRectF track = onPixels(painter, rect);
    const double radius = track.height() / 2, line = lineWidth(painter, 1);
    const QColor base = palette.color(QPalette::Base), text = palette.color(QPalette::Text);
    const QColor on = withContrast(palette.color(QPalette::Highlight), base, shapeContrast);
    const QColor off = blended(base, text, 0.22);
    const QColor edge = withContrast(off, base, shapeContrast);
    painter.setPen(QPen(reacting(blended(edge, on, position), palette, look), line));
    painter.setBrush(reacting(blended(off, on, position), palette, look));
    painter.drawRoundedRect(within(track, line / 2), radius - line / 2, radius - line / 2);

    const double gap = lineWidth(painter, 2), diameter = track.height() - 2 * gap;
    const double way = track.width() - 2 * gap - diameter;
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::white);
    painter.drawEllipse(QRectF(track.x() + gap + way * position, track.y() + gap, diameter, diameter));
    if (look.hasFocus)
        paintFocusRing(painter, track, radius, palette);
}

void paintFixButton(QPainter& painter, const QRectF& rect, const QPalette& palette, const ControlLook& look) {
    const Painting painting(painter, look);
    const QRectF outline = onPixels(painter, rect);
    const double line = lineWidth(painter, 1.4), radius = outline.height() / 2;
    const QColor warning = warningColor(palette, true);
    painter.setPen(QPen(warning, line));
    painter.setBrush(veil(warning, look));
    painter.drawRoundedRect(within(outline, line / 2), radius - line / 2, radius - line / 2);

    const QPointF middle = outline.center();
    const double unit = outline.height() / 22;
    QPainterPath mark;
    mark.moveTo(middle + QPointF(-1.5, -6) * unit);
    mark.lineTo(middle + QPointF(1.5, -6) * unit);
    mark.lineTo(middle + QPointF(0.9, 2) * unit);
    mark.lineTo(middle + QPointF(-0.9, 2) * unit);
    mark.closeSubpath();
    mark.addEllipse(middle + QPointF(0, 4.7) * unit, 1.4 * unit, 1.4 * unit);
    painter.fillPath(mark, warning);
    if (look.hasFocus)
        paintFocusRing(painter, outline, radius, palette);
}

void paintRevealButton(QPainter& painter, const QRectF& rect, const QPalette& palette,
                       const ControlLook& look) {
    const Painting painting(painter, look);
    const QRectF outline = onPixels(painter, rect);
    const double line = lineWidth(painter, 1), radius = outline.height() / 2;
    const QColor base = palette.color(QPalette::Base), text = palette.color(QPalette::Text);
    painter.setPen(QPen(blended(base, text, look.isHovered || look.isPressed ? 0.5 : 0.2), line));
    painter.setBrush(veil(text, look));
    painter.drawEllipse(within(outline, line / 2));

    const double unit = outline.height() / 26;
    const QPointF lens = outline.center() + QPointF(-1.3, -1.3) * unit;
    const double lensRadius = 3.9 * unit, corner = lensRadius * std::sqrt(0.5);
    painter.setPen(QPen(secondaryTextColor(palette), 1.5 * unit, Qt::SolidLine, Qt::RoundCap));
    painter.setBrush(Qt::NoBrush);
    painter.drawEllipse(lens, lensRadius, lensRadius);
    painter.drawLine(lens + QPointF(corner, corner), outline.center() + QPointF(5, 5) * unit);
    if (look.hasFocus)
        paintFocusRing(painter, outline, radius, palette);
}

} // namespace veilkeep
