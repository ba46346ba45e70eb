#include "widgets/controls/DarkPalette.h"

#include <QColor>

#include <utility>

namespace veilkeep {
namespace {

constexpr std::pair<QPalette::ColorRole, QRgb> colors[] = {
    {QPalette::Window, 0x27282c},
    {QPalette::WindowText, 0xf1f1f3},
    {QPalette::Base, 0x1c1d20},
    {QPalette::AlternateBase, 0x232428},
    {QPalette::Text, 0xf1f1f3},
    {QPalette::Button, 0x34353a},
    {QPalette::ButtonText, 0xf1f1f3},
    {QPalette::BrightText, 0xffffff},
    {QPalette::Light, 0x4a4b52},
    {QPalette::Midlight, 0x3f4046},
    {QPalette::Mid, 0x2c2d31},
    {QPalette::Dark, 0x17181a},
    {QPalette::Shadow, 0x0c0c0d},
    {QPalette::Highlight, 0x4a7bf0},
    {QPalette::HighlightedText, 0xffffff},
    {QPalette::Link, 0x8ab0ff},
    {QPalette::LinkVisited, 0xc7a6ff},
    {QPalette::ToolTipBase, 0x34353a},
    {QPalette::ToolTipText, 0xf1f1f3},
    {QPalette::PlaceholderText, 0xa5a6ad},
};
constexpr QRgb disabledText = 0x85868d;

} // namespace

QPalette darkPalette() {
    QPalette palette;
    for (const auto& [role, color] : colors)
        palette.setColor(role, QColor(color));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, QColor(disabledText));
    palette.setColor(QPalette::Disabled, QPalette::Highlight, QColor(0x45464d));
    return palette;
}

bool isDark(const QPalette& palette) {
    return palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness();
}

} // namespace veilkeep
