#include "widgets/dialogs/WindowShake.h"

#include "prefs/PasswordPrompt.h"

#include <QGuiApplication>
#include <QLineF>
#include <QStyle>
#include <QWidget>

#include <algorithm>

namespace veilkeep {
namespace {

// Each place at the part of the time by which an even pace comes there.
QVariantAnimation::KeyValues keyValuesAlong(const std::vector<QPointF>& path) {
    double length = 0;
    for (std::size_t number = 1; number < path.size(); ++number)
        length += QLineF(path[number - 1], path[number]).length();
    QVariantAnimation::KeyValues values{{0, path.front()}};
    double passed = 0;
    for (std::size_t number = 1; number < path.size(); ++number) {
        passed += QLineF(path[number - 1], path[number]).length();
        values.append({length > 0 ? std::min(1.0, passed / length) : 1.0, path[number]});
    }
    values.back().first = 1;
    return values;
}

bool canMoveWindows() {
    return !QGuiApplication::platformName().startsWith(QLatin1String("wayland"));
}

} // namespace

WindowShake::WindowShake(QWidget& window, QWidget& content)
    : QVariantAnimation(&window), m_window(window), m_content(content) {}

QWidget& WindowShake::moved() const {
    return canMoveWindows() ? m_window : m_content;
}

void WindowShake::shake() {
    stop();
    if (m_window.style()->styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, &m_window) <= 0)
        return;
    m_home = moved().pos(); // of a window with its frame
    const Shake shake = shakeAnimation(QRectF(QPointF(m_home), QSizeF(m_window.frameGeometry().size())));
    setKeyValues(keyValuesAlong(shake.path));
    setDuration(static_cast<int>(shake.seconds * 1000));
    start();
}

void WindowShake::updateCurrentValue(const QVariant& value) {
    if (state() == Running)
        moved().move(value.toPointF().toPoint());
}

void WindowShake::updateState(State newState, State oldState) {
    QVariantAnimation::updateState(newState, oldState);
    if (newState == Stopped && oldState != Stopped)
        moved().move(m_home);
}

} // namespace veilkeep
